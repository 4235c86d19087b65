#include "app/startup/ctell_process_win.h"

#include <string>
#include <vector>

#include "app/instance_names.h"
#include "support/process_windows_win.h"
#include "support/program_start_win.h"
#include "system/wide_text_win.h"

std::wstring ControlText(HWND dialog, int id)
{
  wchar_t text[1024] = {};
  GetDlgItemTextW(dialog, id, text, 1024);
  return text;
}

std::wstring CtellPath()
{
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.find_last_of(L'\\') + 1) + L"ctell.exe";
}

void PumpMessagesFor(DWORD milliseconds)
{
  const ULONGLONG deadline = GetTickCount64() + milliseconds;
  for (;;) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= deadline) return;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(deadline - now), QS_ALLINPUT);
  }
}

CtellProcess::CtellProcess(const std::wstring& arguments)
{
  const std::optional<PROCESS_INFORMATION> started = StartProgram(CtellPath(), arguments);
  if (!started) return;
  process_ = started->hProcess;
  id_ = started->dwProcessId;
}

CtellProcess::~CtellProcess()
{
  if (process_ == nullptr) return;
  if (WaitForSingleObject(process_, 0) == WAIT_TIMEOUT) {
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, 5000);
  }
  CloseHandle(process_);
}

std::optional<DWORD> CtellProcess::WaitForExit(DWORD milliseconds)
{
  if (process_ == nullptr) return std::nullopt;
  const bool ended = PumpMessagesUntil(
      [this] { return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0; }, milliseconds);
  if (!ended) return std::nullopt;
  DWORD exitCode = 0;
  GetExitCodeProcess(process_, &exitCode);
  return exitCode;
}

std::optional<DWORD> CtellProcess::WaitForExitWithoutAnswering(DWORD milliseconds)
{
  if (process_ == nullptr || WaitForSingleObject(process_, milliseconds) != WAIT_OBJECT_0) {
    return std::nullopt;
  }
  DWORD exitCode = 0;
  GetExitCodeProcess(process_, &exitCode);
  return exitCode;
}

HWND CtellProcess::WaitForWindow(const wchar_t* title, DWORD milliseconds) const
{
  HWND window = nullptr;
  PumpMessagesUntil(
      [&] {
        for (HWND candidate : TopLevelWindows(id_, title)) {
          if (IsWindowVisible(candidate)) window = candidate;
        }
        return window != nullptr;
      },
      milliseconds);
  return window;
}

int CtellProcess::CountWindows(const wchar_t* title) const
{
  return static_cast<int>(TopLevelWindows(id_, title).size());
}

std::optional<DWORD> RunCtell(const std::wstring& arguments, DWORD milliseconds)
{
  CtellProcess process(arguments);
  return process.WaitForExit(milliseconds);
}

namespace {

// Creates a top-level window of the test's class `className`, registered with `procedure`
// on first use (a later registration fails harmlessly).
HWND CreateTestWindow(const wchar_t* className, WNDPROC procedure, const wchar_t* title,
                      DWORD style, const RECT& place, void* creationData)
{
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = className;
  RegisterClassExW(&windowClass);
  return CreateWindowExW(0, className, title, style, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, nullptr, nullptr,
                         windowClass.hInstance, creationData);
}

}  // namespace

CStandInWindow::CStandInWindow()
    : window_(CreateTestWindow(L"CryptelleTestWindow", DefWindowProcW, L"Test window",
                               WS_OVERLAPPEDWINDOW | WS_VISIBLE, RECT{10, 10, 310, 210}, nullptr))
{
}

bool CStandInWindow::TakeTheFront() const
{
  SetForegroundWindow(window_);
  return PumpMessagesUntil([&] { return GetForegroundWindow() == window_; }, 5000);
}

CStandInWindow::~CStandInWindow()
{
  if (window_ != nullptr) DestroyWindow(window_);
}

CStandInCopy::CStandInCopy()
    : activateMessage_(RegisterWindowMessageW(Wide(kSingleInstanceName))),
      refreshMessage_(RegisterWindowMessageW(Wide(kRefreshMessageName)))
{
  mutex_ = CreateMutexW(nullptr, FALSE, Wide(kSingleInstanceName));
  window_ = CreateTestWindow(L"CryptelleStandInCopy", WindowProc, L"Stand-in copy",
                             WS_OVERLAPPEDWINDOW, RECT{0, 0, 200, 100}, this);
}

CStandInCopy::~CStandInCopy()
{
  if (window_ != nullptr) DestroyWindow(window_);
  if (mutex_ != nullptr) CloseHandle(mutex_);
}

LRESULT CALLBACK CStandInCopy::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* copy = reinterpret_cast<CStandInCopy*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (copy != nullptr && message != 0) {
    if (message == copy->activateMessage_) {
      ++copy->activations_;
      return static_cast<LRESULT>(kActivateReply);
    }
    if (message == copy->refreshMessage_) {
      ++copy->refreshes_;
      return 0;
    }
  }
  return DefWindowProcW(window, message, wParam, lParam);
}
