#include "wizard/progress_page_win.h"

#include "app/prompt.h"
#include "res/resource.h"
#include "res/texts.h"
#include "services/window_ref_win.h"
#include "system/clock.h"
#include "system/wide_text_win.h"
#include "wizard/creation_failure.h"
#include "wizard/creation_thread_win.h"

namespace {

// The worker's own copy of the wizard's choices.
CreationJob JobFor(const NewImageRequest& request)
{
  CreationJob job;
  job.path = request.path;
  job.password = request.password;
  job.capacity = request.capacity;
  job.fixedSize = request.fixedSize != 0;
  job.fatCompatible = request.fatCompatible != 0;
  job.algorithm = request.algorithm;
  job.keyBits = request.keyBits;
  return job;
}

}  // namespace

CNewVirtualDiskImageWizard::CProgressPage::CProgressPage(CNewVirtualDiskImageWizard& wizard,
                                                         DriveFactsSource driveFacts)
    : CPropertyPage(IDD_WIZARD_PROGRESS), wizard_(wizard), driveFacts_(driveFacts)
{
  SetHeader(IDS_PROGRESS_TITLE, IDS_PROGRESS_SUBTITLE);
  SetHasHelp(false);
}

bool CNewVirtualDiskImageWizard::CProgressPage::OnInitDialog(HWND)
{
  bar_ = CProgressBarCtrl(Item(IDC_CREATE_PROGRESS_BAR));
  SetItemText(IDC_CREATE_REMAINING_TIME, L"");
  return true;
}

int CNewVirtualDiskImageWizard::CProgressPage::OnSetActive()
{
  SetWizardButtons(0);
  const StatusCode started = StartCreationWorker(hwnd_, JobFor(wizard_.Request()), driveFacts_);
  if (IsFailure(started)) {
    // No worker will report: the failure ends the creation at once.
    OnCreationDone(started);
    return 0;
  }
  timers_.Start(hwnd_);
  return 0;
}

bool CNewVirtualDiskImageWizard::CProgressPage::OnKillActive()
{
  timers_.Stop(hwnd_);
  return true;
}

bool CNewVirtualDiskImageWizard::CProgressPage::OnQueryCancel()
{
  // The worker stops at its next report; the wizard closes without waiting for it.
  cancelRequested_ = true;
  return true;
}

bool CNewVirtualDiskImageWizard::CProgressPage::HandleMessage(UINT message, WPARAM wParam,
                                                              LPARAM lParam, LRESULT& result)
{
  switch (message) {
    case WMU_CREATE_PROGRESS:
      result = OnProgress(static_cast<uint32_t>(wParam), static_cast<uint32_t>(lParam));
      return true;
    case WMU_CREATE_FORMATTING:
      OnFormatting();
      result = 0;
      return true;
    case WMU_CREATE_DONE:
      OnCreationDone(static_cast<StatusCode>(wParam));
      result = 0;
      return true;
    default: return CPropertyPage::HandleMessage(message, wParam, lParam, result);
  }
}

LRESULT CNewVirtualDiskImageWizard::CProgressPage::OnProgress(uint32_t done, uint32_t total)
{
  if (estimate_.Report(done, total, SysFileTime())) {
    bar_.SetRange(0, static_cast<int>(ProgressBarRange(total)));
  }
  return cancelRequested_ ? 0 : 1;
}

void CNewVirtualDiskImageWizard::CProgressPage::OnFormatting()
{
  bar_.SetPosition(0);
  bar_.SetMarquee(true);
  SetItemText(IDC_CREATE_STATE, Wide(LoadText(IDS_CREATING_FILE_SYSTEM)));
  ShowWindow(Item(IDC_CREATE_REMAINING_LABEL), SW_HIDE);
  ShowWindow(Item(IDC_CREATE_REMAINING_TIME), SW_HIDE);
}

void CNewVirtualDiskImageWizard::CProgressPage::OnCreationDone(StatusCode status)
{
  if (!IsFailure(status)) {
    bar_.SetPosition(static_cast<int>(kProgressBarFinished));
    timers_.Stop(hwnd_);
    wizard_.JumpToSummary();
    return;
  }
  const auto failure = CreationFailure(status, wizard_.Request().path);
  if (failure) ShowPrompt(ToWindowRef(hwnd_), *failure);
  wizard_.CloseAfterFailure();
}

bool CNewVirtualDiskImageWizard::CProgressPage::OnTimer(UINT_PTR id)
{
  return timers_.OnTimer(hwnd_, id) || CPropertyPage::OnTimer(id);
}
