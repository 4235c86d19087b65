// pdevhost, the reference device host: runs as the Windows service "pdevhost" (or in a
// console for tests and demos) and answers the device host interface on local RPC.
#include <windows.h>

#include <cstdio>
#include <cstring>

#include "tools/devhost-ref/host_control_win.h"
#include "tools/devhost-ref/procedures_win.h"
#include "tools/devhost-ref/rpc_server_win.h"
#include "tools/devhost-ref/service_control_win.h"

namespace {

constexpr char kUsage[] =
    "usage: pdevhost [--console | --install | --uninstall | --start | --stop]\n"
    "  (none)       run as the service \"pdevhost\"; the service control manager starts it\n"
    "  --console    answer on ncalrpc \"PellmoraDeviceHostEp\" until Ctrl+C\n"
    "  --install    install this program as the service \"pdevhost\" (demand start)\n"
    "  --uninstall  stop and remove the service\n"
    "  --start      start the service and wait until it runs\n"
    "  --stop       stop the service\n";

constexpr DWORD kServiceWaitMs = 30000;

HANDLE stopEvent = nullptr;
SERVICE_STATUS_HANDLE statusHandle = nullptr;
SERVICE_STATUS serviceStatus{};

void ReportStatus(DWORD state, DWORD exitCode = NO_ERROR, DWORD waitHint = 0)
{
  serviceStatus.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  serviceStatus.dwCurrentState = state;
  serviceStatus.dwWin32ExitCode = exitCode;
  serviceStatus.dwWaitHint = waitHint;
  serviceStatus.dwControlsAccepted =
      state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
  const bool pending = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
  serviceStatus.dwCheckPoint = pending ? serviceStatus.dwCheckPoint + 1 : 0;
  SetServiceStatus(statusHandle, &serviceStatus);
}

DWORD WINAPI ServiceControl(DWORD control, DWORD, void*, void*)
{
  switch (control) {
    case SERVICE_CONTROL_STOP:
    case SERVICE_CONTROL_SHUTDOWN:
      ReportStatus(SERVICE_STOP_PENDING, NO_ERROR, 5000);
      SetEvent(stopEvent);
      return NO_ERROR;
    case SERVICE_CONTROL_INTERROGATE: return NO_ERROR;
    default: return ERROR_CALL_NOT_IMPLEMENTED;
  }
}

// Answers until the stop event is set, then dismounts everything.
DWORD Serve()
{
  const long started = StartRpcServer();
  if (started != RPC_S_OK) return static_cast<DWORD>(started);
  if (statusHandle != nullptr) ReportStatus(SERVICE_RUNNING);
  WaitForSingleObject(stopEvent, INFINITE);
  StopRpcServer();
  DismountEverything();
  return NO_ERROR;
}

void WINAPI ServiceMain(DWORD, LPWSTR*)
{
  statusHandle = RegisterServiceCtrlHandlerExW(kHostServiceName, ServiceControl, nullptr);
  if (statusHandle == nullptr) return;
  // A scripted start-up delay keeps the service start-pending for that long.
  const DWORD delay = ReadControlNumber(kControlStartDelay);
  ReportStatus(SERVICE_START_PENDING, NO_ERROR, delay + 3000);
  for (DWORD waited = 0; waited < delay; waited += 250) {
    Sleep(delay - waited < 250 ? delay - waited : 250);
    ReportStatus(SERVICE_START_PENDING, NO_ERROR, delay - waited + 3000);
  }
  ReportStatus(SERVICE_STOPPED, Serve());
}

BOOL WINAPI ConsoleControl(DWORD)
{
  SetEvent(stopEvent);
  return TRUE;
}

int Report(const char* what, DWORD error)
{
  if (error == NO_ERROR) return 0;
  std::fprintf(stderr, "pdevhost: %s failed with Windows error %lu\n", what,
               static_cast<unsigned long>(error));
  return 1;
}

}  // namespace

int main(int argc, char** argv)
{
  stopEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const char* command = argc == 2 ? argv[1] : argc == 1 ? "" : "--too-many";
  if (std::strcmp(command, "") == 0) {
    SERVICE_TABLE_ENTRYW services[] = {{const_cast<wchar_t*>(kHostServiceName), ServiceMain},
                                       {nullptr, nullptr}};
    if (StartServiceCtrlDispatcherW(services)) return 0;
    std::fputs("pdevhost: not started as a service; use --console to run here\n", stderr);
    std::fputs(kUsage, stderr);
    return 2;
  }
  if (std::strcmp(command, "--console") == 0) {
    SetConsoleCtrlHandler(ConsoleControl, TRUE);
    std::printf("pdevhost: answering on ncalrpc \"PellmoraDeviceHostEp\"; Ctrl+C stops\n");
    std::fflush(stdout);
    return Report("listening", Serve());
  }
  if (std::strcmp(command, "--install") == 0) {
    return Report("installing", InstallHostService(ExecutableBesideThisProgram(L"pdevhost.exe")));
  }
  if (std::strcmp(command, "--uninstall") == 0) return Report("removing", UninstallHostService());
  if (std::strcmp(command, "--start") == 0) {
    return Report("starting", StartHostService(kServiceWaitMs));
  }
  if (std::strcmp(command, "--stop") == 0)
    return Report("stopping", StopHostService(kServiceWaitMs));
  std::fputs(kUsage, std::strcmp(command, "--help") == 0 ? stdout : stderr);
  return std::strcmp(command, "--help") == 0 ? 0 : 2;
}
