// The message loop: exit code, filters (newest first, consuming, removable while running),
// idle handlers (once per burst of input), accelerators and dialog keyboard navigation.
#include <string>
#include <vector>

#include "support/test_dialogs.h"
#include "support/ui_harness.h"
#include "ui/message_loop.h"
#include "ui/window.h"

namespace {

using MessageLoopTest = UiTest;

constexpr UINT kProbe = WM_APP + 7;

// A window that counts the probe messages and commands dispatched to it.
class CProbeWindow : public CCustomWindow {
 public:
  int probes = 0;
  std::vector<UINT> commands;

 protected:
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    if (message == kProbe) {
      ++probes;
      result = 0;
      return true;
    }
    return CCustomWindow::HandleMessage(message, wParam, lParam, result);
  }
  bool OnCommand(UINT id, UINT, HWND) override
  {
    commands.push_back(id);
    return true;
  }
};

class CRecordingFilter : public CMessageFilter {
 public:
  CRecordingFilter(std::string name, std::vector<std::string>& log, bool consume)
      : name_(std::move(name)), log_(log), consume_(consume)
  {
  }
  CMessageLoop* removeFrom = nullptr;
  CMessageFilter* toRemove = nullptr;

  bool PreTranslateMessage(MSG& message) override
  {
    if (message.message != kProbe) return false;
    log_.push_back(name_);
    if (removeFrom != nullptr) removeFrom->RemoveMessageFilter(toRemove);
    return consume_;
  }

 private:
  std::string name_;
  std::vector<std::string>& log_;
  bool consume_;
};

class CCountingIdle : public CIdleHandler {
 public:
  int calls = 0;
  std::function<void()> action;
  void OnIdle() override
  {
    ++calls;
    if (action) action();
  }
};

HWND MakeProbe(CProbeWindow& window)
{
  return window.Create(nullptr, RECT{0, 0, 100, 100}, L"probe", WS_OVERLAPPEDWINDOW);
}

TEST_F(MessageLoopTest, RunReturnsTheQuitCode)
{
  CMessageLoop loop;
  EXPECT_EQ(CMessageLoop::Current(), &loop);
  PostQuitMessage(42);
  EXPECT_EQ(loop.Run(), 42);
}

TEST_F(MessageLoopTest, NestedLoopsRestoreTheOuterAsCurrent)
{
  CMessageLoop outer;
  {
    CMessageLoop inner;
    EXPECT_EQ(CMessageLoop::Current(), &inner);
  }
  EXPECT_EQ(CMessageLoop::Current(), &outer);
}

TEST_F(MessageLoopTest, FiltersRunNewestFirstAndAConsumedMessageIsNotDispatched)
{
  CProbeWindow window;
  const HWND handle = MakeProbe(window);
  std::vector<std::string> log;
  CRecordingFilter older("older", log, false);
  CRecordingFilter newer("newer", log, false);
  CMessageLoop loop;
  loop.AddMessageFilter(&older);
  loop.AddMessageFilter(&newer);
  PostMessageW(handle, kProbe, 0, 0);
  PostQuitMessage(0);
  loop.Run();
  EXPECT_EQ(log, (std::vector<std::string>{"newer", "older"}));
  EXPECT_EQ(window.probes, 1);

  CRecordingFilter consumer("consumer", log, true);
  loop.AddMessageFilter(&consumer);
  log.clear();
  PostMessageW(handle, kProbe, 0, 0);
  PostQuitMessage(0);
  loop.Run();
  EXPECT_EQ(log, (std::vector<std::string>{"consumer"}));
  EXPECT_EQ(window.probes, 1);  // consumed: not dispatched
}

TEST_F(MessageLoopTest, FilterRemovedDuringAPassIsNotCalled)
{
  CProbeWindow window;
  const HWND handle = MakeProbe(window);
  std::vector<std::string> log;
  CRecordingFilter victim("victim", log, false);
  CRecordingFilter remover("remover", log, false);
  CMessageLoop loop;
  loop.AddMessageFilter(&victim);
  loop.AddMessageFilter(&remover);
  remover.removeFrom = &loop;
  remover.toRemove = &victim;
  PostMessageW(handle, kProbe, 0, 0);
  PostQuitMessage(0);
  loop.Run();
  EXPECT_EQ(log, (std::vector<std::string>{"remover"}));
  EXPECT_EQ(window.probes, 1);
}

TEST_F(MessageLoopTest, IdleHandlersRunOncePerBurstOfMessages)
{
  CProbeWindow window;
  const HWND handle = MakeProbe(window);
  CMessageLoop loop;
  CCountingIdle idle;
  int bursts = 0;
  idle.action = [&] {
    // First idle: post a burst of three; second idle: quit.
    if (bursts++ == 0) {
      for (int i = 0; i < 3; ++i) PostMessageW(handle, kProbe, 0, 0);
    } else {
      PostQuitMessage(0);
    }
  };
  loop.AddIdleHandler(&idle);
  loop.Run();
  EXPECT_EQ(window.probes, 3);
  EXPECT_EQ(idle.calls, 2);
  loop.RemoveIdleHandler(&idle);
  PostQuitMessage(0);
  loop.Run();
  EXPECT_EQ(idle.calls, 2);
}

