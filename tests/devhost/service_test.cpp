// Starting the device host service through the service control manager.
#include <windows.h>

#include "host_fixture.h"

namespace {

DWORD ServiceState()
{
  SC_HANDLE manager = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT);
  SC_HANDLE service = OpenServiceW(manager, kHostServiceName, SERVICE_QUERY_STATUS);
  SERVICE_STATUS status{};
  QueryServiceStatus(service, &status);
  CloseServiceHandle(service);
  CloseServiceHandle(manager);
  return status.dwCurrentState;
}

}  // namespace

TEST_F(DeviceHostTest, StartWaitsWhileTheServiceIsStarting)
{
  ASSERT_EQ(StopHostService(30000), 0u);
  ASSERT_EQ(DevDismountAll(0), 0x40000007u);  // nobody answers
  constexpr DWORD kDelay = 1500;
  WriteControlNumber(kControlStartDelay, kDelay);
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(DevStartService(), 0u);
  EXPECT_GE(GetTickCount64() - start, kDelay);
  EXPECT_EQ(ServiceState(), static_cast<DWORD>(SERVICE_RUNNING));
  EXPECT_EQ(DevDismountAll(0), 0u);
}

TEST_F(DeviceHostTest, StartOfARunningServiceIsTheGenericFailure)
{
  // 1056 (already running) is not in the system-error map.
  EXPECT_EQ(DevStartService(), 0x40000007u);
}

TEST_F(DeviceHostTest, StartWithoutTheServiceIsServiceDoesNotExist)
{
  ASSERT_EQ(UninstallHostService(), 0u);
  const StatusCode status = DevStartService();
  const DWORD reinstalled = InstallHostService(ExecutableBesideThisProgram(L"pdevhost.exe"));
  EXPECT_EQ(status, 0x40000013u);
  ASSERT_EQ(reinstalled, 0u);
  EXPECT_EQ(StartHostService(30000), 0u);
}
