// ctellmon.exe: one monitor per user session. A second start finds the first one's mutex
// and exits at once; otherwise the monitor window runs until the monitor exits.
#include <windows.h>

#include "monitor/monitor_window_win.h"
#include "ui/handles.h"
#include "ui/message_loop.h"

namespace {

// Names the running monitor of this session.
constexpr wchar_t kMonitorMutexName[] = L"{5F0B6A2C-3E1D-4C8B-9A27-6D4E8F1C0B53}";

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
  const CKernelHandle mutex(CreateMutexW(nullptr, FALSE, kMonitorMutexName));
  if (!mutex || GetLastError() == ERROR_ALREADY_EXISTS) return 0;

  CMessageLoop loop;
  CMonitorWindow window;
  if (!window.Start()) return 1;
  return loop.Run();
}
