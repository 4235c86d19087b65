// ctellmon.exe as a process of its own, against the reference device host: the hot key it
// holds, the emergency dismount, the settings-changed broadcast, unloading, one instance,
// and its start by the options' StartMonitor. The monitor reads the prefix's own settings,
// so each case writes them and clears them again.
#include <windows.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "app/monitor_control.h"
#include "devhost/host_fixture.h"
#include "monitor/monitor.h"
#include "monitor/monitor_window_win.h"
#include "res/resource.h"
#include "settings/hot_key.h"
#include "settings/options.h"
#include "support/program_start_win.h"
#include "support/scripted_message_boxes.h"
#include "system/module_path.h"
#include "system/wide_text_win.h"
#include "ui/handles.h"

namespace {

// Combinations no other test of the suite uses, since tests of other programs may hold keys
// at the same time.
constexpr uint32_t kFirstHotKey = MakeHotKey(kHotKeyControl | kHotKeyAlt | kHotKeyShift, VK_F9);
constexpr uint32_t kSecondHotKey = MakeHotKey(kHotKeyAlt | kHotKeyShift, VK_F10);
constexpr DWORD kStartTimeout = 10000;
constexpr DWORD kExitTimeout = 10000;

// True when this test could take the combination itself (it releases it at once).
bool HotKeyIsFree(uint32_t hotKey)
{
  if (!RegisterHotKey(nullptr, 1, HotKeyModifiers(hotKey), HotKeyVirtualKey(hotKey))) {
    return false;
  }
  UnregisterHotKey(nullptr, 1);
  return true;
}

HWND FindMonitorWindow()
{
  return FindWindowW(kMonitorWindowClass, nullptr);
}

// A top-level window of the test that counts the refresh messages reaching it.
class CRefreshListener {
 public:
  CRefreshListener()
  {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"Cryptelle.Test.RefreshListener";
    RegisterClassW(&windowClass);
    window_ = CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                              nullptr, windowClass.hInstance, nullptr);
    received_ = 0;
  }
  ~CRefreshListener() { DestroyWindow(window_); }
  CRefreshListener(const CRefreshListener&) = delete;
  CRefreshListener& operator=(const CRefreshListener&) = delete;

  static int Received() { return received_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
  {
    static const UINT refresh = RegisterWindowMessageW(Wide(kRefreshMessageName));
    if (message == refresh) ++received_;
    return DefWindowProcW(window, message, wParam, lParam);
  }

  HWND window_;
  static inline int received_ = 0;
};

// Dispatches this thread's messages until `process` ends or `milliseconds` pass; true when
// it ended.
bool WaitForExitDispatching(HANDLE process, DWORD milliseconds)
{
  const ULONGLONG deadline = GetTickCount64() + milliseconds;
  for (;;) {
    const ULONGLONG now = GetTickCount64();
    const DWORD left = now >= deadline ? 0 : static_cast<DWORD>(deadline - now);
    const DWORD waited = MsgWaitForMultipleObjects(1, &process, FALSE, left, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    if (waited == WAIT_OBJECT_0) return true;
    if (waited == WAIT_TIMEOUT) return false;
  }
}

// A running monitor: started by the test or found by its window; ended by force if the
// case leaves it running.
class CMonitorProcess {
 public:
  CMonitorProcess() = default;
  ~CMonitorProcess()
  {
    if (process_ && WaitForSingleObject(process_.Get(), 0) == WAIT_TIMEOUT) {
      TerminateProcess(process_.Get(), 1);
      WaitForSingleObject(process_.Get(), kExitTimeout);
    }
  }
  CMonitorProcess(const CMonitorProcess&) = delete;
  CMonitorProcess& operator=(const CMonitorProcess&) = delete;

  // Starts ctellmon.exe from beside this test program.
  bool Launch()
  {
    std::u16string path;
    if (IsFailure(SysGetPathBesideModule(u"ctellmon.exe", &path))) return false;
    const std::optional<PROCESS_INFORMATION> started = StartProgram(std::wstring(Wide(path)));
    if (!started) return false;
    process_.Reset(started->hProcess);
    return true;
  }

  // Waits for the monitor's window and for the monitor to handle messages (its hot key is
  // registered by then); takes the process of that window when the test did not start it.
  bool WaitUntilReady()
  {
    const ULONGLONG deadline = GetTickCount64() + kStartTimeout;
    while ((window_ = FindMonitorWindow()) == nullptr) {
      if (GetTickCount64() > deadline) return false;
      if (process_ && WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0) return false;
      Sleep(20);
    }
    if (!process_) {
      DWORD processId = 0;
      GetWindowThreadProcessId(window_, &processId);
      process_.Reset(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION, FALSE,
                                 processId));
    }
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, kStartTimeout, &answer) != 0;
  }

