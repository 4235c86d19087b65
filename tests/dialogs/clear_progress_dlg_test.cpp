// The clearing progress dialog under Wine, clearing real images in a temporary directory:
// its template, the worker's reports and completion, the remaining time, and the cancel
// with its confirmation answered either way.
#include "dialogs/clear_progress_dlg_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "app/prompt.h"
#include "dialog_controls.h"
#include "dialogs/clear_image_dlg_win.h"
#include "password_image.h"
#include "res/resource.h"
#include "res/texts.h"
#include "support/ui_harness.h"
#include "system/clock.h"
#include "system/wide_text_win.h"
#include "ui/worker_thread.h"

namespace {

// Sees every progress report of the worker just before the dialog answers it (a thread
// hook sees messages sent from other threads too).
class CProgressWatch {
 public:
  struct Report {
    uint32_t done;
    uint32_t total;
  };
  using Action = std::function<void(HWND dialog, const std::vector<Report>& reports)>;

  explicit CProgressWatch(Action action) : action_(std::move(action))
  {
    current_ = this;
    hook_ = SetWindowsHookExW(WH_CALLWNDPROC, Proc, nullptr, GetCurrentThreadId());
  }
  ~CProgressWatch()
  {
    UnhookWindowsHookEx(hook_);
    current_ = nullptr;
  }
  CProgressWatch(const CProgressWatch&) = delete;
  CProgressWatch& operator=(const CProgressWatch&) = delete;

  std::vector<Report> reports;

 private:
  static LRESULT CALLBACK Proc(int code, WPARAM wParam, LPARAM lParam)
  {
    const auto* message = reinterpret_cast<const CWPSTRUCT*>(lParam);
    // The bar's PBM_SETPOS has the same number as the report; only the dialog's count.
    const bool toDialog = (GetWindowLongW(message->hwnd, GWL_STYLE) & WS_CHILD) == 0;
    if (code == HC_ACTION && current_ != nullptr && message->message == kWorkerProgressMessage &&
        toDialog) {
      current_->reports.push_back(
          Report{static_cast<uint32_t>(message->wParam), static_cast<uint32_t>(message->lParam)});
      current_->action_(message->hwnd, current_->reports);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
  }

  static inline CProgressWatch* current_ = nullptr;
  Action action_;
  HHOOK hook_;
};

class ClearProgressDlgTest : public UiTest {
 protected:
  ClearProgressDlgTest()
  {
    EXPECT_FALSE(IsFailure(CreatePasswordImage(path_, u"secret", 4 * kMegabyte, kCreateFixed)));
  }

  // Clears the image through the progress dialog; the dialog's status.
  StatusCode ClearOpenImage()
  {
    ImageHandle* image = nullptr;
    const StatusCode opened = OpenImageWithPassword(path_, u"secret", &image);
    EXPECT_FALSE(IsFailure(opened));
    if (IsFailure(opened)) return opened;
    const StatusCode status = progress_.Run(nullptr, image);
    EXPECT_FALSE(IsFailure(ImgClose(image, 0)));
    return status;
  }

  void ExpectCancelQuestion(size_t index)
  {
    ASSERT_GT(prompts_.Prompts().size(), index);
    EXPECT_EQ(prompts_.Prompts()[index].text, LoadText(IDS_CANCEL_CLEAR));
    EXPECT_EQ(prompts_.Prompts()[index].caption, u"Warning");
    EXPECT_EQ(prompts_.Prompts()[index].flags, kPromptQuestion);
  }

  TempDir dir_;
  const std::u16string path_ = dir_.File(u"work.qvi");
  CClearVirtualDiskImageProgressDlg progress_;
};

TEST_F(ClearProgressDlgTest, TheCommandClearsARealImageThroughBothDialogs)
{
  std::vector<ControlSeen> controls;
  std::wstring title;
  CProgressWatch watch([&](HWND dialog, const std::vector<CProgressWatch::Report>& reports) {
    if (reports.size() != 1) return;
    title = CWindow::WindowText(dialog);
    controls = DialogControls(dialog);
  });
  CClearVirtualDiskImageDlg input;
  prompts_.Answer(kIdOk);
  RunModal(
      [&] {
        ClearImageCommand(nullptr, input, progress_);
        return INT_PTR{0};
      },
      [&](HWND window) {
        SetControlText(window, IDC_IMAGE_PATH, std::wstring(Wide(path_)));
        SetControlText(window, IDC_PASSWORD, L"secret");
        Click(window, IDOK);
      });
  EXPECT_EQ(progress_.Status(), kStatusSuccess);
  ASSERT_GE(watch.reports.size(), 2u);
  EXPECT_EQ(watch.reports.back().done, watch.reports.back().total);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, u"Virtual disk image has been cleared.");
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Operation Complete");
  EXPECT_EQ(OpenWithPassword(path_, u"secret"), kStatusSuccess);

