#include "dialogs/clear_progress_dlg_win.h"

#include "dialogs/program_icon_win.h"
#include "res/resource.h"
#include "services/window_ref_win.h"
#include "system/clock.h"
#include "system/error_map.h"
#include "ui/worker_thread.h"

CClearVirtualDiskImageProgressDlg::CClearVirtualDiskImageProgressDlg() : CDialog(IDD_CLEAR_PROGRESS)
{
}

StatusCode CClearVirtualDiskImageProgressDlg::Run(WindowRef owner, ImageHandle* image)
{
  image_ = image;
  estimate_ = CRemainingTimeEstimate(kClearProgressDifferences);
  status_ = kStatusSuccess;
  cancelRequested_ = false;
  if (DoModal(ToHwnd(owner)) != -1) return status_;
  // The dialog could not be created, so the worker never ran.
  const StatusCode why = MapSystemError(GetLastError());
  return IsFailure(why) ? why : kSysGeneralFailure;
}

bool CClearVirtualDiskImageProgressDlg::OnInitDialog(HWND)
{
  // The thread waits suspended until the dialog is ready; it owns what it works on (the
  // image stays open until the command closes it after this dialog ends).
  CWorkerThread worker;
  ImageHandle* const image = image_;
  status_ = worker.Create(hwnd_, [image](CWorkerReporter& reporter) {
    return ImgClear(image, CWorkerReporter::ImageProgress, &reporter);
  });
  if (IsFailure(status_)) {
    EndDialog(ClearProgressResult(status_));
    return true;
  }
  SetProgramIcons(hwnd_);
  bar_ = CProgressBarCtrl(Item(IDC_CLEAR_PROGRESS_BAR));
  SetItemText(IDC_REMAINING_TIME, L"");
  CenterWindow();
  timers_.Start(hwnd_);
  worker.Start();
  return true;
}

bool CClearVirtualDiskImageProgressDlg::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam,
                                                      LRESULT& result)
{
  if (message == kWorkerProgressMessage) {
    result = OnProgress(static_cast<uint32_t>(wParam), static_cast<uint32_t>(lParam));
    return true;
  }
  if (message == kWorkerDoneMessage) {
    OnWorkerDone(static_cast<StatusCode>(wParam));
    result = 0;
    return true;
  }
  return CDialog::HandleMessage(message, wParam, lParam, result);
}

LRESULT CClearVirtualDiskImageProgressDlg::OnProgress(uint32_t done, uint32_t total)
{
  if (estimate_.Report(done, total, SysFileTime())) {
    bar_.SetRange(0, static_cast<int>(ProgressBarRange(total)));
  }
  return ClearProgressReply(cancelRequested_);
}

void CClearVirtualDiskImageProgressDlg::OnWorkerDone(StatusCode status)
{
  status_ = status;
  bar_.SetPosition(static_cast<int>(kProgressBarFinished));
  timers_.Stop(hwnd_);
  EndDialog(ClearProgressResult(status));
}

bool CClearVirtualDiskImageProgressDlg::OnTimer(UINT_PTR id)
{
  return timers_.OnTimer(hwnd_, id) || CDialog::OnTimer(id);
}

void CClearVirtualDiskImageProgressDlg::OnCancel()
{
  if (ShowPrompt(ToWindowRef(hwnd_), CancelClearPrompt()) == kIdYes) cancelRequested_ = true;
}
