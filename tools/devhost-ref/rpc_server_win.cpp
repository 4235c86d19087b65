#include "tools/devhost-ref/rpc_server_win.h"

#include <vector>

#include "devhost_rpc.h"

namespace {

thread_local uint32_t wireProcedure = 0;

// The generated dispatch table, and the interface registered in its place: the same
// interface whose every entry first notes the procedure number of the request.
const RPC_DISPATCH_TABLE* generatedTable = nullptr;
RPC_SERVER_INTERFACE recordingInterface;
RPC_DISPATCH_TABLE recordingTable;
std::vector<RPC_DISPATCH_FUNCTION> recordingEntries;

void __RPC_STUB RecordProcedureAndDispatch(PRPC_MESSAGE message)
{
  wireProcedure = message->ProcNum;
  generatedTable->DispatchTable[message->ProcNum](message);
}

RPC_IF_HANDLE RecordingInterface()
{
  if (generatedTable == nullptr) {
    recordingInterface = *static_cast<RPC_SERVER_INTERFACE*>(s_DeviceHost_v1_0_s_ifspec);
    generatedTable = recordingInterface.DispatchTable;
    recordingEntries.assign(generatedTable->DispatchTableCount, RecordProcedureAndDispatch);
    recordingTable = *generatedTable;
    recordingTable.DispatchTable = recordingEntries.data();
    recordingInterface.DispatchTable = &recordingTable;
  }
  return &recordingInterface;
}

}  // namespace

long StartRpcServer()
{
  wchar_t protocol[] = L"ncalrpc";
  wchar_t endpoint[] = L"PellmoraDeviceHostEp";
  RPC_STATUS status =
      RpcServerUseProtseqEpW(reinterpret_cast<RPC_WSTR>(protocol), RPC_C_PROTSEQ_MAX_REQS_DEFAULT,
                             reinterpret_cast<RPC_WSTR>(endpoint), nullptr);
  if (status == RPC_S_OK) status = RpcServerRegisterIf(RecordingInterface(), nullptr, nullptr);
  if (status == RPC_S_OK) status = RpcServerListen(1, RPC_C_LISTEN_MAX_CALLS_DEFAULT, TRUE);
  return status;
}

void StopRpcServer()
{
  RpcMgmtStopServerListening(nullptr);
  RpcMgmtWaitServerListen();
  RpcServerUnregisterIf(nullptr, nullptr, TRUE);
}

uint32_t CurrentWireProcedure()
{
  return wireProcedure;
}
