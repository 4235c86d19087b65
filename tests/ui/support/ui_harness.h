// The headless harness for user-interface tests under Wine's null graphics driver.
//
// Tests create windows and dialogs, drive them by messages (BM_CLICK, WM_SETTEXT,
// WM_COMMAND, list-view messages) and read the controls back. Prompts, file dialogs, shell
// calls, help and process starts go through their services (services/), which the fixture
// replaces with scripts of answers: a call nobody scripted fails the test. Two backstops
// turn what would hang the run into a failed test:
//   - a thread CBT hook fails the test and closes any dialog box that is not one of the
//     framework's windows (a MessageBoxW that bypassed the service, a common dialog);
//   - a watchdog timer fails the test and closes the thread's windows when a test has been
//     pumping messages (e.g. inside a modal loop) for longer than its time limit.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/scripted_file_dialogs.h"
#include "support/scripted_help.h"
#include "support/scripted_message_boxes.h"
#include "support/scripted_processes.h"
#include "support/scripted_shell.h"
#include "ui/handler_failure.h"
#include "ui/handles.h"

// Replaces the handler-failure reporter for its lifetime and records every report (an
// exception a handler threw and the barrier caught). Reports that the test does not take
// fail it at the end.
class CRecordedHandlerFailures final : public CHandlerFailureReporter {
 public:
  struct Failure {
    HWND window;
    UINT message;
    std::string what;
  };

  CRecordedHandlerFailures();
  ~CRecordedHandlerFailures();
  CRecordedHandlerFailures(const CRecordedHandlerFailures&) = delete;
  CRecordedHandlerFailures& operator=(const CRecordedHandlerFailures&) = delete;

  // The reports so far, which the test has now seen.
  std::vector<Failure> Take() { return std::exchange(failures_, {}); }

  void Report(HWND window, UINT message, const std::string& what) override;

 private:
  CHandlerFailureReporter* previous_;
  std::vector<Failure> failures_;
};

// The CBT-hook backstop of the calling thread (see above). Reports name the box's caption
// and texts; the box is ended with IDCANCEL, so the code that showed it goes on.
class CUnexpectedBoxBackstop {
 public:
  CUnexpectedBoxBackstop();
  ~CUnexpectedBoxBackstop();
  CUnexpectedBoxBackstop(const CUnexpectedBoxBackstop&) = delete;
  CUnexpectedBoxBackstop& operator=(const CUnexpectedBoxBackstop&) = delete;

  int Caught() const { return caught_; }

 private:
  static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);
  static void CALLBACK JudgeSuspects(HWND, UINT, UINT_PTR id, DWORD);

  CHook hook_;
  std::vector<HWND> suspects_;
  CUnexpectedBoxBackstop* previous_;
  int caught_ = 0;
};

// The watchdog backstop: a thread timer that fires only while messages are being dispatched.
class CModalWatchdog {
 public:
  explicit CModalWatchdog(std::chrono::milliseconds limit);
  ~CModalWatchdog();
  CModalWatchdog(const CModalWatchdog&) = delete;
  CModalWatchdog& operator=(const CModalWatchdog&) = delete;

  int Fired() const { return fired_; }

 private:
  static void CALLBACK TimerProc(HWND, UINT, UINT_PTR id, DWORD);

  UINT_PTR timer_;
  CModalWatchdog* previous_;
  int fired_ = 0;
};

// The fixture of every user-interface test: common controls initialised, every replaceable
// service scripted, handler failures recorded, and both backstops. (Window objects destroy
// the windows they outlive.)
class UiTest : public ::testing::Test {
 protected:
  UiTest();
  ~UiTest() override;

  CScriptedMessageBoxes prompts_;
  CRecordedHandlerFailures handlerFailures_;
  CScriptedFileDialogs fileDialogs_;
  CScriptedShell shell_;
  CScriptedHelp help_;
  CScriptedProcesses processes_;
  CUnexpectedBoxBackstop backstop_;
  CModalWatchdog watchdog_{std::chrono::seconds(20)};
};

// Dispatches every message already queued for this thread (through the current message
// loop's filters, when there is a loop).
void PumpMessages();
// Pumps messages until `done` holds; fails the test and returns false after `limit`.
bool PumpUntil(const std::function<bool()>& done,
               std::chrono::milliseconds limit = std::chrono::seconds(5));

// Runs `show` (which opens a modal dialog or sheet and returns its result) and, once the new
// modal window is up, calls `script` with it from inside the modal loop. The script drives
// the window to its end; the watchdog ends a window the script leaves open.
INT_PTR RunModal(const std::function<INT_PTR()>& show, const std::function<void(HWND)>& script);

// Control access by id inside `parent`.
void Click(HWND parent, int id);
void SetControlText(HWND parent, int id, const std::wstring& text);
std::wstring ControlText(HWND parent, int id);
bool IsControlEnabled(HWND parent, int id);
UINT CheckState(HWND parent, int id);

// List-view access.
int ListRowCount(HWND list);
int ListColumnCount(HWND list);
std::wstring ListCellText(HWND list, int row, int column);
void SelectListRow(HWND list, int row, bool selected);
int ListSelectedCount(HWND list);
