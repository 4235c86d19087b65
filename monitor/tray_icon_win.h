// The monitor's icon in the notification area: added with a tool tip, its tip changed, a
// message shown at it (a balloon), removed. Clicks on it arrive at the owning window as
// its callback message, the mouse message in lParam.
#pragma once

#include <windows.h>

#include <string>

class CTrayIcon {
 public:
  CTrayIcon(HWND window, UINT callbackMessage);
  ~CTrayIcon();
  CTrayIcon(const CTrayIcon&) = delete;
  CTrayIcon& operator=(const CTrayIcon&) = delete;

  // Adds the icon with the current tip, also again after the taskbar was recreated, and
  // shows a message that waited for it. False when the notification area refuses it (the
  // monitor keeps running without an icon).
  bool Add();
  void SetTip(const std::wstring& tip);
  // Shows a message at the icon; while the icon is not in the notification area the last
  // message waits for it.
  void ShowMessage(const std::wstring& title, const std::wstring& text);
  void Remove();

 private:
  NOTIFYICONDATAW Data(UINT flags) const;

  HWND window_;
  UINT callbackMessage_;
  HICON icon_;
  std::wstring tip_;
  std::wstring waitingTitle_;
  std::wstring waitingText_;
  bool added_ = false;
};
