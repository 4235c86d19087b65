// The screenshot program of the main frame: the main window with four mounted disks from a
// scripted device host, one selected, and the status bar showing a menu item's prompt; and
// the About box.
#include <windows.h>

#include <array>

#include "app/about_dlg_win.h"
#include "app/main_frame_win.h"
#include "disklist/column_model.h"
#include "res/resource.h"
#include "settings/memory_store.h"
#include "settings/settings_backend.h"
#include "support/fake_device_host.h"
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

HWND MainWindow()
{
  static MemorySettingsBackend settings;
  SetSettingsBackend(&settings);
  ListLayout layout;
  layout.visibleColumns = 0x3B;  // Mount Point, Capacity, Image Path, Algorithm, Created
  // Widened by the user so that every title and date shows whole.
  layout.columns[0].width = 90;
  layout.columns[4].width = 130;
  layout.columns[5].width = 150;
  ColumnModel(layout).Save();

  static FakeDeviceHost host;
  AddSampleDisks(host);

  // The command bar and the frame join the thread's message loop.
  static CMessageLoop loop;
  static CMainFrame frame;
  if (frame.Create(LoadResourceString(IDR_MAINFRAME).c_str()) == nullptr) return nullptr;
  SetWindowPos(frame.Handle(), nullptr, 0, 0, 760, 330, SWP_NOZORDER);
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

constexpr std::array<ScreenshotScene, 2> kScenes = {{
    {L"main-window", MainWindow},
    {L"about-box", AboutBox},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
