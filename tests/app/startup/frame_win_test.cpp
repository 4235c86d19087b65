// The interactive start of ctell.exe against the reference device host: the main window of
// the first copy, what a second start, "/notify" and "/mount" do beside it, and its
// placement between runs, and the libraries the main window opens with.
#include <windows.h>

#include <gtest/gtest.h>
#include <tlhelp32.h>

#include <set>
#include <string>

#include "app/instance_names.h"
#include "app/startup/ctell_process_win.h"
#include "devhost/host_fixture.h"
#include "system/wide_text_win.h"

namespace {

constexpr wchar_t kSettingsKey[] = L"Software\\Pellmora\\Cryptelle\\1.0";
constexpr const wchar_t* kLayoutValues[] = {L"WindowPos", L"ColumnPos", L"VisibleColumns",
                                            L"SortColumn"};

// The type and size of a value under the settings key; type 0 when it is missing.
struct StoredValue {
  DWORD type = 0;
  DWORD size = 0;
};

StoredValue ReadStoredValue(const wchar_t* name)
{
  StoredValue value;
  if (RegGetValueW(HKEY_CURRENT_USER, kSettingsKey, name, RRF_RT_ANY, &value.type, nullptr,
                   &value.size) != ERROR_SUCCESS) {
    return {};
  }
  return value;
}

void StorePlacement(const WINDOWPLACEMENT& placement)
{
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSettingsKey, L"WindowPos", REG_BINARY, &placement,
                            sizeof placement),
            ERROR_SUCCESS);
}

WINDOWPLACEMENT PlacementOf(HWND window)
{
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  GetWindowPlacement(window, &placement);
  return placement;
}

// The file names of the libraries loaded in process `processId`, in lower case.
std::set<std::wstring> LoadedLibraries(DWORD processId)
{
  std::set<std::wstring> names;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, processId);
  if (snapshot == INVALID_HANDLE_VALUE) return names;
  MODULEENTRY32W module{};
  module.dwSize = sizeof module;
  for (BOOL more = Module32FirstW(snapshot, &module); more;
       more = Module32NextW(snapshot, &module)) {
    std::wstring name = module.szModule;
    CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
    names.insert(name);
  }
  CloseHandle(snapshot);
  return names;
}

bool SameRect(const RECT& a, const RECT& b)
{
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

class CtellFrame : public DeviceHostTest {
 protected:
  void SetUp() override
  {
    DeviceHostTest::SetUp();
    ForgetLayout();
  }

  void TearDown() override
  {
    ForgetLayout();
    DeviceHostTest::TearDown();
  }

  static void ForgetLayout()
  {
    for (const wchar_t* name : kLayoutValues) {
      RegDeleteKeyValueW(HKEY_CURRENT_USER, kSettingsKey, name);
    }
  }

  // Starts an interactive copy and waits for its main window.
  static HWND StartFrame(CtellProcess& process)
  {
    EXPECT_TRUE(process.Started());
    const HWND frame = process.WaitForWindow(kFrameTitle, 20000);
    if (frame == nullptr) {
      const std::optional<DWORD> exitCode = process.WaitForExit(0);
      ADD_FAILURE() << "no main window appeared; the copy "
                    << (exitCode ? "ended with " + std::to_string(*exitCode) : "still runs");
    }
    return frame;
  }

  // Asks the main window to close as another copy of the program would, and waits for the
  // copy to end.
  static std::optional<DWORD> CloseFrame(CtellProcess& process, HWND frame)
  {
    PostMessageW(frame, RegisterWindowMessageW(Wide(kCloseMessageName)), 0, 0);
    return process.WaitForExit(20000);
  }
};

}  // namespace

TEST_F(CtellFrame, ClosingTheFrameSavesItsLayoutAndEndsWithZero)
{
  CtellProcess first(L"");
  const HWND frame = StartFrame(first);
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(first.CountWindows(kFrameTitle), 1);
  EXPECT_EQ(CloseFrame(first, frame), 0u);

  const StoredValue placement = ReadStoredValue(L"WindowPos");
  EXPECT_EQ(placement.type, static_cast<DWORD>(REG_BINARY));
  EXPECT_EQ(placement.size, 44u);
  EXPECT_NE(ReadStoredValue(L"ColumnPos").type, 0u);
  EXPECT_NE(ReadStoredValue(L"VisibleColumns").type, 0u);
  EXPECT_NE(ReadStoredValue(L"SortColumn").type, 0u);
}

TEST_F(CtellFrame, SecondStartActivatesTheFirstFrameAndEndsWithZero)
{
  CtellProcess first(L"");
  const HWND frame = StartFrame(first);
  ASSERT_NE(frame, nullptr);
  // Another window takes the front first, so that the activation can be seen.
  CStandInWindow other;
  ASSERT_TRUE(other.TakeTheFront());

  CtellProcess second(L"");
  ASSERT_TRUE(second.Started());
  EXPECT_EQ(second.WaitForExit(5000), 0u);
  EXPECT_TRUE(PumpMessagesUntil([&] { return GetForegroundWindow() == frame; }, 5000));
  EXPECT_EQ(first.CountWindows(kFrameTitle), 1);
  EXPECT_EQ(CloseFrame(first, frame), 0u);
}

