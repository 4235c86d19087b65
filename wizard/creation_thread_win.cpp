#include "wizard/creation_thread_win.h"

#include "app/drive_letters.h"

namespace {

// The worker's link to the page window, through the worker thread's reporter.
class CPageReporter final : public CreationReporter {
 public:
  CPageReporter(const CWorkerReporter& reporter, DriveFactsSource driveFacts)
      : reporter_(reporter), driveFacts_(driveFacts)
  {
  }

  bool Progress(uint32_t done, uint32_t total) override { return reporter_.Progress(done, total); }
  void FormattingStarts(StatusCode mountStatus) override
  {
    reporter_.Notify(WMU_CREATE_FORMATTING, mountStatus, 0);
  }
  std::u16string FreeDriveLetters() override { return ::FreeDriveLetters(driveFacts_()); }

 private:
  const CWorkerReporter& reporter_;
  DriveFactsSource driveFacts_;
};

}  // namespace

StatusCode StartCreationWorker(HWND page, const CreationJob& job, DriveFactsSource driveFacts)
{
  CWorkerThread worker;
  const StatusCode status = worker.Create(page, [job, driveFacts](CWorkerReporter& reporter) {
    CPageReporter pageReporter(reporter, driveFacts);
    return RunCreationWorker(job, pageReporter);
  });
  if (IsFailure(status)) return status;
  worker.Start();
  return status;
}
