#include "app/main_frame_win.h"

#include <shlwapi.h>

#include <optional>
#include <string>

#include "app/about_dlg_win.h"
#include "app/dismount_flows.h"
#include "app/frame_commands.h"
#include "app/frame_placement_win.h"
#include "app/frame_toolbar_win.h"
#include "app/instance_names.h"
#include "app/mount_flow.h"
#include "app/recent_commands.h"
#include "app/recent_menu_win.h"
#include "dialogs/change_password.h"
#include "dialogs/clear_image.h"
#include "dialogs/clear_image_dlg_win.h"
#include "dialogs/clear_progress_dlg_win.h"
#include "dialogs/disk_properties_dlg_win.h"
#include "dialogs/mount_dialog_win.h"
#include "dialogs/new_password_dlg_win.h"
#include "dialogs/options_dlg_win.h"
#include "disklist/disk_columns.h"
#include "res/resource.h"
#include "services/help.h"
#include "services/shell.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"
#include "ui/strings.h"
#include "wizard/new_image_wizard_win.h"

namespace {

// The product's home page, opened in the default browser by the Help menu.
constexpr char16_t kProductHomePage[] = u"https://www.pellmora.com/cryptelle/";

// The longest window title taken from the string table.
constexpr size_t kTitleLength = 256;

// The major version of the common-controls library; one without a version entry point is
// version 4.
DWORD CommonControlsVersion()
{
  const HMODULE library = GetModuleHandleW(L"comctl32.dll");
  const auto getVersion = reinterpret_cast<DLLGETVERSIONPROC>(
      reinterpret_cast<void*>(GetProcAddress(library, "DllGetVersion")));
  if (library == nullptr || getVersion == nullptr) return 4;
  DLLVERSIONINFO info{};
  info.cbSize = sizeof info;
  if (FAILED(getVersion(&info))) return 4;
  return info.dwMajorVersion;
}

UINT RegisterMessage(const char16_t* name)
{
  return RegisterWindowMessageW(Wide(name));
}

}  // namespace

int RunMainFrame(CMessageLoop& loop, int showCommand)
{
  CMainFrame frame;
  const std::wstring title = LoadResourceString(IDR_MAINFRAME).substr(0, kTitleLength);
  if (frame.Create(title.c_str()) == nullptr) return 0;
  frame.SetAccelerators(LoadAcceleratorsW(ResourceModule(), MAKEINTRESOURCEW(IDR_MAINFRAME)));
  ShowWindow(frame.Handle(), showCommand);
  return loop.Run();
}

CMainFrame::CMainFrame()
    : refreshMessage_(RegisterMessage(kRefreshMessageName)),
      closeMessage_(RegisterMessage(kCloseMessageName)),
      activateMessage_(RegisterMessage(kSingleInstanceName))
{
}

CMainFrame::~CMainFrame()
{
  // A frame destroyed without its window's WM_DESTROY still leaves the loop.
  if (loop_ != nullptr) loop_->RemoveMessageFilter(this);
}

HWND CMainFrame::Create(const wchar_t* title)
{
  return CreateAtDefaultPlace(nullptr, title, kStyle, kExtendedStyle,
                              LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDR_MAINFRAME)));
}

bool CMainFrame::OnCreate()
{
  // The 32-bit images with their alpha channel need version 6 of the common controls.
  const bool thirtyTwoBit = CommonControlsVersion() >= 6;
  if (!CreateCommandBar(thirtyTwoBit)) return false;
  toolBar_ = CreateFrameToolBar(hwnd_, IDW_TOOLBAR, thirtyTwoBit, toolBarImages_);
  if (!toolBar_.IsWindow()) return false;
  if (!CreateReBar(IDW_REBAR, IDW_BAND_FIRST)) return false;
  if (!AddBand(commandBar_.Handle(), false) || !AddBand(toolBar_.Handle(), true)) return false;
  if (!CreateStatusBar(IDW_STATUS_BAR, IDS_IDLE_MESSAGE)) return false;
  if (view_.Create(hwnd_, ClientViewRect(), kViewStyle) == nullptr) return false;
  SetClientView(view_.Handle());

  UpdateUi().AddToolBar(toolBar_.Handle());
  UpdateUi().AddMenu(commandBar_.Menu());
  UpdateCommandStates();

  loop_ = CMessageLoop::Current();
  if (loop_ != nullptr) loop_->AddMessageFilter(this);

  RestoreFramePlacement(hwnd_);
  AttachRecentImages();
  return true;
}

