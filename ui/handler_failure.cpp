#include "ui/handler_failure.h"

#include <atomic>
#include <cstdio>

namespace {

class CDebuggerOutputReporter final : public CHandlerFailureReporter {
 public:
  void Report(HWND window, UINT message, const std::string& what) override
  {
    char prefix[96] = {};
    std::snprintf(prefix, sizeof prefix,
                  "Cryptelle: handler of message 0x%04X for window %p failed: ", message,
                  static_cast<void*>(window));
    OutputDebugStringA((prefix + what + "\n").c_str());
  }
};

CDebuggerOutputReporter debuggerOutput;
std::atomic<CHandlerFailureReporter*> currentReporter{&debuggerOutput};

}  // namespace

void ReportHandlerFailure(HWND window, UINT message, const char* what) noexcept
{
  try {
    currentReporter.load()->Report(window, message, what != nullptr ? what : "");
  } catch (...) {
    // A failing reporter must not take the barrier down with it.
  }
}

CHandlerFailureReporter* ReplaceHandlerFailureReporter(CHandlerFailureReporter* reporter)
{
  CHandlerFailureReporter* const previous =
      currentReporter.exchange(reporter != nullptr ? reporter : &debuggerOutput);
  return previous == &debuggerOutput ? nullptr : previous;
}