  // The window as it showed during the clear, before its first estimate.
  EXPECT_EQ(title, L"Clearing Virtual Disk Image");
  ASSERT_NO_FATAL_FAILURE(
      ExpectControls(controls, {
                                   {-1, L"Static", L"Clearing virtual disk image. Please wait."},
                                   {IDC_CLEAR_PROGRESS_BAR, L"msctls_progress32", L""},
                                   {-1, L"Static", L"Remaining time:"},
                                   {IDC_REMAINING_TIME, L"Static", L""},
                                   {IDCANCEL, L"Button", L"&Cancel"},
                               }));
  EXPECT_EQ(controls[4].style & BS_TYPEMASK, static_cast<DWORD>(BS_PUSHBUTTON));
}

TEST_F(ClearProgressDlgTest, TheBarTakesTheTotalAndTheEstimateShowsTheRemainingTime)
{
  constexpr uint64_t kStart = 1'700'000'000;
  SysFreezeClock(kStart);
  std::wstring remaining;
  int rangeHigh = -1;
  CRemainingTimeEstimate expected(kClearProgressDifferences);
  std::optional<RemainingTime> estimate;
  CProgressWatch watch([&](HWND dialog, const std::vector<CProgressWatch::Report>& reports) {
    const CProgressWatch::Report& last = reports.back();
    if (reports.size() == 2) {
      // The first report (taken at the start) set the range; ten seconds later the
      // estimate timer fires.
      rangeHigh = static_cast<int>(
          SendDlgItemMessageW(dialog, IDC_CLEAR_PROGRESS_BAR, PBM_GETRANGE, FALSE, 0));
      SysFreezeClock(kStart + 10);
      estimate = expected.Estimate(SysFileTime());
      SendMessageW(dialog, WM_TIMER, CClearVirtualDiskImageProgressDlg::kEstimateTimer, 0);
      remaining = ControlText(dialog, IDC_REMAINING_TIME);
    }
    expected.Report(last.done, last.total, SysFileTime());
  });
  const StatusCode status = ClearOpenImage();
  SysFreezeClock(0);
  EXPECT_EQ(status, kStatusSuccess);
  ASSERT_GE(watch.reports.size(), 2u);
  EXPECT_EQ(rangeHigh, static_cast<int>(watch.reports[0].total));
  ASSERT_TRUE(estimate.has_value());
  EXPECT_FALSE(estimate->text.empty());
  EXPECT_EQ(remaining, std::wstring(Wide(estimate->text)));
}

TEST_F(ClearProgressDlgTest, AConfirmedCancelStopsTheWorkerAtItsNextReport)
{
  prompts_.Answer(kIdYes);
  size_t firstReportAfterQuestion = 0;
  CProgressWatch watch([&](HWND dialog, const std::vector<CProgressWatch::Report>& reports) {
    // The close box raises the same question as the Cancel button (the dialog manager
    // posts it as the Cancel command). The posted command is taken here, while the worker
    // waits for its first report's answer: the worker writes ahead, and its next reports
    // could otherwise all be answered before the thread gets to its posted messages.
    if (reports.size() == 1) {
      SendMessageW(dialog, WM_CLOSE, 0, 0);
      PumpMessages();
    }
    if (firstReportAfterQuestion == 0 && !prompts_.Prompts().empty()) {
      firstReportAfterQuestion = reports.size();
    }
  });
  EXPECT_EQ(ClearOpenImage(), kImgCancelled);
  EXPECT_EQ(progress_.Status(), kImgCancelled);
  ExpectCancelQuestion(0);
  EXPECT_NE(firstReportAfterQuestion, 0u);
  EXPECT_EQ(watch.reports.size(), firstReportAfterQuestion);
}

TEST_F(ClearProgressDlgTest, ADeclinedCancelLetsTheClearFinish)
{
  prompts_.Answer(kIdNo);
  CProgressWatch watch([&](HWND dialog, const std::vector<CProgressWatch::Report>& reports) {
    if (reports.size() == 1) Click(dialog, IDCANCEL);
  });
  EXPECT_EQ(ClearOpenImage(), kStatusSuccess);
  ExpectCancelQuestion(0);
  ASSERT_GE(watch.reports.size(), 2u);
  EXPECT_EQ(watch.reports.back().done, watch.reports.back().total);
  EXPECT_EQ(OpenWithPassword(path_, u"secret"), kStatusSuccess);
}

}  // namespace
