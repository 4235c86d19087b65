// The reference device host's RPC server on ncalrpc "PellmoraDeviceHostEp".
#pragma once

#include <cstdint>

// Starts listening; returns 0 or the RPC runtime's error number.
long StartRpcServer();

// Stops listening once the calls in progress have ended.
void StopRpcServer();

// The procedure number of the call this thread is answering, as it came over the wire.
uint32_t CurrentWireProcedure();