  bool WaitForExit(DWORD milliseconds = kExitTimeout)
  {
    return WaitForExitDispatching(process_.Get(), milliseconds);
  }

  DWORD ExitCode() const
  {
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process_.Get(), &code);
    return code;
  }

  HWND Window() const { return window_; }

 private:
  CKernelHandle process_;
  HWND window_ = nullptr;
};

class MonitorProcessTest : public DeviceHostTest {
 protected:
  void SetUp() override
  {
    DeviceHostTest::SetUp();
    ASSERT_EQ(FindMonitorWindow(), nullptr) << "a monitor from elsewhere is running";
  }

  void TearDown() override
  {
    StoreSettings(0, 0, 0);
    DeviceHostTest::TearDown();
  }

  static void StoreSettings(uint32_t enable, uint32_t unload, uint32_t hotKey)
  {
    ASSERT_EQ(WriteMonitorOptions({enable, unload, hotKey}), kStatusSuccess);
  }

  static UINT SettingsChangedMessage()
  {
    return RegisterWindowMessageW(Wide(kMonitorSettingsChangedMessage));
  }

  void MountDisk(const std::u16string& mountPoint)
  {
    const std::u16string image = MakeImage(mountPoint.substr(0, 1) + u".qvi");
    ASSERT_EQ(ImgMountWithPassword(image.c_str(), mountPoint.c_str(), 0, u"secret"),
              kStatusSuccess);
  }
};

