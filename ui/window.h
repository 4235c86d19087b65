// Thin wrappers around window handles.
//
// CWindow names a window and offers the calls every screen repeats; it owns nothing.
// CMessageHandler is the non-template base of every object that receives a window's
// messages: the object's address is stored with its window when the window is created, and
// the one static window (or dialog) procedure of its kind hands each message to the object's
// virtual handlers. CCustomWindow is such an object for windows of a class we register,
// either a class of our own or a superclass of a system control (the control does its own
// work and our handlers see its messages first).
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

class CMessageHandler {
 public:
  CMessageHandler() = default;
  CMessageHandler(const CMessageHandler&) = delete;
  CMessageHandler& operator=(const CMessageHandler&) = delete;

  // The object whose messages a window of ours delivers, or null for any other window.
  static CMessageHandler* FromHandle(HWND window);

 protected:
  virtual ~CMessageHandler() = default;

  // Every message passes here first. Returns true when the message was handled, with its
  // result in `result`; false hands it on to the default processing. The base routes
  // WM_COMMAND, WM_NOTIFY, WM_TIMER and WM_DESTROY to the handlers below.
  virtual bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

  // A command (menu, accelerator, control notification); true when handled.
  virtual bool OnCommand(UINT id, UINT code, HWND control);
  // A control notification; true when handled, with the notification's answer in `result`.
  virtual bool OnNotify(NMHDR& header, LRESULT& result);
  virtual bool OnTimer(UINT_PTR id);
  // The window is being destroyed (its children still exist); default processing follows.
  virtual void OnDestroy() {}
  // The window is gone (after WM_NCDESTROY): the object may now be deleted by itself.
  virtual void OnFinalMessage() {}

  // Stores this object with `window` (at creation) and removes it again (at destruction).
  void AttachTo(HWND window);
  static void DetachFrom(HWND window);
};

class CCustomWindow : public CWindow, public CMessageHandler {
 public:
  CCustomWindow() = default;
  // A window that outlives its object is detached and destroyed.
  ~CCustomWindow() override;

  // Creates the window; its handle is known to the handlers from the first message on.
  HWND Create(HWND parent, const RECT& rect, const wchar_t* title, DWORD style, DWORD exStyle = 0,
              HMENU menuOrId = nullptr);
  bool DestroyWindow() { return ::DestroyWindow(hwnd_) != FALSE; }

 protected:
  // The window class to create. The default is the plain class of the program's windows;
  // screens that extend a system control return a class name of their own together with the
  // control's class as `base`.
  struct ClassDescription {
    const wchar_t* name;
    const wchar_t* base;  // null: a class of our own
  };
  virtual ClassDescription WindowClass() const;

  // The processing a message gets when no handler took it (the base class's procedure
  // for a superclass, DefWindowProc otherwise).
  LRESULT DefaultProcessing(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static WNDPROC RegisterClassOnce(const ClassDescription& description);

  WNDPROC defaultProc_ = DefWindowProcW;
};

// The module whose resources (templates, strings, menus, bitmaps) the program uses.
HINSTANCE ResourceModule();
