// A top-level window that holds the common controls a test creates by class name, so that
// each control wrapper is tested on the real control.
#pragma once

#include <windows.h>

#include "ui/handles.h"

class CControlHost {
 public:
  CControlHost();

  HWND Handle() const { return window_.Get(); }

  // A visible child control of `className` with `style` added to WS_CHILD | WS_VISIBLE;
  // it is destroyed with the host.
  HWND Create(const wchar_t* className, DWORD style, const RECT& rect = {10, 10, 310, 210},
              int id = 100) const;

 private:
  COwnedWindow window_;
};
