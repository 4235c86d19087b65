// The wizard's progress page: it starts the creation worker when it becomes active, follows
// the image's creation with a bar and an estimate of the remaining time, shows a marquee
// while the device host writes the file system, and then either moves on to the summary or
// reports the failure and closes the wizard. Cancel asks the worker to stop and closes the
// wizard at once; the worker is never waited for.
#pragma once

#include "app/remaining_time.h"
#include "dialogs/drive_facts_win.h"
#include "dialogs/progress_timers_win.h"
#include "res/resource.h"
#include "system/status.h"
#include "ui/controls/progress_bar.h"
#include "wizard/creation_progress.h"
#include "wizard/new_image_wizard_win.h"

class CNewVirtualDiskImageWizard::CProgressPage final : public CPropertyPage {
 public:
  // The free letters of the worker's temporary mount come from `driveFacts`.
  CProgressPage(CNewVirtualDiskImageWizard& wizard, DriveFactsSource driveFacts);

  // The timers: the remaining-time estimate's and the bar's.
  static constexpr UINT_PTR kEstimateTimer = CProgressTimers::kEstimateTimer;
  static constexpr UINT_PTR kBarTimer = CProgressTimers::kBarTimer;

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  int OnSetActive() override;
  bool OnKillActive() override;
  bool OnQueryCancel() override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  bool OnTimer(UINT_PTR id) override;

 private:
  LRESULT OnProgress(uint32_t done, uint32_t total);
  void OnFormatting();
  void OnCreationDone(StatusCode status);

  CNewVirtualDiskImageWizard& wizard_;
  DriveFactsSource driveFacts_;
  CProgressBarCtrl bar_;
  CRemainingTimeEstimate estimate_{kCreationProgressDifferences};
  CProgressTimers timers_{bar_, estimate_, IDC_CREATE_REMAINING_TIME};
  bool cancelRequested_ = false;
};
