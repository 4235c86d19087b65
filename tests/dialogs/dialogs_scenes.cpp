// The screenshot program of the dialogs: each dialog filled with sample data (the properties
// dialog with a sample disk, the options sheet with sample settings in memory), and the
// clearing progress dialog part-way through a clear; and the messages of the change-password
// and clear commands and of the Monitor page as the system shows them.
#include <windows.h>

#include <commctrl.h>

#include <array>

#include "app/operation_error.h"
#include "dialogs/change_password.h"
#include "dialogs/clear_image.h"
#include "dialogs/clear_image_dlg_win.h"
#include "dialogs/clear_progress.h"
#include "dialogs/clear_progress_dlg_win.h"
#include "dialogs/disk_properties_dlg_win.h"
#include "dialogs/mount_dialog_win.h"
#include "dialogs/new_password_dlg_win.h"
#include "dialogs/options_dlg_win.h"
#include "res/resource.h"
#include "settings/memory_store.h"
#include "settings/options.h"
#include "settings/settings_backend.h"
#include "support/message_box_scene_win.h"
#include "system/clock.h"
#include "system/wide_text_win.h"
#include "tools/screenshot/screenshot_tool.h"
#include "ui/worker_thread.h"

namespace {

constexpr wchar_t kSamplePath[] = L"C:\\Users\\Anna\\Documents\\Work disk.qvi";

HWND ShowFilled(CImagePasswordDlg& dialog, std::initializer_list<int> passwordFields)
{
  const HWND window = dialog.Create(nullptr);
  if (window == nullptr) return nullptr;
  SetDlgItemTextW(window, IDC_IMAGE_PATH, kSamplePath);
  for (const int id : passwordFields) SetDlgItemTextW(window, id, L"sample secret");
  ShowWindow(window, SW_SHOW);
  return window;
}

HWND ChangePassword()
{
  static CNewPasswordDlg dialog;
  return ShowFilled(dialog, {IDC_PASSWORD, IDC_NEW_PASSWORD, IDC_CONFIRM_PASSWORD});
}

HWND ClearImage()
{
  static CClearVirtualDiskImageDlg dialog;
  return ShowFilled(dialog, {IDC_PASSWORD});
}

// The scene's worker has no image to clear and ends at once; its completion is kept from
// the dialog, which then takes the scene's progress reports as a worker's.
LRESULT CALLBACK KeepCompletion(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR id, DWORD_PTR)
{
  if (message == kWorkerDoneMessage) return 0;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, KeepCompletion, id);
  return DefSubclassProc(window, message, wParam, lParam);
}

// Six tenths done, the first report thirty seconds ago: twenty seconds remain.
HWND ClearProgress()
{
  static CClearVirtualDiskImageProgressDlg dialog;
  constexpr uint64_t kStart = 1'700'000'000;
  SysFreezeClock(kStart);
  const HWND window = dialog.Create(nullptr);
  if (window == nullptr) return nullptr;
  SetWindowSubclass(window, KeepCompletion, 0, 0);
  SendMessageW(window, kWorkerProgressMessage, 0, 100);
  SysFreezeClock(kStart + 30);
  SendMessageW(window, kWorkerProgressMessage, 60, 100);
  SendMessageW(window, WM_TIMER, CClearVirtualDiskImageProgressDlg::kEstimateTimer, 0);
  SendMessageW(window, WM_TIMER, CClearVirtualDiskImageProgressDlg::kBarTimer, 0);
  ShowWindow(window, SW_SHOW);
  return window;
}

// Drives A:, C: and D: in use, so that the list starts at B: and skips C: and D:.
DriveLetterFacts SampleDriveFacts()
{
  DriveLetterFacts facts;
  facts.lettersInUse = 0b1101;
  return facts;
}

HWND MountDialog()
{
  static CMountDlg dialog(u"C:\\Users\\ann\\Documents\\work.qvi", SampleDriveFacts);
  const HWND window = dialog.Create(nullptr);
  if (window == nullptr) return nullptr;
  dialog.SetItemText(IDC_PASSWORD, L"sample password");
  ShowWindow(window, SW_SHOW);
  return window;
}

// A fixed-size AES-256 image of 1.5 GiB mounted read-only at E:.
HWND Properties()
{
  static MountedDisk disk;
  disk.imagePath = Utf16(kSamplePath);
  disk.mountPoint = u"E:\\";
  disk.mountFlags = kMountReadOnly;
  disk.info.imageFlags = 0x1;
  disk.info.creationTime = 1'700'000'000;
  disk.info.mountTime = 1'700'500'000;
  disk.info.capacity = 1'610'612'736;
  disk.info.algorithm = 0;
  disk.info.keyLength = 32;
  static CVirtualDiskPropertiesDlg dialog(disk);
  const HWND window = dialog.Create(nullptr);
  if (window == nullptr) return nullptr;
  ShowWindow(window, SW_SHOW);
  return window;
}

