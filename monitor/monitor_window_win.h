// The monitor's hidden top-level window: it holds the emergency hot key and the tray icon,
// receives the settings-changed broadcast (top-level, because broadcasts do not reach
// message-only windows) and runs the periodic disk check. Every event goes to CMonitor.
#pragma once

#include <windows.h>

#include <memory>

#include "monitor/monitor.h"
#include "monitor/tray_icon_win.h"
#include "ui/handles.h"
#include "ui/window.h"

// The window class by which other programs (and the tests) find a running monitor.
inline constexpr wchar_t kMonitorWindowClass[] = L"Cryptelle.Monitor";

// The tray menu's resource with "Open Cryptelle" as its default item; the menu that shows is
// its first popup.
CMenu LoadTrayMenu();

class CMonitorWindow final : public CCustomWindow, private CMonitorSystem {
 public:
  CMonitorWindow();

  // Creates the window and starts the monitor; false when the window cannot be made. The
  // thread's message loop ends (WM_QUIT, exit code 0) when the monitor exits.
  bool Start();

 protected:
  ClassDescription WindowClass() const override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  bool OnTimer(UINT_PTR id) override;
  void OnDestroy() override;

 private:
  void ShowTrayMenu();

  // CMonitorSystem
  bool RegisterHotKey(uint32_t modifiers, uint32_t virtualKey) override;
  void UnregisterHotKey() override;
  void BroadcastRefresh() override;
  void SetTrayTip(const std::u16string& tip) override;
  void ShowTrayMessage(const std::u16string& text) override;
  WindowRef Owner() override;
  void Exit() override;

  const UINT settingsChangedMessage_;
  const UINT refreshMessage_;
  const UINT taskbarCreatedMessage_;
  CMonitor monitor_;
  std::unique_ptr<CTrayIcon> trayIcon_;
};
