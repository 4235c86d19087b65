// The clearing progress dialog: the image is cleared on a worker thread while the bar
// follows the progress every 200 ms and the remaining time is estimated, first after 3 s,
// then every 1 to 10 s. Cancel (also Escape and the close box) asks first, since a clear
// cancelled half-way leaves the image unusable; the worker stops at its next report.
#pragma once

#include <windows.h>

#include "dialogs/clear_image.h"
#include "dialogs/clear_progress.h"
#include "dialogs/progress_timers_win.h"
#include "res/resource.h"
#include "ui/controls/progress_bar.h"
#include "ui/dialog.h"

class CClearVirtualDiskImageProgressDlg final : public CDialog, public CClearProgressRun {
 public:
  CClearVirtualDiskImageProgressDlg();

  // Shows the dialog over `owner` while the worker clears `image`; returns the worker's
  // final status, or why the worker could not start (the dialog then never shows).
  StatusCode Run(WindowRef owner, ImageHandle* image) override;
  StatusCode Status() const { return status_; }

  // The timers: the bar's and the remaining-time estimate's.
  static constexpr UINT_PTR kEstimateTimer = CProgressTimers::kEstimateTimer;
  static constexpr UINT_PTR kBarTimer = CProgressTimers::kBarTimer;

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  bool OnTimer(UINT_PTR id) override;
  void OnCancel() override;

 private:
  LRESULT OnProgress(uint32_t done, uint32_t total);
  void OnWorkerDone(StatusCode status);

  ImageHandle* image_ = nullptr;
  CProgressBarCtrl bar_;
  CRemainingTimeEstimate estimate_{kClearProgressDifferences};
  CProgressTimers timers_{bar_, estimate_, IDC_REMAINING_TIME};
  StatusCode status_ = kStatusSuccess;
  bool cancelRequested_ = false;
};
