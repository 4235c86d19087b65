#include "ui/controls/progress_bar.h"

void CProgressBarCtrl::SetMarquee(bool on, UINT interval) const
{
  const LONG style = GetWindowLongW(hwnd_, GWL_STYLE);
  if (on) {
    // The control reads its style when the marquee starts, so the style comes first.
    if ((style & PBS_MARQUEE) == 0) SetWindowLongW(hwnd_, GWL_STYLE, style | PBS_MARQUEE);
    Send(PBM_SETMARQUEE, TRUE, static_cast<LPARAM>(interval));
  } else {
    Send(PBM_SETMARQUEE, FALSE);
    if ((style & PBS_MARQUEE) != 0) SetWindowLongW(hwnd_, GWL_STYLE, style & ~PBS_MARQUEE);
  }
}
