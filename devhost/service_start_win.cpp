// Starting the device host service through the service control manager.
#include <windows.h>

#include "devhost/device_host.h"
#include "system/error_map.h"

StatusCode DevStartService()
{
  SC_HANDLE manager = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT);
  if (manager == nullptr) return MapSystemError(GetLastError());
  SC_HANDLE service = OpenServiceW(manager, L"pdevhost", SERVICE_QUERY_STATUS | SERVICE_START);
  StatusCode status = kStatusSuccess;
  if (service == nullptr) {
    status = MapSystemError(GetLastError());
  } else if (!StartServiceW(service, 0, nullptr)) {
    // An already running service is not in the map's list: the generic failure.
    status = MapSystemError(GetLastError());
  } else {
    // Wait, without limit, while the service reports that it is starting; how the start
    // ends is not judged here.
    SERVICE_STATUS state{};
    state.dwCurrentState = SERVICE_START_PENDING;
    while (state.dwCurrentState == SERVICE_START_PENDING) {
      Sleep(250);
      if (!QueryServiceStatus(service, &state)) break;
    }
  }
  if (service != nullptr) CloseServiceHandle(service);
  CloseServiceHandle(manager);
  return status;
}
