// The screenshot program of the main frame: the main window with four mounted disks from a
// scripted device host, one selected, and the status bar showing a menu item's prompt; and
// the About box.
#include <windows.h>

#include <array>
#include <thread>

#include "app/about_dlg_win.h"
#include "app/main_frame_win.h"
#include "app/operation_error.h"
#include "app/password_prompts.h"
#include "disklist/column_model.h"
#include "res/resource.h"
#include "res/texts.h"
#include "settings/memory_store.h"
#include "settings/settings_backend.h"
#include "support/fake_device_host.h"
#include "support/sample_disks.h"
#include "system/wide_text_win.h"
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

// A prompt as the system shows it. The message box is modal, so it runs on a thread of its
// own, and the scene is the box once it shows (found by its caption); the program ends with
// the picture taken.
HWND MessageBoxOf(const Prompt& prompt)
{
  static Prompt shown;
  static std::u16string caption;
  shown = prompt;
  caption = LoadText(prompt.captionId);
  std::thread([] { MessageBoxW(nullptr, Wide(shown.text), Wide(caption), shown.flags); }).detach();
  for (int attempt = 0; attempt < 200; ++attempt) {
    const HWND box = FindWindowW(L"#32770", Wide(caption));
    if (box != nullptr && IsWindowVisible(box)) {
      // The box's thread answers only once it waits in the box's message loop.
      SendMessageTimeoutW(box, WM_NULL, 0, 0, SMTO_NORMAL, 2000, nullptr);
      return box;
    }
    Sleep(25);
  }
  return nullptr;
}

constexpr char16_t kSampleImage[] = u"C:\\Users\\Ada\\Documents\\Work.qvi";

HWND WrongPasswordMessage()
{
  return MessageBoxOf(MountFailure(0x4005000B, kSampleImage).prompt);
}

HWND AccessDeniedMessage()
{
  return MessageBoxOf(MountFailure(0x40000008, kSampleImage).prompt);
}

HWND PasswordMismatchMessage()
{
  return MessageBoxOf(PasswordMismatchPrompt());
}

constexpr std::array<ScreenshotScene, 5> kScenes = {{
    {L"main-window", MainWindow},
    {L"about-box", AboutBox},
    {L"message-wrong-password", WrongPasswordMessage},
    {L"message-access-denied", AccessDeniedMessage},
    {L"message-password-mismatch", PasswordMismatchMessage},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
