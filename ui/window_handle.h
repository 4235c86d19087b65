// CWindow names a window and offers the calls every screen repeats; it owns nothing.
#pragma once

#include <windows.h>

#include <string>

class CWindow {
 public:
  CWindow() = default;
  explicit CWindow(HWND window) : hwnd_(window) {}

  HWND Handle() const { return hwnd_; }
  bool IsWindow() const { return hwnd_ != nullptr && ::IsWindow(hwnd_) != FALSE; }

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
  {
    return SendMessageW(hwnd_, message, wParam, lParam);
  }
  bool Post(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
  {
    return PostMessageW(hwnd_, message, wParam, lParam) != FALSE;
  }

  std::wstring Text() const { return WindowText(hwnd_); }
  bool SetText(const std::wstring& text) const { return SetWindowTextW(hwnd_, text.c_str()) != 0; }

  // The control with the given id among this window's children.
  HWND Item(int id) const { return GetDlgItem(hwnd_, id); }
  std::wstring ItemText(int id) const { return WindowText(Item(id)); }
  bool SetItemText(int id, const std::wstring& text) const
  {
    return SetDlgItemTextW(hwnd_, id, text.c_str()) != 0;
  }
  UINT ItemCheck(int id) const { return IsDlgButtonChecked(hwnd_, id); }
  void SetItemCheck(int id, UINT state) const { CheckDlgButton(hwnd_, id, state); }
  void EnableItem(int id, bool enable) const { EnableWindow(Item(id), enable ? TRUE : FALSE); }

  bool SetTimer(UINT_PTR id, UINT milliseconds) const
  {
    return ::SetTimer(hwnd_, id, milliseconds, nullptr) != 0;
  }
  void KillTimer(UINT_PTR id) const { ::KillTimer(hwnd_, id); }

  // Centres this window on `over` (its owner when null, the work area when it has none),
  // kept inside the work area of the monitor that holds it.
  void CenterWindow(HWND over = nullptr) const;

  static std::wstring WindowText(HWND window);

 protected:
  HWND hwnd_ = nullptr;
};
