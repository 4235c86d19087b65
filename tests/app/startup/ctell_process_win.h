// ctell.exe started as a process of its own by the start-up tests, and a stand-in for a
// running copy of it: the tests watch what a start does from outside, as another program
// or the user would.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

// The captions of the main window and of the mount dialog.
inline constexpr wchar_t kFrameTitle[] = L"Cryptelle";
inline constexpr wchar_t kMountDialogCaption[] = L"Mount Virtual Disk Image";
// The control of a message box that holds its text.
inline constexpr int kMessageBoxTextId = 0xFFFF;

// The text of the control `id` of `dialog` (a window of any process).
std::wstring ControlText(HWND dialog, int id);

// Runs this thread's messages for `milliseconds`, so that windows of the test answer what
// other processes send or post to them.
void PumpMessagesFor(DWORD milliseconds);

// Runs this thread's messages until `done` is true or `milliseconds` have passed; returns
// `done`'s last answer.
template <typename Condition>
bool PumpMessagesUntil(Condition done, DWORD milliseconds)
{
  const ULONGLONG deadline = GetTickCount64() + milliseconds;
  while (!done()) {
    if (GetTickCount64() >= deadline) return false;
    PumpMessagesFor(20);
  }
  return true;
}

// The path of ctell.exe beside the test program.
std::wstring CtellPath();

// ctell.exe from the test program's own directory, started with `arguments`. A process
// still running when the object goes is terminated, so that no test leaves a window (or a
// message box nobody can answer) behind.
class CtellProcess {
 public:
  explicit CtellProcess(const std::wstring& arguments);
  ~CtellProcess();
  CtellProcess(const CtellProcess&) = delete;
  CtellProcess& operator=(const CtellProcess&) = delete;

  bool Started() const { return process_ != nullptr; }
  DWORD Id() const { return id_; }

  // The exit code once the process ended within `milliseconds` (this thread's messages
  // run meanwhile); nothing when it still runs or never started.
  std::optional<DWORD> WaitForExit(DWORD milliseconds);
  // The same, but this thread's messages wait meanwhile: its windows look hung to others.
  std::optional<DWORD> WaitForExitWithoutAnswering(DWORD milliseconds);

  // The process's visible top-level window with the caption `title`, waited for up to
  // `milliseconds`; null when none appeared.
  HWND WaitForWindow(const wchar_t* title, DWORD milliseconds) const;

  // The number of the process's top-level windows with the caption `title`.
  int CountWindows(const wchar_t* title) const;

 private:
  HANDLE process_ = nullptr;
  DWORD id_ = 0;
};

// Starts ctell.exe with `arguments` and waits up to `milliseconds` for its exit code;
// nothing when it did not start or did not end in time (it is terminated then).
std::optional<DWORD> RunCtell(const std::wstring& arguments, DWORD milliseconds = 20000);

// The exit code -1 as the system reports it.
inline constexpr DWORD kExitMinusOne = 0xFFFFFFFF;

// A visible top-level window of the test, to take the front from a copy of the program.
class CStandInWindow {
 public:
  CStandInWindow();
  ~CStandInWindow();
  CStandInWindow(const CStandInWindow&) = delete;
  CStandInWindow& operator=(const CStandInWindow&) = delete;

  HWND Handle() const { return window_; }
  // Brings this window to the front; false when it is not there within 5 seconds.
  bool TakeTheFront() const;

 private:
  HWND window_ = nullptr;
};

// Plays the running copy of the program: holds the single-instance mutex and a top-level
// window that counts the activate and refresh messages it receives (answering the activate
// message as the main window does).
class CStandInCopy {
 public:
  CStandInCopy();
  ~CStandInCopy();
  CStandInCopy(const CStandInCopy&) = delete;
  CStandInCopy& operator=(const CStandInCopy&) = delete;

  bool Ready() const { return mutex_ != nullptr && window_ != nullptr; }
  int Activations() const { return activations_; }
  int Refreshes() const { return refreshes_; }

 private:
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HANDLE mutex_ = nullptr;
  HWND window_ = nullptr;
  UINT activateMessage_ = 0;
  UINT refreshMessage_ = 0;
  int activations_ = 0;
  int refreshes_ = 0;
};