void CMainFrame::AttachRecentImages()
{
  // The submenu's own item is what it shows while the list is empty.
  wchar_t emptyText[64] = {};
  GetMenuStringW(RecentImagesMenu(), 0, emptyText, 64, MF_BYPOSITION);
  emptyRecentText_ = emptyText;
  ReadRecentList(&recentImages_, kRecentListKeyPath);  // a missing list stays empty
  ShowRecentImages();
}

HMENU CMainFrame::RecentImagesMenu() const
{
  return GetSubMenu(GetSubMenu(commandBar_.Menu(), 0), kRecentMenuPosition);
}

bool CMainFrame::CreateCommandBar(bool thirtyTwoBit)
{
  if (commandBar_.Create(hwnd_, IDW_COMMAND_BAR) == nullptr) return false;
  // The bar takes over the frame's menu; the frame shows no classic menu bar.
  const HMENU menu = GetMenu(hwnd_);
  SetMenu(hwnd_, nullptr);
  if (!commandBar_.AttachMenu(CMenu(menu))) return false;
  return commandBar_.LoadImages(IDR_MENU_IMAGES, thirtyTwoBit ? IDB_MENU32 : IDB_MENU8,
                                thirtyTwoBit);
}

void CMainFrame::OnDestroy()
{
  if (loop_ != nullptr) loop_->RemoveMessageFilter(this);
  loop_ = nullptr;
  SaveFramePlacement(hwnd_);
  PostQuitMessage(0);
}

bool CMainFrame::PreTranslateMessage(MSG& message)
{
  if (accelerators_ == nullptr) return false;
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (message.hwnd != hwnd_ && !IsChild(hwnd_, message.hwnd)) return false;
  return TranslateAcceleratorW(hwnd_, accelerators_, &message) != 0;
}

bool CMainFrame::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  if (OnRegisteredMessage(message, result)) return true;
  return CFrameWindow::HandleMessage(message, wParam, lParam, result);
}

bool CMainFrame::OnRegisteredMessage(UINT message, LRESULT& result)
{
  if (message == 0) return false;
  if (message == refreshMessage_) {
    view_.Refresh();
    UpdateCommandStates();
    result = 0;
    return true;
  }
  if (message == closeMessage_) {
    Post(WM_CLOSE);
    result = 0;
    return true;
  }
  if (message == activateMessage_) {
    Activate();
    result = static_cast<LRESULT>(kActivateReply);
    return true;
  }
  return false;
}

void CMainFrame::Activate()
{
  SetForegroundWindow(hwnd_);
  BringWindowToTop(hwnd_);
  SetActiveWindow(hwnd_);
}

bool CMainFrame::OnNotify(NMHDR& header, LRESULT& result)
{
  if (header.hwndFrom == view_.Handle() && header.code == LVN_ITEMCHANGED) {
    UpdateCommandStates();
    result = 0;
    return true;
  }
  return CFrameWindow::OnNotify(header, result);
}

void CMainFrame::UpdateCommandStates()
{
  const size_t selected = view_.IsWindow() ? static_cast<size_t>(view_.List().SelectedCount()) : 0;
  for (const FrameCommandState& state : FrameCommandStates(selected, view_.GetVisibleColumns())) {
    UpdateUi().SetEnabled(state.command, state.enabled);
    UpdateUi().SetChecked(state.command, state.checked);
  }
  UpdateUi().Apply();
}

