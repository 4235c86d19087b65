// The worker thread of a long job (clearing an image, creating one) that reports to a
// window of the user-interface thread.
//
// The thread is created suspended, one step below normal priority, and runs its body only
// once Start resumes it. The body reports progress with a message sent synchronously to
// the target window, whose answer carries the decision to go on (non-zero) or to stop (0),
// and may post further notices. When the body returns, the thread posts the completion
// message with the body's status. The user-interface thread never waits for the worker.
//
// Lifetime rule: the job (the body and the target window) belongs to the thread, not to
// the CWorkerThread object, which may be destroyed at any time. Destroyed before Start, it
// lets the thread end without running the body and without posting anything; after
// Start, the thread runs to its end on its own. So the body must own everything it uses
// (copies of the request, the image handle it works on) and must not point into the
// window's object, which may be gone: it talks to the window only through the reporter. A
// window destroyed while the worker runs answers every progress report with 0 (stop), and
// the posted notices and the completion are lost.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>

#include "system/status.h"
#include "ui/handles.h"

// Messages from a worker to its target window, in the application's private range.
// Posted once when the body has returned: wParam = the body's StatusCode, lParam = 0.
inline constexpr UINT kWorkerDoneMessage = WM_USER + 1;
// Sent for every progress report: wParam = done, lParam = total. The window answers
// non-zero to go on and 0 to stop.
inline constexpr UINT kWorkerProgressMessage = WM_USER + 2;

// The worker body's link to its target window; used on the worker's thread.
class CWorkerReporter {
 public:
  explicit CWorkerReporter(HWND target) : target_(target) {}

  // Sends the progress message and waits for the window's answer; true to go on.
  bool Progress(uint32_t done, uint32_t total) const;

  // Posts a notice such as "formatting starts" (lost when the window is gone). Notices
  // and the completion arrive in the order posted, but a progress report sent after a
  // notice may reach the window before it: a window takes sent messages first.
  void Notify(UINT message, WPARAM wParam, LPARAM lParam) const;

  // A progress callback of the image container's shape whose context is a reporter:
  // reports position of range and answers 1 to go on, 0 to stop.
  static uint32_t ImageProgress(uint32_t position, uint32_t range, void* reporter,
                                uint64_t bytesDone);

 private:
  HWND target_;
};

// The job a worker runs; its result is the status of the completion message.
using WorkerBody = std::function<StatusCode(CWorkerReporter& reporter)>;

struct WorkerJob;

class CWorkerThread {
 public:
  CWorkerThread() = default;
  ~CWorkerThread();
  CWorkerThread(const CWorkerThread&) = delete;
  CWorkerThread& operator=(const CWorkerThread&) = delete;

  // Creates the thread, suspended and one step below normal priority, that will run
  // `body` reporting to `target`. Called once. If the thread cannot be created the result
  // is the mapped system error and nothing will run.
  StatusCode Create(HWND target, WorkerBody body);

  // Resumes the created thread and lets go of it: nobody waits for it.
  void Start();

 private:
  CKernelHandle thread_;
  WorkerJob* job_ = nullptr;  // handed to the thread; touched here only while it is suspended
};
