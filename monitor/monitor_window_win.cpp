#include "monitor/monitor_window_win.h"

#include "res/resource.h"
#include "system/wide_text_win.h"
#include "ui/strings.h"

namespace {

constexpr int kHotKeyId = 1;
constexpr UINT_PTR kDiskCheckTimer = 1;
// The tray icon's clicks.
constexpr UINT kTrayMessage = WM_APP + 1;

}  // namespace

CMonitorWindow::CMonitorWindow()
    : settingsChangedMessage_(RegisterWindowMessageW(Wide(kMonitorSettingsChangedMessage))),
      refreshMessage_(RegisterWindowMessageW(Wide(kRefreshMessageName))),
      taskbarCreatedMessage_(RegisterWindowMessageW(L"TaskbarCreated")),
      monitor_(*this)
{
}

CCustomWindow::ClassDescription CMonitorWindow::WindowClass() const
{
  return {kMonitorWindowClass, nullptr};
}

bool CMonitorWindow::Start()
{
  const std::wstring title = LoadResourceString(IDS_MONITOR_TITLE);
  if (Create(nullptr, RECT{}, title.c_str(), WS_POPUP) == nullptr) return false;
  trayIcon_ = std::make_unique<CTrayIcon>(hwnd_, kTrayMessage);
  trayIcon_->SetTip(title);
  // The monitor starts before anything can make this thread handle messages: the icon's
  // addition talks to the notification area, and a message sent to this window meanwhile
  // finds the hot key already registered.
  monitor_.Start();
  if (!IsWindow()) return true;
  trayIcon_->Add();
  SetTimer(kDiskCheckTimer, kDiskCheckMilliseconds);
  return true;
}

bool CMonitorWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  result = 0;
  if (message == WM_HOTKEY) {
    monitor_.OnHotKey();
    return true;
  }
  if (message == settingsChangedMessage_) {
    monitor_.OnSettingsChanged();
    return true;
  }
  if (message == taskbarCreatedMessage_) {
    if (trayIcon_) trayIcon_->Add();
    return true;
  }
  if (message == kTrayMessage) {
    switch (LOWORD(lParam)) {
      case WM_LBUTTONDBLCLK: monitor_.OnCommand(MonitorCommand::kOpenProgram); break;
      case WM_RBUTTONUP:
      case WM_CONTEXTMENU: ShowTrayMenu(); break;
      default: break;
    }
    return true;
  }
  return CCustomWindow::HandleMessage(message, wParam, lParam, result);
}

CMenu LoadTrayMenu()
{
  CMenu menu(LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDR_MONITOR_MENU)));
  if (menu) SetMenuDefaultItem(GetSubMenu(menu.Get(), 0), ID_MONITOR_OPEN_PROGRAM, FALSE);
  return menu;
}

void CMonitorWindow::ShowTrayMenu()
{
  const CMenu menu = LoadTrayMenu();
  if (!menu) return;
  POINT cursor{};
  GetCursorPos(&cursor);
  // The menu closes when the user clicks elsewhere only while this window is in front.
  SetForegroundWindow(hwnd_);
  TrackPopupMenu(GetSubMenu(menu.Get(), 0), TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, hwnd_, nullptr);
  Post(WM_NULL);
}

bool CMonitorWindow::OnCommand(UINT id, UINT, HWND)
{
  switch (id) {
    case ID_MONITOR_OPEN_PROGRAM: monitor_.OnCommand(MonitorCommand::kOpenProgram); return true;
    case ID_FILE_DISMOUNT_ALL: monitor_.OnCommand(MonitorCommand::kDismountAll); return true;
    case ID_APP_EXIT: monitor_.OnCommand(MonitorCommand::kExit); return true;
    default: return false;
  }
}

bool CMonitorWindow::OnTimer(UINT_PTR id)
{
  if (id != kDiskCheckTimer) return false;
  monitor_.OnDiskCheck();
  return true;
}

void CMonitorWindow::OnDestroy()
{
  KillTimer(kDiskCheckTimer);
  trayIcon_.reset();
  PostQuitMessage(0);
}

bool CMonitorWindow::RegisterHotKey(uint32_t modifiers, uint32_t virtualKey)
{
  return ::RegisterHotKey(hwnd_, kHotKeyId, modifiers, virtualKey) != FALSE;
}

void CMonitorWindow::UnregisterHotKey()
{
  ::UnregisterHotKey(hwnd_, kHotKeyId);
}

void CMonitorWindow::BroadcastRefresh()
{
  PostMessageW(HWND_BROADCAST, refreshMessage_, 0, 0);
}

void CMonitorWindow::SetTrayTip(const std::u16string& tip)
{
  if (trayIcon_) trayIcon_->SetTip(Wide(tip));
}

void CMonitorWindow::ShowTrayMessage(const std::u16string& text)
{
  if (trayIcon_) trayIcon_->ShowMessage(LoadResourceString(IDS_MONITOR_TITLE), Wide(text));
}

WindowRef CMonitorWindow::Owner()
{
  return hwnd_;
}

void CMonitorWindow::Exit()
{
  DestroyWindow();
}