WindowRef CMainFrame::Owner() const
{
  return ToWindowRef(hwnd_);
}

bool CMainFrame::OnCommand(UINT id, UINT, HWND)
{
  switch (id) {
    case ID_APP_EXIT: Post(WM_CLOSE); return true;
    case ID_HELP_ABOUT: ShowAbout(); return true;
    case ID_FILE_NEW_IMAGE: CreateImage(); return true;
    case ID_FILE_MOUNT_IMAGE: MountImage({}); return true;
    case ID_FILE_DISMOUNT:
      view_.DismountSelected();
      Post(refreshMessage_);
      return true;
    case ID_FILE_DISMOUNT_ALL:
      DismountAllFlow(Owner(), 0);
      Post(refreshMessage_);
      return true;
    case ID_FILE_SET_PASSWORD: {
      CNewPasswordDlg dialog;
      ChangePasswordCommand(Owner(), dialog);
      return true;
    }
    case ID_EDIT_SELECT_ALL: view_.SelectAll(); return true;
    case ID_EDIT_PROPERTIES: ShowProperties(); return true;
    case ID_TOOLS_CLEAR_IMAGE: {
      CClearVirtualDiskImageDlg dialog;
      CClearVirtualDiskImageProgressDlg progress;
      ClearImageCommand(Owner(), dialog, progress);
      return true;
    }
    case ID_TOOLS_OPTIONS: ShowOptions(); return true;
    case ID_DISK_BROWSE: view_.BrowseSelected(); return true;
    case ID_VIEW_REFRESH: Post(refreshMessage_); return true;
    case ID_HELP_TOPICS: ShowHelpContents(Owner()); return true;
    case ID_HELP_HOME_PAGE: ShellOpen(Owner(), kProductHomePage); return true;
    default: break;
  }
  if (ColumnOfToggleCommand(id)) {
    ToggleColumn(id);
    return true;
  }
  if (id >= kFirstRecentCommand && id <= kLastRecentCommand) {
    if (const std::optional<std::u16string> path = RecentImageOfCommand(recentImages_, id)) {
      MountImage(*path);
    }
    return true;
  }
  return false;
}

void CMainFrame::CreateImage()
{
  CNewVirtualDiskImageWizard wizard;
  // Only the new image's path goes on to the mount flow, never its password.
  if (wizard.DoModal(GetActiveWindow()) == 1 && wizard.MountRequested()) {
    MountImage(wizard.ImagePath());
  }
}

void CMainFrame::MountImage(const std::u16string& path)
{
  CMountDlg dialog;
  MountFlow(Owner(), path, dialog, recentImages_);
  ShowRecentImages();
  // The list shows the new disk at once rather than at the next outside refresh.
  Post(refreshMessage_);
}

void CMainFrame::ToggleColumn(UINT command)
{
  const std::optional<DiskColumn> column = ColumnOfToggleCommand(command);
  if (!column) return;
  view_.SetVisibleColumns(view_.GetVisibleColumns() ^ ColumnMask(*column));
  UpdateCommandStates();
}

void CMainFrame::ShowRecentImages()
{
  ShowRecentImagesInMenu(RecentImagesMenu(), recentImages_, emptyRecentText_);
}

void CMainFrame::ShowOptions()
{
  COptionsDlg options(recentImages_);
  options.DoModal(hwnd_);
  // Turning privacy on empties the list.
  ShowRecentImages();
}

void CMainFrame::ShowProperties()
{
  const MountedDisk* const disk = view_.GetSingleSelection();
  if (disk == nullptr) return;
  CVirtualDiskPropertiesDlg dialog(*disk);
  dialog.DoModal(hwnd_);
}

void CMainFrame::ShowAbout()
{
  CAboutDlg about;
  about.DoModal(GetActiveWindow());
}
