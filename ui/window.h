// Windows of the classes we register.
//
// CCustomWindow is the object of a window of a class we register, either a class of our own
// or a superclass of a system control (the control does its own work and our handlers see
// its messages first). The one window procedure of these classes attaches the object at the
// window's first message and delivers every message to it (ui/message_handler.h).
#pragma once

#include <windows.h>

#include "ui/message_handler.h"
#include "ui/window_handle.h"

class CCustomWindow : public CMessageHandler {
 public:
  CCustomWindow() = default;

  // Creates the window; its handle is known to the handlers from the first message on.
  HWND Create(HWND parent, const RECT& rect, const wchar_t* title, DWORD style, DWORD exStyle = 0,
              HMENU menuOrId = nullptr);
  // The same at the position and size the system chooses (CW_USEDEFAULT), for a top-level
  // window.
  HWND CreateAtDefaultPlace(HWND parent, const wchar_t* title, DWORD style, DWORD exStyle,
                            HMENU menuOrId);
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
  HWND CreateAt(HWND parent, int x, int y, int width, int height, const wchar_t* title, DWORD style,
                DWORD exStyle, HMENU menuOrId);
  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static WNDPROC RegisterClassOnce(const ClassDescription& description);

  WNDPROC defaultProc_ = DefWindowProcW;
};

// The module whose resources (templates, strings, menus, bitmaps) the program uses.
HINSTANCE ResourceModule();
