// The entry of ctell.exe: prepares the process (COM, the window library, the common
// controls), runs the program and takes the preparations down again.
#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

#include "app/run_application_win.h"

namespace {

// List view, toolbar and status bar, progress bar, rebar.
constexpr DWORD kCommonControlClasses = 0x425;
static_assert(kCommonControlClasses ==
              (ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_COOL_CLASSES));

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int showCommand)
{
  CoInitialize(nullptr);
  // Loads the window library before anything else touches it.
  DefWindowProcW(nullptr, 0, 0, 0);
  const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), kCommonControlClasses};
  InitCommonControlsEx(&controls);
  // The framework needs no module set-up: resources are read from this executable, and each
  // window class is registered when its first window is created.
  const int exitCode = RunApplication(GetCommandLineW(), showCommand);
  CoUninitialize();
  return exitCode;
}
