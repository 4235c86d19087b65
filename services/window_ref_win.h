// Converts between the system's window handle and the portable owner reference.
#pragma once

#include <windows.h>

#include "services/window_ref.h"

inline HWND ToHwnd(WindowRef window)
{
  return static_cast<HWND>(window);
}

inline WindowRef ToWindowRef(HWND window)
{
  return window;
}
