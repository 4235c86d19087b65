// The screenshot program of the new image wizard: each page as the user sees it, filled with
// sample choices (scripts/screenshot.sh --program wizard_scenes SCENE OUT.png); the progress
// page part-way and while the file system is written; and the location page's and the
// creation's messages as the system shows them.
#include <windows.h>

#include <commctrl.h>

#include <array>
#include <optional>
#include <string_view>

#include "app/size_units.h"
#include "crypto/cipher.h"
#include "res/resource.h"
#include "support/message_box_scene_win.h"
#include "system/clock.h"
#include "tools/screenshot/screenshot_tool.h"
#include "wizard/creation_failure.h"
#include "wizard/creation_thread_win.h"
#include "wizard/image_location.h"
#include "wizard/new_image_wizard_win.h"
#include "wizard/progress_page_win.h"

namespace {

constexpr char16_t kSampleImage[] = u"C:\\Users\\Anna\\Documents\\Work disk.qvi";

// The wizard opened on page `index`; `fill` puts sample texts into that page.
HWND Wizard(int index, void (*fill)(HWND page) = nullptr)
{
  static CNewVirtualDiskImageWizard wizard;
  NewImageRequest& request = wizard.Request();
  request.capacity = 8ull << 30;
  request.fixedSize = 1;
  request.algorithm = 0;
  request.keyBits = 256;
  request.path = kSampleImage;
  wizard.SetStartPage(static_cast<UINT>(index));
  const HWND sheet = wizard.Create(nullptr);
  if (sheet != nullptr && fill != nullptr) fill(wizard.ActivePageWindow());
  return sheet;
}

HWND Welcome()
{
  return Wizard(0);
}

HWND Capacity()
{
  return Wizard(1);
}

HWND Encryption()
{
  return Wizard(2);
}

HWND Password()
{
  return Wizard(3, [](HWND page) {
    SetDlgItemTextW(page, IDC_PASSWORD, L"sample secret");
    SetDlgItemTextW(page, IDC_CONFIRM_PASSWORD, L"sample secret");
  });
}

HWND Location()
{
  return Wizard(4, [](HWND page) {
    SetDlgItemTextW(page, IDC_WIZARD_IMAGE_PATH, L"C:\\Users\\Anna\\Documents\\Work disk.qvi");
  });
}

HWND Completion()
{
  return Wizard(CNewVirtualDiskImageWizard::kSummaryPageIndex);
}

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

// The location page's messages for Next.
HWND LocationMessage(std::u16string_view path)
{
  const LocationCheck check = CheckImageLocation(path);
  return check.prompt ? MessageBoxOf(*check.prompt) : nullptr;
}

HWND EnterImagePathMessage()
{
  return LocationMessage(u"");
}

HWND FullPathNeededMessage()
{
  return LocationMessage(u"Work disk.qvi");
}

// A folder on a drive that does not exist cannot be prepared.
HWND CannotCreateFolderMessage()
{
  return LocationMessage(u"Q:\\Disks\\Work disk.qvi");
}

// The progress page's messages when the creation failed.
HWND CreationFailureMessage(StatusCode status)
{
  const std::optional<Prompt> failure = CreationFailure(status, kSampleImage);
  return failure ? MessageBoxOf(*failure) : nullptr;
}

HWND CreateAccessDeniedMessage()
{
  return CreationFailureMessage(kSysAccessDenied);
}

HWND CreateWriteFaultMessage()
{
  return CreationFailureMessage(kSysWriteFault);
}

HWND CreateDiskFullMessage()
{
  return CreationFailureMessage(kSysDiskFull);
}

HWND CreateNoPrivilegeMessage()
{
  return CreationFailureMessage(kSysCannotCreate);
}

// A code the wizard does not word itself, here the device host out of reach for the new
// disk's temporary mount.
HWND CreationFailedMessage()
{
  return CreationFailureMessage(kDevUnreachable);
}

constexpr std::array<ScreenshotScene, 16> kScenes = {{
    {L"wizard-welcome", Welcome},
    {L"wizard-capacity", Capacity},
    {L"wizard-encryption", Encryption},
    {L"wizard-password", Password},
    {L"wizard-location", Location},
    {L"wizard-progress", ProgressMidway},
    {L"wizard-progress-formatting", ProgressFormatting},
    {L"wizard-completion", Completion},
    {L"message-enter-image-path", EnterImagePathMessage},
    {L"message-full-path-needed", FullPathNeededMessage},
    {L"message-cannot-create-folder", CannotCreateFolderMessage},
    {L"message-create-access-denied", CreateAccessDeniedMessage},
    {L"message-create-write-fault", CreateWriteFaultMessage},
    {L"message-create-disk-full", CreateDiskFullMessage},
    {L"message-create-no-privilege", CreateNoPrivilegeMessage},
    {L"message-creation-failed", CreationFailedMessage},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
