#include "support/ui_harness.h"

#include <commctrl.h>

#include <algorithm>
#include <set>
#include <utility>

#include "ui/message_loop.h"
#include "ui/window.h"

namespace {

thread_local CUnexpectedBoxBackstop* currentBackstop = nullptr;
thread_local CModalWatchdog* currentWatchdog = nullptr;

std::wstring ClassName(HWND window)
{
  wchar_t name[64] = {};
  const int length = GetClassNameW(window, name, 64);
  return std::wstring(name, static_cast<size_t>(std::max(length, 0)));
}

// The caption and every static text of a box, for the failure report.
std::wstring Describe(HWND box)
{
  std::wstring description = L"\"" + CWindow::WindowText(box) + L"\"";
  EnumChildWindows(
      box,
      [](HWND child, LPARAM text) {
        const std::wstring childText = CWindow::WindowText(child);
        if (_wcsicmp(ClassName(child).c_str(), L"Static") == 0 && !childText.empty()) {
          *reinterpret_cast<std::wstring*>(text) += L" \"" + childText + L"\"";
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&description));
  return description;
}

std::vector<HWND> ThreadTopLevelWindows()
{
  std::vector<HWND> windows;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM list) {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&windows));
  return windows;
}

// State of the one RunModal in progress on this thread.
struct ModalRun {
  std::set<HWND> before;
  const std::function<void(HWND)>* script;
  UINT_PTR timer;
};
thread_local ModalRun* currentRun = nullptr;

void CALLBACK RunScriptWhenUp(HWND, UINT, UINT_PTR, DWORD)
{
  ModalRun* const run = currentRun;
  if (run == nullptr) return;
  // The modal window is the new visible, enabled top-level window of this thread.
  for (const HWND window : ThreadTopLevelWindows()) {
    if (run->before.count(window) != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
      continue;
    }
    KillTimer(nullptr, run->timer);
    currentRun = nullptr;
    (*run->script)(window);
    return;
  }
}

}  // namespace

CRecordedHandlerFailures::CRecordedHandlerFailures()
    : previous_(ReplaceHandlerFailureReporter(this))
{
}

CRecordedHandlerFailures::~CRecordedHandlerFailures()
{
  ReplaceHandlerFailureReporter(previous_);
  for (const Failure& failure : failures_) {
    ADD_FAILURE() << "a handler of message 0x" << std::hex << failure.message
                  << " threw: " << failure.what;
  }
}

void CRecordedHandlerFailures::Report(HWND window, UINT message, const std::string& what)
{
  failures_.push_back({window, message, what});
}

CUnexpectedBoxBackstop::CUnexpectedBoxBackstop()
    : hook_(SetWindowsHookExW(WH_CBT, HookProc, nullptr, GetCurrentThreadId())),
      previous_(std::exchange(currentBackstop, this))
{
  EXPECT_TRUE(hook_.IsValid()) << "the CBT hook could not be installed";
}

CUnexpectedBoxBackstop::~CUnexpectedBoxBackstop()
{
  currentBackstop = previous_;
}

