// The screenshot program of the new image wizard: its pages as the user sees them, filled
// with sample data.
#include <windows.h>

#include <commctrl.h>

#include <array>

#include "app/size_units.h"
#include "crypto/cipher.h"
#include "system/clock.h"
#include "tools/screenshot/screenshot_tool.h"
#include "wizard/creation_thread_win.h"
#include "wizard/new_image_wizard_win.h"
#include "wizard/progress_page_win.h"

namespace {

// The scene's worker is given a folder that does not exist: it ends at once, before any
// progress report, and its completion is kept from the page, which then takes the scene's
// progress reports as a worker's.
LRESULT CALLBACK KeepCompletion(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR id, DWORD_PTR)
{
  if (message == WMU_CREATE_DONE) return 0;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, KeepCompletion, id);
  return DefSubclassProc(window, message, wParam, lParam);
}

// The wizard on its progress page, 410 of 1024 steps done, the first report 30 seconds ago.
HWND ProgressMidway()
{
  static CNewVirtualDiskImageWizard wizard;
  NewImageRequest& request = wizard.Request();
  request.capacity = kGigabyte;
  request.fixedSize = 1;
  request.algorithm = kCipherAes;
  request.keyBits = 256;
  request.path = u"C:\\no such folder\\Work disk.qvi";
  request.password = u"sample password";
  wizard.SetStartPage(CNewVirtualDiskImageWizard::kProgressPageIndex);

  constexpr uint64_t kStart = 1'700'000'000;
  SysFreezeClock(kStart);
  const HWND sheet = wizard.Create(nullptr);
  if (sheet == nullptr) return nullptr;
  const HWND page = wizard.ActivePageWindow();
  SetWindowSubclass(page, KeepCompletion, 0, 0);
  SendMessageW(page, WMU_CREATE_PROGRESS, 0, 1024);
  SysFreezeClock(kStart + 30);
  SendMessageW(page, WMU_CREATE_PROGRESS, 410, 1024);
  SendMessageW(page, WM_TIMER, CNewVirtualDiskImageWizard::CProgressPage::kEstimateTimer, 0);
  SendMessageW(page, WM_TIMER, CNewVirtualDiskImageWizard::CProgressPage::kBarTimer, 0);
  return sheet;
}

// The same page once the image is written and the device host writes the file system.
HWND ProgressFormatting()
{
  const HWND sheet = ProgressMidway();
  if (sheet == nullptr) return nullptr;
  SendMessageW(PropSheet_GetCurrentPageHwnd(sheet), WMU_CREATE_FORMATTING, 0, 0);
  return sheet;
}

constexpr std::array<ScreenshotScene, 2> kScenes = {{
    {L"wizard-progress", ProgressMidway},
    {L"wizard-progress-formatting", ProgressFormatting},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
