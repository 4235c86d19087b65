#include "dialogs/progress_timers_win.h"

#include "system/clock.h"
#include "system/wide_text_win.h"

CProgressTimers::CProgressTimers(CProgressBarCtrl& bar, CRemainingTimeEstimate& estimate,
                                 int remainingTimeControl)
    : bar_(bar), estimate_(estimate), remainingTimeControl_(remainingTimeControl)
{
}

void CProgressTimers::Start(HWND window) const
{
  SetTimer(window, kBarTimer, kProgressBarPeriodMs, nullptr);
  SetTimer(window, kEstimateTimer, kFirstEstimateDelayMs, nullptr);
}

void CProgressTimers::Stop(HWND window) const
{
  KillTimer(window, kBarTimer);
  KillTimer(window, kEstimateTimer);
}

bool CProgressTimers::OnTimer(HWND window, UINT_PTR id) const
{
  if (id == kBarTimer) {
    bar_.SetPosition(static_cast<int>(estimate_.Done()));
    return true;
  }
  if (id == kEstimateTimer) {
    if (const auto estimate = estimate_.Estimate(SysFileTime())) {
      SetTimer(window, kEstimateTimer, estimate->nextPeriodMs, nullptr);
      SetDlgItemTextW(window, remainingTimeControl_, Wide(estimate->text));
    }
    return true;
  }
  return false;
}