TEST_F(MonitorProcessTest, HoldsTheStoredHotKeyWhileItRuns)
{
  StoreSettings(1, 0, kFirstHotKey);
  ASSERT_TRUE(HotKeyIsFree(kFirstHotKey));
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitUntilReady());
  EXPECT_FALSE(HotKeyIsFree(kFirstHotKey));
  EXPECT_TRUE(HotKeyIsFree(kSecondHotKey));

  // The tray menu's Exit ends it and releases the key.
  PostMessageW(monitor.Window(), WM_COMMAND, ID_APP_EXIT, 0);
  ASSERT_TRUE(monitor.WaitForExit());
  EXPECT_EQ(monitor.ExitCode(), 0u);
  EXPECT_TRUE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, HotKeyDismountsEveryDiskForcedTellsCryptelleAndExits)
{
  MountDisk(u"P:");
  MountDisk(u"Q:");
  // Disks in use stay mounted unless the dismount is forced.
  WriteControlText(kControlInUse, L"PQ");
  StoreSettings(1, 0, kFirstHotKey);
  CRefreshListener listener;
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitUntilReady());
  ForgetLastCall();

  PostMessageW(monitor.Window(), WM_HOTKEY, 1,
               MAKELPARAM(MOD_CONTROL | MOD_ALT | MOD_SHIFT, VK_F9));
  ASSERT_TRUE(monitor.WaitForExit());
  EXPECT_EQ(monitor.ExitCode(), 0u);
  EXPECT_EQ(LastCall().substr(LastCall().find(L' ') + 1), L"DismountAll");
  EXPECT_TRUE(ListDisks().empty());
  // At least the monitor's: other programs' tests may broadcast it meanwhile.
  EXPECT_GE(CRefreshListener::Received(), 1);
  EXPECT_TRUE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, TrayDismountAllDismountsTellsCryptelleAndStays)
{
  MountDisk(u"P:");
  MountDisk(u"Q:");
  StoreSettings(1, 0, kFirstHotKey);
  CRefreshListener listener;
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitUntilReady());

  DWORD_PTR answer = 0;
  ASSERT_NE(SendMessageTimeoutW(monitor.Window(), WM_COMMAND, ID_FILE_DISMOUNT_ALL, 0, SMTO_NORMAL,
                                kStartTimeout, &answer),
            0);
  EXPECT_TRUE(ListDisks().empty());
  EXPECT_FALSE(monitor.WaitForExit(500));
  EXPECT_GE(CRefreshListener::Received(), 1);
  EXPECT_FALSE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, SettingsChangedWithANewHotKeyMovesItToTheNewKey)
{
  StoreSettings(1, 0, kFirstHotKey);
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitUntilReady());
  ASSERT_FALSE(HotKeyIsFree(kFirstHotKey));

  StoreSettings(1, 0, kSecondHotKey);
  DWORD_PTR answer = 0;
  ASSERT_NE(SendMessageTimeoutW(monitor.Window(), SettingsChangedMessage(), 0, 0, SMTO_NORMAL,
                                kStartTimeout, &answer),
            0);
  EXPECT_FALSE(HotKeyIsFree(kSecondHotKey));
  EXPECT_TRUE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, BroadcastAfterTheMonitorWasDisabledEndsIt)
{
  StoreSettings(1, 0, kFirstHotKey);
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitUntilReady());

  StoreSettings(0, 0, kFirstHotKey);
  PostMessageW(HWND_BROADCAST, SettingsChangedMessage(), 0, 0);
  ASSERT_TRUE(monitor.WaitForExit());
  EXPECT_EQ(monitor.ExitCode(), 0u);
  EXPECT_TRUE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, UnloadingMonitorExitsAfterTheLastDiskIsDismounted)
{
  MountDisk(u"P:");
  StoreSettings(1, 1, 0);
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitUntilReady());
  // Checks every two seconds keep finding the disk.
  EXPECT_FALSE(monitor.WaitForExit(2 * kDiskCheckMilliseconds + 500));

  ASSERT_EQ(DevDismountAll(0), kStatusSuccess);
  ASSERT_TRUE(monitor.WaitForExit());
  EXPECT_EQ(monitor.ExitCode(), 0u);
}

TEST_F(MonitorProcessTest, SecondStartExitsAtOnceAndTheFirstRunsOn)
{
  StoreSettings(1, 0, kFirstHotKey);
  CMonitorProcess first;
  ASSERT_TRUE(first.Launch());
  ASSERT_TRUE(first.WaitUntilReady());

  CMonitorProcess second;
  ASSERT_TRUE(second.Launch());
  ASSERT_TRUE(second.WaitForExit());
  EXPECT_EQ(second.ExitCode(), 0u);
  EXPECT_FALSE(first.WaitForExit(0));
  EXPECT_EQ(FindMonitorWindow(), first.Window());
  EXPECT_FALSE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, MonitorThatIsNotEnabledExitsAtOnce)
{
  StoreSettings(0, 0, kFirstHotKey);
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.Launch());
  ASSERT_TRUE(monitor.WaitForExit());
  EXPECT_EQ(monitor.ExitCode(), 0u);
  EXPECT_TRUE(HotKeyIsFree(kFirstHotKey));
}

TEST_F(MonitorProcessTest, StartMonitorFindsTheMonitorBesideTheProgram)
{
  StoreSettings(1, 0, kFirstHotKey);
  // A failure would be a prompt, which nobody answers here: it fails the case.
  CScriptedMessageBoxes prompts;
  StartMonitor(nullptr);
  CMonitorProcess monitor;
  ASSERT_TRUE(monitor.WaitUntilReady());
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_FALSE(HotKeyIsFree(kFirstHotKey));
}

}  // namespace
