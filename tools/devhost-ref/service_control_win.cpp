#include "tools/devhost-ref/service_control_win.h"

namespace {

// A service control manager handle and a service handle, closed on scope exit.
class ServiceHandles {
 public:
  ServiceHandles(DWORD managerAccess, DWORD serviceAccess)
  {
    manager_ = OpenSCManagerW(nullptr, nullptr, managerAccess);
    if (manager_ != nullptr && serviceAccess != 0) {
      service_ = OpenServiceW(manager_, kHostServiceName, serviceAccess);
    }
    error_ = GetLastError();
  }
  ~ServiceHandles()
  {
    if (service_ != nullptr) CloseServiceHandle(service_);
    if (manager_ != nullptr) CloseServiceHandle(manager_);
  }
  ServiceHandles(const ServiceHandles&) = delete;
  ServiceHandles& operator=(const ServiceHandles&) = delete;

  SC_HANDLE manager() const { return manager_; }
  SC_HANDLE service() const { return service_; }
  // The error of the open that failed.
  DWORD error() const { return error_; }

 private:
  SC_HANDLE manager_ = nullptr;
  SC_HANDLE service_ = nullptr;
  DWORD error_ = 0;
};

// Polls the service until its state is `wanted` or `timeoutMs` have passed.
DWORD WaitForState(SC_HANDLE service, DWORD wanted, DWORD timeoutMs)
{
  const ULONGLONG end = GetTickCount64() + timeoutMs;
  SERVICE_STATUS status{};
  while (QueryServiceStatus(service, &status)) {
    if (status.dwCurrentState == wanted) return ERROR_SUCCESS;
    if (status.dwCurrentState == SERVICE_STOPPED && wanted == SERVICE_RUNNING) {
      return status.dwWin32ExitCode != 0 ? status.dwWin32ExitCode : ERROR_SERVICE_NOT_ACTIVE;
    }
    if (GetTickCount64() >= end) return ERROR_TIMEOUT;
    Sleep(50);
  }
  return GetLastError();
}

}  // namespace

DWORD InstallHostService(const std::wstring& exePath)
{
  ServiceHandles handles(SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE, 0);
  if (handles.manager() == nullptr) return handles.error();
  const std::wstring command = L"\"" + exePath + L"\"";
  SC_HANDLE service = CreateServiceW(
      handles.manager(), kHostServiceName, L"Pellmora Device Host (reference)", SERVICE_ALL_ACCESS,
      SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL, command.c_str(),
      nullptr, nullptr, nullptr, nullptr, nullptr);
  if (service == nullptr && GetLastError() == ERROR_SERVICE_EXISTS) {
    service = OpenServiceW(handles.manager(), kHostServiceName, SERVICE_CHANGE_CONFIG);
    if (service != nullptr && !ChangeServiceConfigW(service, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                                                    SERVICE_NO_CHANGE, command.c_str(), nullptr,
                                                    nullptr, nullptr, nullptr, nullptr, nullptr)) {
      const DWORD error = GetLastError();
      CloseServiceHandle(service);
      return error;
    }
  }
  if (service == nullptr) return GetLastError();
  CloseServiceHandle(service);
  return ERROR_SUCCESS;
}

DWORD UninstallHostService()
{
  const DWORD stopped = StopHostService(10000);
  if (stopped == ERROR_SERVICE_DOES_NOT_EXIST) return ERROR_SUCCESS;
  if (stopped != ERROR_SUCCESS) return stopped;
  ServiceHandles handles(SC_MANAGER_CONNECT, DELETE);
  if (handles.service() == nullptr) return handles.error();
  return DeleteService(handles.service()) ? ERROR_SUCCESS : GetLastError();
}

DWORD StartHostService(DWORD timeoutMs)
{
  ServiceHandles handles(SC_MANAGER_CONNECT, SERVICE_QUERY_STATUS | SERVICE_START);
  if (handles.service() == nullptr) return handles.error();
  if (!StartServiceW(handles.service(), 0, nullptr) &&
      GetLastError() != ERROR_SERVICE_ALREADY_RUNNING) {
    return GetLastError();
  }
  return WaitForState(handles.service(), SERVICE_RUNNING, timeoutMs);
}

DWORD StopHostService(DWORD timeoutMs)
{
  ServiceHandles handles(SC_MANAGER_CONNECT, SERVICE_QUERY_STATUS | SERVICE_STOP);
  if (handles.service() == nullptr) return handles.error();
  SERVICE_STATUS status{};
  if (!ControlService(handles.service(), SERVICE_CONTROL_STOP, &status) &&
      GetLastError() != ERROR_SERVICE_NOT_ACTIVE) {
    return GetLastError();
  }
  return WaitForState(handles.service(), SERVICE_STOPPED, timeoutMs);
}

std::wstring ExecutableBesideThisProgram(const wchar_t* name)
{
  wchar_t path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring text(path, length);
  return text.substr(0, text.find_last_of(L"\\/") + 1) + name;
}