LRESULT CALLBACK CUnexpectedBoxBackstop::HookProc(int code, WPARAM wParam, LPARAM lParam)
{
  // The verdict waits until the box's own message loop runs (a timer, which the box
  // dispatches), so that a window activated while still being set up is judged complete.
  const auto window = reinterpret_cast<HWND>(wParam);
  if (code == HCBT_ACTIVATE && currentBackstop != nullptr && ClassName(window) == L"#32770" &&
      CMessageHandler::FromHandle(window) == nullptr) {
    currentBackstop->suspects_.push_back(window);
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, JudgeSuspects);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK CUnexpectedBoxBackstop::JudgeSuspects(HWND, UINT, UINT_PTR id, DWORD)
{
  KillTimer(nullptr, id);
  if (currentBackstop == nullptr) return;
  const std::vector<HWND> suspects = std::exchange(currentBackstop->suspects_, {});
  for (const HWND window : suspects) {
    if (!IsWindow(window) || CMessageHandler::FromHandle(window) != nullptr) continue;
    ++currentBackstop->caught_;
    ADD_FAILURE() << "unexpected modal box " << Describe(window)
                  << ": every prompt must go through the message-box service";
    EndDialog(window, IDCANCEL);
  }
}

CModalWatchdog::CModalWatchdog(std::chrono::milliseconds limit)
    : timer_(SetTimer(nullptr, 0, static_cast<UINT>(limit.count()), TimerProc)),
      previous_(std::exchange(currentWatchdog, this))
{
}

CModalWatchdog::~CModalWatchdog()
{
  KillTimer(nullptr, timer_);
  currentWatchdog = previous_;
}

void CALLBACK CModalWatchdog::TimerProc(HWND, UINT, UINT_PTR id, DWORD)
{
  CModalWatchdog* watchdog = currentWatchdog;
  while (watchdog != nullptr && watchdog->timer_ != id) watchdog = watchdog->previous_;
  if (watchdog == nullptr) return;
  ++watchdog->fired_;
  ADD_FAILURE() << "the test was still pumping messages at its time limit (a modal window "
                   "nobody closes?); closing the thread's windows";
  for (const HWND window : ThreadTopLevelWindows()) {
    if (IsWindowVisible(window) && IsWindowEnabled(window)) PostMessageW(window, WM_CLOSE, 0, 0);
  }
}

UiTest::UiTest()
{
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
}

UiTest::~UiTest()
{
  PumpMessages();
}

void PumpMessages()
{
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    CMessageLoop* const loop = CMessageLoop::Current();
    if (loop != nullptr) {
      loop->ProcessMessage(message);
    } else {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
}

bool PumpUntil(const std::function<bool()>& done, std::chrono::milliseconds limit)
{
  const auto deadline = std::chrono::steady_clock::now() + limit;
  for (;;) {
    PumpMessages();
    if (done()) return true;
    if (std::chrono::steady_clock::now() >= deadline) {
      ADD_FAILURE() << "condition not reached within " << limit.count() << " ms";
      return false;
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

INT_PTR RunModal(const std::function<INT_PTR()>& show, const std::function<void(HWND)>& script)
{
  const std::vector<HWND> before = ThreadTopLevelWindows();
  ModalRun run{{before.begin(), before.end()}, &script, 0};
  run.timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, RunScriptWhenUp);
  ModalRun* const outer = std::exchange(currentRun, &run);
  const INT_PTR result = show();
  if (currentRun == &run) {
    KillTimer(nullptr, run.timer);
    ADD_FAILURE() << "the modal window ended before its script ran";
  }
  currentRun = outer;
  return result;
}

void Click(HWND parent, int id)
{
  SendMessageW(GetDlgItem(parent, id), BM_CLICK, 0, 0);
}

void SetControlText(HWND parent, int id, const std::wstring& text)
{
  SendMessageW(GetDlgItem(parent, id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring ControlText(HWND parent, int id)
{
  return CWindow::WindowText(GetDlgItem(parent, id));
}

bool IsControlEnabled(HWND parent, int id)
{
  return IsWindowEnabled(GetDlgItem(parent, id)) != FALSE;
}

UINT CheckState(HWND parent, int id)
{
  return IsDlgButtonChecked(parent, id);
}

int ListRowCount(HWND list)
{
  return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

int ListColumnCount(HWND list)
{
  const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  return static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
}

std::wstring ListCellText(HWND list, int row, int column)
{
  wchar_t buffer[512] = {};
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = buffer;
  item.cchTextMax = 512;
  const auto length = SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                   reinterpret_cast<LPARAM>(&item));
  return std::wstring(buffer, static_cast<size_t>(std::max<LRESULT>(length, 0)));
}

void SelectListRow(HWND list, int row, bool selected)
{
  LVITEMW item{};
  item.stateMask = LVIS_SELECTED;
  item.state = selected ? LVIS_SELECTED : 0;
  SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

int ListSelectedCount(HWND list)
{
  return static_cast<int>(SendMessageW(list, LVM_GETSELECTEDCOUNT, 0, 0));
}
