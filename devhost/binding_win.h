// One device host call on a binding of its own.
#pragma once

#include <rpc.h>

#include <type_traits>

#include "system/status.h"

using DeviceHostProcedure = long (*)(RPC_BINDING_HANDLE binding, void* context);

// Binds to the device host's endpoint, runs procedure(binding, context) inside the RPC
// exception guard and frees the binding. Returns the procedure's status, the mapped code
// of an RPC exception, or kDevUnreachable when no binding could be made.
StatusCode CallDeviceHostProcedure(DeviceHostProcedure procedure, void* context);

// The same for any callable taking the binding and returning the procedure's `long`.
template <typename Call>
StatusCode CallDeviceHost(Call&& call)
{
  return CallDeviceHostProcedure(
      [](RPC_BINDING_HANDLE binding, void* context) -> long {
        return (*static_cast<std::remove_reference_t<Call>*>(context))(binding);
      },
      &call);
}
