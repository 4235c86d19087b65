#include "devhost/binding_win.h"

#include "devhost/rpc_guard.h"
#include "system/error_map.h"

namespace {

struct BoundCall {
  DeviceHostProcedure procedure;
  void* context;
  RPC_BINDING_HANDLE binding;
};

long RunBoundCall(void* context)
{
  const auto* call = static_cast<const BoundCall*>(context);
  return call->procedure(call->binding, call->context);
}

}  // namespace

StatusCode CallDeviceHostProcedure(DeviceHostProcedure procedure, void* context)
{
  // Local RPC only: no object UUID, no network address, no options.
  wchar_t protocol[] = L"ncalrpc";
  wchar_t endpoint[] = L"PellmoraDeviceHostEp";
  RPC_WSTR text = nullptr;
  RPC_STATUS status =
      RpcStringBindingComposeW(nullptr, reinterpret_cast<RPC_WSTR>(protocol), nullptr,
                               reinterpret_cast<RPC_WSTR>(endpoint), nullptr, &text);
  RPC_BINDING_HANDLE binding = nullptr;
  if (status == RPC_S_OK) {
    status = RpcBindingFromStringBindingW(text, &binding);
    RpcStringFreeW(&text);
  }
  if (status != RPC_S_OK) return kDevUnreachable;

  BoundCall call{procedure, context, binding};
  long result = 0;
  const unsigned long exception = DevRunGuarded(RunBoundCall, &call, &result);
  RpcBindingFree(&binding);
  // The RPC runtime raises Win32 error numbers (1722 when no server listens).
  if (exception != 0) return MapSystemError(static_cast<uint32_t>(exception));
  return static_cast<StatusCode>(result);
}
