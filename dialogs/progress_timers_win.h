// The two timers of a long job's progress window, shared by the clearing dialog and the
// wizard's progress page: timer 2 moves the bar to the job's latest progress every 200 ms;
// timer 1 shows the remaining time, first after 3 s, then at the period the estimate
// chooses.
#pragma once

#include <windows.h>

#include "app/remaining_time.h"
#include "ui/controls/progress_bar.h"

class CProgressTimers {
 public:
  static constexpr UINT_PTR kEstimateTimer = 1;
  static constexpr UINT_PTR kBarTimer = 2;

  // `bar` and `estimate` belong to the window; the remaining time goes into its control
  // `remainingTimeControl`.
  CProgressTimers(CProgressBarCtrl& bar, CRemainingTimeEstimate& estimate,
                  int remainingTimeControl);

  void Start(HWND window) const;
  void Stop(HWND window) const;
  // Carries out the timer `id` of `window`; false when it is neither of the two.
  bool OnTimer(HWND window, UINT_PTR id) const;

 private:
  CProgressBarCtrl& bar_;
  CRemainingTimeEstimate& estimate_;
  int remainingTimeControl_;
};