TEST_F(MessageLoopTest, MouseMovesAndPaintsDoNotCountAsInputForIdle)
{
  MSG message{};
  message.message = WM_MOUSEMOVE;
  EXPECT_FALSE(CMessageLoop::IsIdleMessage(message));
  message.message = WM_PAINT;
  EXPECT_FALSE(CMessageLoop::IsIdleMessage(message));
  message.message = WM_KEYDOWN;
  EXPECT_TRUE(CMessageLoop::IsIdleMessage(message));
}

TEST_F(MessageLoopTest, AcceleratorFilterTurnsKeysIntoCommands)
{
  CProbeWindow window;
  const HWND handle = MakeProbe(window);
  const HACCEL table = LoadAcceleratorsW(ResourceModule(), MAKEINTRESOURCEW(IDA_TEST));
  ASSERT_NE(table, nullptr);
  CAcceleratorFilter accelerators(handle, table);
  CMessageLoop loop;
  loop.AddMessageFilter(&accelerators);
  PostMessageW(handle, WM_KEYDOWN, VK_F5, 0x003F0001);
  PostMessageW(handle, WM_KEYDOWN, VK_F6, 0x00400001);  // not in the table
  PostQuitMessage(0);
  loop.Run();
  EXPECT_EQ(window.commands, std::vector<UINT>{ID_CMD_REFRESH});
}

TEST_F(MessageLoopTest, ModelessDialogJoinsTheLoopForEnterAndTab)
{
  CMessageLoop loop;
  CHarnessTestDlg dialog;
  dialog.name = L"kept";
  const HWND window = dialog.Create(nullptr);  // no registration by hand
  ShowWindow(window, SW_SHOW);
  SetFocus(GetDlgItem(window, IDC_NAME));
  // Tab in the edit field moves the focus to the next tab stop through IsDialogMessage.
  PostMessageW(GetDlgItem(window, IDC_NAME), WM_KEYDOWN, VK_TAB, 0x000F0001);
  PostQuitMessage(0);
  loop.Run();
  EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_ASK));
  // Enter presses the default button (OK), which ends the dialog.
  SetFocus(GetDlgItem(window, IDC_NAME));
  PostMessageW(GetDlgItem(window, IDC_NAME), WM_KEYDOWN, VK_RETURN, 0x001C0001);
  PostQuitMessage(0);
  loop.Run();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(dialog.name, L"kept");
}

// The test dialog that counts the messages its keyboard filter sees, in a counter that
// outlives it.
class CCountingFilterDlg : public CHarnessTestDlg {
 public:
  explicit CCountingFilterDlg(int& filtered) : filtered_(filtered) {}
  bool PreTranslateMessage(MSG& message) override
  {
    if (message.message == kProbe) ++filtered_;
    return CHarnessTestDlg::PreTranslateMessage(message);
  }

 private:
  int& filtered_;
};

TEST_F(MessageLoopTest, DestroyedModelessDialogIsNoLongerAFilter)
{
  CProbeWindow probe;
  const HWND handle = MakeProbe(probe);
  CMessageLoop loop;
  int filtered = 0;
  CCountingFilterDlg dialog(filtered);
  const HWND window = dialog.Create(nullptr);
  ASSERT_NE(window, nullptr);
  PostMessageW(handle, kProbe, 0, 0);
  PumpMessages();
  EXPECT_EQ(filtered, 1);

  Click(window, IDCANCEL);  // ends the modeless dialog: destroyed
  ASSERT_FALSE(IsWindow(window));
  PostMessageW(handle, kProbe, 0, 0);
  PumpMessages();
  EXPECT_EQ(filtered, 1);
  EXPECT_EQ(probe.probes, 2);
}

TEST_F(MessageLoopTest, DialogObjectDestroyedFirstLeavesTheLoop)
{
  CProbeWindow probe;
  const HWND handle = MakeProbe(probe);
  CMessageLoop loop;
  int filtered = 0;
  {
    CCountingFilterDlg dialog(filtered);
    ASSERT_NE(dialog.Create(nullptr), nullptr);
  }
  PostMessageW(handle, kProbe, 0, 0);
  PumpMessages();
  EXPECT_EQ(filtered, 0);
  EXPECT_EQ(probe.probes, 1);
}

TEST_F(MessageLoopTest, DialogOutlivingTheLoopItJoinedIsNoFilterOfTheOuterLoop)
{
  CProbeWindow probe;
  const HWND handle = MakeProbe(probe);
  CMessageLoop outer;
  int filtered = 0;
  CCountingFilterDlg dialog(filtered);
  {
    CMessageLoop inner;
    dialog.Create(nullptr);
  }
  // The inner loop is gone; the dialog was never a filter of the outer one.
  PostMessageW(handle, kProbe, 0, 0);
  PumpMessages();
  EXPECT_EQ(filtered, 0);
  dialog.EndDialog(IDCANCEL);
  EXPECT_EQ(dialog.Handle(), nullptr);
}

}  // namespace
