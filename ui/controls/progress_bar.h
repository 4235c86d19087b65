// A progress bar: a 32-bit range, the position, stepping, and the marquee (an endless
// moving bar for work of unknown length).
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/window.h"

class CProgressBarCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  void SetRange(int low, int high) const { Send(PBM_SETRANGE32, static_cast<WPARAM>(low), high); }
  int RangeLow() const { return static_cast<int>(Send(PBM_GETRANGE, TRUE)); }
  int RangeHigh() const { return static_cast<int>(Send(PBM_GETRANGE, FALSE)); }

  int Position() const { return static_cast<int>(Send(PBM_GETPOS)); }
  // Answers the previous position; the control keeps the position inside the range.
  int SetPosition(int position) const
  {
    return static_cast<int>(Send(PBM_SETPOS, static_cast<WPARAM>(position)));
  }

  void SetStep(int step) const { Send(PBM_SETSTEP, static_cast<WPARAM>(step)); }
  // Advances by the step (wrapping to the start past the end); answers the previous position.
  int StepIt() const { return static_cast<int>(Send(PBM_STEPIT)); }

  // On: gives the bar the marquee style (when it lacks it) and starts the marquee, moving
  // every `interval` milliseconds (0: the control's default). Off: stops the marquee and
  // takes the style away, so the bar shows its position again.
  void SetMarquee(bool on, UINT interval = 0) const;
  bool IsMarquee() const { return (GetWindowLongW(hwnd_, GWL_STYLE) & PBS_MARQUEE) != 0; }
};