TEST_F(CtellFrame, NotifyMakesTheRunningFrameListTheDisksAgain)
{
  CtellProcess first(L"");
  const HWND frame = StartFrame(first);
  ASSERT_NE(frame, nullptr);
  // Once its start-up refresh is over, the frame asks the host nothing by itself.
  PumpMessagesFor(500);
  ForgetLastCall();
  PumpMessagesFor(2500);
  ASSERT_EQ(LastCall(), L"none");

  EXPECT_EQ(RunCtell(L"/notify"), 0u);
  EXPECT_TRUE(PumpMessagesUntil([] { return LastCall() == L"8 EnumerateDisks"; }, 5000));
  EXPECT_EQ(CloseFrame(first, frame), 0u);
}

TEST_F(CtellFrame, MountBesideTheFrameOpensOnlyTheMountDialog)
{
  CtellProcess first(L"");
  const HWND frame = StartFrame(first);
  ASSERT_NE(frame, nullptr);
  CStandInWindow other;
  ASSERT_TRUE(other.TakeTheFront());

  CtellProcess mount(L"/mount C:\\disk.qvi");
  const HWND dialog = mount.WaitForWindow(kMountDialogCaption, 20000);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(mount.CountWindows(kFrameTitle), 0);
  EXPECT_EQ(first.CountWindows(kFrameTitle), 1);
  EXPECT_NE(GetForegroundWindow(), frame);
  PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  EXPECT_EQ(mount.WaitForExit(10000), kExitMinusOne);
  EXPECT_EQ(CloseFrame(first, frame), 0u);
}

TEST_F(CtellFrame, ANewStartRestoresTheSavedPlacement)
{
  const RECT moved{123, 77, 623, 377};
  {
    CtellProcess first(L"");
    const HWND frame = StartFrame(first);
    ASSERT_NE(frame, nullptr);
    SetWindowPos(frame, nullptr, moved.left, moved.top, moved.right - moved.left,
                 moved.bottom - moved.top, SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(PumpMessagesUntil(
        [&] { return SameRect(PlacementOf(frame).rcNormalPosition, moved); }, 5000));
    ASSERT_EQ(CloseFrame(first, frame), 0u);
  }
  CtellProcess again(L"");
  const HWND frame = StartFrame(again);
  ASSERT_NE(frame, nullptr);
  const WINDOWPLACEMENT placement = PlacementOf(frame);
  EXPECT_TRUE(SameRect(placement.rcNormalPosition, moved));
  EXPECT_EQ(CloseFrame(again, frame), 0u);
}

TEST_F(CtellFrame, AMaximisedPlacementReopensNormal)
{
  WINDOWPLACEMENT stored{};
  stored.length = sizeof stored;
  stored.showCmd = SW_SHOWMAXIMIZED;
  stored.rcNormalPosition = RECT{40, 30, 540, 330};
  StorePlacement(stored);
  CtellProcess process(L"");
  const HWND frame = StartFrame(process);
  ASSERT_NE(frame, nullptr);
  EXPECT_FALSE(IsZoomed(frame));
  EXPECT_TRUE(SameRect(PlacementOf(frame).rcNormalPosition, stored.rcNormalPosition));
  EXPECT_EQ(CloseFrame(process, frame), 0u);
}

TEST_F(CtellFrame, APlacementOffTheScreenIsIgnored)
{
  WINDOWPLACEMENT stored{};
  stored.length = sizeof stored;
  stored.showCmd = SW_SHOWNORMAL;
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const int height = GetSystemMetrics(SM_CYSCREEN);
  stored.rcNormalPosition = RECT{width + 100, height + 100, width + 600, height + 400};
  StorePlacement(stored);
  CtellProcess process(L"");
  const HWND frame = StartFrame(process);
  ASSERT_NE(frame, nullptr);
  const RECT normal = PlacementOf(frame).rcNormalPosition;
  EXPECT_FALSE(SameRect(normal, stored.rcNormalPosition));
  EXPECT_LT(normal.left, width);
  EXPECT_LT(normal.top, height);
  EXPECT_EQ(CloseFrame(process, frame), 0u);
}

TEST_F(CtellFrame, TheMainWindowOpensWithoutTheCommonDialogsAndTheNetworkLibrary)
{
  CtellProcess process(L"");
  const HWND frame = StartFrame(process);
  ASSERT_NE(frame, nullptr);
  const std::set<std::wstring> loaded = LoadedLibraries(process.Id());
  // What the window needs is there, so the list is the process's own.
  EXPECT_EQ(loaded.count(L"user32.dll"), 1u);
  EXPECT_EQ(loaded.count(L"comctl32.dll"), 1u);
  // The file dialogs and the network disks' enumeration load at their first call.
  EXPECT_EQ(loaded.count(L"comdlg32.dll"), 0u);
  EXPECT_EQ(loaded.count(L"winspool.drv"), 0u);
  EXPECT_EQ(loaded.count(L"mpr.dll"), 0u);
  EXPECT_EQ(CloseFrame(process, frame), 0u);
}
