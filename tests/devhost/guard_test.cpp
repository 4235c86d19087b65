// The RPC exception guard.
#include <gtest/gtest.h>
#include <windows.h>

#include "devhost/rpc_guard.h"

namespace {

long ReturnContext(void* context)
{
  return *static_cast<long*>(context);
}

long RaiseServerUnavailable(void*)
{
  RaiseException(RPC_S_SERVER_UNAVAILABLE, 0, 0, nullptr);
  return 5;
}

}  // namespace

TEST(RpcGuard, PassesTheResultOfACallThatReturns)
{
  long value = 0x4006000B;
  long result = 0;
  EXPECT_EQ(DevRunGuarded(ReturnContext, &value, &result), 0u);
  EXPECT_EQ(result, 0x4006000B);
}

TEST(RpcGuard, CatchesTheExceptionOfTheRpcRuntime)
{
  long result = 7;
  EXPECT_EQ(DevRunGuarded(RaiseServerUnavailable, nullptr, &result), 1722u);
  EXPECT_EQ(result, 0);
  // The guard is whole again afterwards: a second exception is caught as well, and a
  // plain call passes its result.
  EXPECT_EQ(DevRunGuarded(RaiseServerUnavailable, nullptr, &result), 1722u);
  long value = 3;
  EXPECT_EQ(DevRunGuarded(ReturnContext, &value, &result), 0u);
  EXPECT_EQ(result, 3);
}
