// The barrier between the system's window procedures and our handlers: an exception thrown
// by a handler never unwinds through the system's frames. It is caught at the procedure,
// reported through the current reporter, and the message is answered as if no handler had
// taken it. Tests replace the reporter to see the reports.
#pragma once

#include <windows.h>

#include <exception>
#include <string>

class CHandlerFailureReporter {
 public:
  // A handler of `message` for `window` threw; `what` is the exception's text.
  virtual void Report(HWND window, UINT message, const std::string& what) = 0;

 protected:
  virtual ~CHandlerFailureReporter() = default;
};

// Hands the failure to the current reporter. The default one writes it to the debugger's
// output ("Cryptelle: handler of message 0x0111 for window 0000000000012345 failed: ...").
void ReportHandlerFailure(HWND window, UINT message, const char* what) noexcept;

// Makes `reporter` the current reporter and returns the previous one; null restores the
// default.
CHandlerFailureReporter* ReplaceHandlerFailureReporter(CHandlerFailureReporter* reporter);

// Runs `handler` (returning whether it handled the message) behind the barrier: an exception
// is reported and counts as "not handled".
template <typename Handler>
bool RunBehindBarrier(HWND window, UINT message, Handler&& handler) noexcept
{
  try {
    return handler();
  } catch (const std::exception& error) {
    ReportHandlerFailure(window, message, error.what());
  } catch (...) {
    ReportHandlerFailure(window, message, "an exception of unknown type");
  }
  return false;
}