// The options sheet on `page` over sample settings in memory: invisible mounts and dismount
// of all disks without the open-files check; the monitor enabled, unloaded when idle, with
// Ctrl+Shift+F12 as its emergency hot key.
HWND Options(int page)
{
  static MemorySettingsBackend settings;
  SetSettingsBackend(&settings);
  WriteGeneralOptions({0, 1, 1, 0});
  WriteMonitorOptions({1, 1, 0x067B});
  static RecentImageList recentImages;
  static COptionsDlg sheet(recentImages);
  sheet.SetStartPage(static_cast<UINT>(page));
  return sheet.Create(nullptr);
}

HWND OptionsGeneral()
{
  return Options(0);
}

HWND OptionsMonitor()
{
  return Options(1);
}

// The change-password command's messages.
HWND PasswordChangedMessage()
{
  return MessageBoxOf(PasswordChangedPrompt());
}

HWND ChangePasswordWrongPasswordMessage()
{
  return MessageBoxOf(ChangePasswordFailure(kImgWrongPassword, Utf16(kSamplePath)).prompt);
}

// The image is mounted: the device host holds it open.
HWND ChangePasswordAccessDeniedMessage()
{
  return MessageBoxOf(ChangePasswordFailure(kSysAccessDenied, Utf16(kSamplePath)).prompt);
}

HWND ChangePasswordVolumeMissingMessage()
{
  return MessageBoxOf(ChangePasswordFailure(kImgVolumeMissing, Utf16(kSamplePath)).prompt);
}

// A code the program does not word itself: the command's own text with the code.
HWND CannotChangePasswordMessage()
{
  return MessageBoxOf(ChangePasswordFailure(kSysWriteProtected, Utf16(kSamplePath)).prompt);
}

// The clear command's messages.
HWND ClearTakesLongQuestion()
{
  return MessageBoxOf(LongClearPrompt());
}

HWND CancelClearQuestion()
{
  return MessageBoxOf(CancelClearPrompt());
}

HWND ImageClearedMessage()
{
  return MessageBoxOf(ImageClearedPrompt());
}

HWND ClearWrongPasswordMessage()
{
  return MessageBoxOf(ClearFailure(kImgWrongPassword, Utf16(kSamplePath))->prompt);
}

HWND ClearAccessDeniedMessage()
{
  return MessageBoxOf(ClearFailure(kSysAccessDenied, Utf16(kSamplePath))->prompt);
}

HWND ClearVolumeMissingMessage()
{
  return MessageBoxOf(ClearFailure(kImgVolumeMissing, Utf16(kSamplePath))->prompt);
}

HWND ClearFailedMessage()
{
  return MessageBoxOf(ClearFailure(kSysWriteFault, Utf16(kSamplePath))->prompt);
}

// The Monitor page applied with a hot key that another program holds.
HWND HotKeyTakenMessage()
{
  return MessageBoxOf(HotKeyTakenPrompt());
}

constexpr std::array<ScreenshotScene, 20> kScenes = {{
    {L"mount-dialog", MountDialog},
    {L"change-password", ChangePassword},
    {L"clear-image", ClearImage},
    {L"clear-progress", ClearProgress},
    {L"properties", Properties},
    {L"options-general", OptionsGeneral},
    {L"options-monitor", OptionsMonitor},
    {L"message-password-changed", PasswordChangedMessage},
    {L"message-change-password-wrong-password", ChangePasswordWrongPasswordMessage},
    {L"message-change-password-access-denied", ChangePasswordAccessDeniedMessage},
    {L"message-change-password-volume-missing", ChangePasswordVolumeMissingMessage},
    {L"message-cannot-change-password", CannotChangePasswordMessage},
    {L"message-clear-takes-long", ClearTakesLongQuestion},
    {L"message-cancel-clear", CancelClearQuestion},
    {L"message-image-cleared", ImageClearedMessage},
    {L"message-clear-wrong-password", ClearWrongPasswordMessage},
    {L"message-clear-access-denied", ClearAccessDeniedMessage},
    {L"message-clear-volume-missing", ClearVolumeMissingMessage},
    {L"message-clear-failed", ClearFailedMessage},
    {L"message-hot-key-taken", HotKeyTakenMessage},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
