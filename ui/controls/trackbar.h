// A trackbar (slider): its range, the thumb's position, the page size, the tic marks and
// the label that travels beside it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/window.h"

class CTrackBarCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  void SetRange(int minimum, int maximum, bool redraw = true) const
  {
    Send(TBM_SETRANGEMIN, FALSE, minimum);
    Send(TBM_SETRANGEMAX, redraw ? TRUE : FALSE, maximum);
  }
  int RangeMin() const { return static_cast<int>(Send(TBM_GETRANGEMIN)); }
  int RangeMax() const { return static_cast<int>(Send(TBM_GETRANGEMAX)); }

  int Position() const { return static_cast<int>(Send(TBM_GETPOS)); }
  // The control keeps the position inside the range.
  void SetPosition(int position, bool redraw = true) const
  {
    Send(TBM_SETPOS, redraw ? TRUE : FALSE, position);
  }

  int PageSize() const { return static_cast<int>(Send(TBM_GETPAGESIZE)); }
  void SetPageSize(int size) const { Send(TBM_SETPAGESIZE, 0, size); }

  // A tic mark every `frequency` positions (for a trackbar with TBS_AUTOTICKS).
  void SetTicFrequency(int frequency) const
  {
    Send(TBM_SETTICFREQ, static_cast<WPARAM>(frequency));
  }
  // The number of tic marks, the two ends included.
  int TicCount() const { return static_cast<int>(Send(TBM_GETNUMTICS)); }

  // Places `buddy` at the trackbar's right (or bottom) end, or at its left (top) end.
  void SetBuddy(HWND buddy, bool atStart = false) const
  {
    Send(TBM_SETBUDDY, atStart ? TRUE : FALSE, reinterpret_cast<LPARAM>(buddy));
  }
  HWND Buddy(bool atStart = false) const
  {
    return reinterpret_cast<HWND>(Send(TBM_GETBUDDY, atStart ? TRUE : FALSE));
  }
};
