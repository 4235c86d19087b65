// The screenshot program of the main frame: the main window with four mounted disks from a
// scripted device host, one selected, and the status bar showing a menu item's prompt; the
// About box; and the application shell's messages as the system shows them: a failed
// mount, the format question, the monitor that cannot start, the password fields' messages
// and the dismount flows' questions and failure.
#include <windows.h>

#include <array>

#include "app/about_dlg_win.h"
#include "app/check_formatted.h"
#include "app/dismount_prompts.h"
#include "app/main_frame_win.h"
#include "app/monitor_control.h"
#include "app/operation_error.h"
#include "app/password_prompts.h"
#include "disklist/column_model.h"
#include "res/resource.h"
#include "res/texts.h"
#include "settings/memory_store.h"
#include "settings/settings_backend.h"
#include "support/fake_device_host.h"
#include "support/message_box_scene_win.h"
#include "support/sample_disks.h"
#include "tools/screenshot/screenshot_tool.h"
#include "ui/strings.h"

namespace {

void DispatchQueued()
{
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

// `pixels` at 96 DPI in the screen's resolution: a user at 144 DPI has wider columns and a
// larger window for the same texts.
int Scaled(int pixels)
{
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return MulDiv(pixels, dpi, 96);
}

HWND MainWindow()
{
  static MemorySettingsBackend settings;
  SetSettingsBackend(&settings);
  ListLayout layout;
  layout.visibleColumns = 0x3B;  // Mount Point, Capacity, Image Path, Algorithm, Created
  // Widened by the user so that every title and date shows whole.
  for (ColumnPlacement& column : layout.columns) {
    column.width = static_cast<uint16_t>(Scaled(column.width));
  }
  layout.columns[0].width = static_cast<uint16_t>(Scaled(90));
  layout.columns[4].width = static_cast<uint16_t>(Scaled(130));
  layout.columns[5].width = static_cast<uint16_t>(Scaled(150));
  ColumnModel(layout).Save();

  static FakeDeviceHost host;
  AddSampleDisks(host);

  // The command bar and the frame join the thread's message loop.
  static CMessageLoop loop;
  static CMainFrame frame;
  if (frame.Create(LoadResourceString(IDR_MAINFRAME).c_str()) == nullptr) return nullptr;
  SetWindowPos(frame.Handle(), nullptr, 0, 0, Scaled(760), Scaled(330), SWP_NOZORDER);
  ShowWindow(frame.Handle(), SW_SHOWNORMAL);
  DispatchQueued();
  frame.View().List().SetItemSelected(1, true);
  SetFocus(frame.View().Handle());
  // The prompt of File > Mount, as while the pointer rests on it.
  SendMessageW(frame.Handle(), WM_MENUSELECT, MAKEWPARAM(ID_FILE_MOUNT_IMAGE, MF_STRING),
               reinterpret_cast<LPARAM>(frame.CommandBar().Menu()));
  return frame.Handle();
}

HWND AboutBox()
{
  static CAboutDlg about;
  const HWND window = about.Create(nullptr);
  if (window != nullptr) ShowWindow(window, SW_SHOW);
  return window;
}

constexpr char16_t kSampleImage[] = u"C:\\Users\\Ada\\Documents\\Work.qvi";

// The messages of a failed mount.
HWND WrongPasswordMessage()
{
  return MessageBoxOf(MountFailure(kImgWrongPassword, kSampleImage).prompt);
}

HWND AccessDeniedMessage()
{
  return MessageBoxOf(MountFailure(kSysAccessDenied, kSampleImage).prompt);
}

HWND VolumeMissingMessage()
{
  return MessageBoxOf(MountFailure(kImgVolumeMissing, kSampleImage).prompt);
}

HWND NoDriverConnectionMessage()
{
  return MessageBoxOf(MountFailure(kDevUnreachable, kSampleImage).prompt);
}

// The device host's service is not installed, so it cannot be started.
HWND CannotStartDriverMessage()
{
  return MessageBoxOf(DeviceHostStartFailure(kSysServiceDoesNotExist, IDS_CANNOT_MOUNT_CAPTION));
}

// A code the program does not word itself: the mount's own text with the code.
HWND CannotMountMessage()
{
  return MessageBoxOf(MountFailure(kDevInvalidParameter, kSampleImage).prompt);
}

// After a mount.
HWND FormatDiskQuestion()
{
  return MessageBoxOf(FormatDiskPrompt(u'P'));
}

HWND CannotStartMonitorMessage()
{
  return MessageBoxOf(MonitorStartFailure(u"The system cannot find the file specified.\r\n"));
}

// The password fields' messages (the wizard's password page, the change-password and clear
// dialogs).
HWND EnterPasswordMessage()
{
  return MessageBoxOf(EnterPasswordPrompt());
}

HWND PasswordMismatchMessage()
{
  return MessageBoxOf(PasswordMismatchPrompt());
}

// The dismount flows' messages.
HWND DiskInUseQuestion()
{
  return MessageBoxOf(DiskInUsePrompt(u"P:"));
}

HWND DisksInUseQuestion()
{
  return MessageBoxOf(DisksInUsePrompt());
}

// Dismounting a mount point while the device host is not running.
HWND DismountFailedMessage()
{
  return MessageBoxOf(DismountFailure(kDevNotRunning));
}

constexpr std::array<ScreenshotScene, 15> kScenes = {{
    {L"main-window", MainWindow},
    {L"about-box", AboutBox},
    {L"message-wrong-password", WrongPasswordMessage},
    {L"message-access-denied", AccessDeniedMessage},
    {L"message-volume-missing", VolumeMissingMessage},
    {L"message-no-driver-connection", NoDriverConnectionMessage},
    {L"message-cannot-start-driver", CannotStartDriverMessage},
    {L"message-cannot-mount", CannotMountMessage},
    {L"message-format-disk", FormatDiskQuestion},
    {L"message-cannot-start-monitor", CannotStartMonitorMessage},
    {L"message-enter-password", EnterPasswordMessage},
    {L"message-password-mismatch", PasswordMismatchMessage},
    {L"message-disk-in-use", DiskInUseQuestion},
    {L"message-disks-in-use", DisksInUseQuestion},
    {L"message-dismount-failed", DismountFailedMessage},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
