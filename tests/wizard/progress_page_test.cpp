// The wizard's progress page under Wine with its real worker and the scripted device host
// behind a gate: its template, the bar and the remaining-time estimate, the formatting
// state, the jump to the summary, a failure's message, and the cancel.
#include "wizard/progress_page_win.h"

#include <commctrl.h>

#include <filesystem>
#include <vector>

#include "app/display_text.h"
#include "app/prompt.h"
#include "dialogs/dialog_controls.h"
#include "dialogs/password_image.h"
#include "gated_device_host.h"
#include "progress_run.h"
#include "res/resource.h"
#include "res/texts.h"
#include "system/clock.h"
#include "system/file.h"
#include "system/utf.h"
#include "system/wide_text_win.h"
#include "wizard/creation_failure.h"
#include "wizard/creation_thread_win.h"

namespace {

using Op = DeviceHostOperation;

class ProgressPageWorkerTest : public ProgressPageTest {
 protected:
  explicit ProgressPageWorkerTest(DriveFactsSource driveFacts = GatherDriveFacts)
      : ProgressPageTest(driveFacts)
  {
  }
  ~ProgressPageWorkerTest() override { SysFreezeClock(0); }

  // Waits until the worker has made `calls` device host calls and returned from them.
  bool WaitForReturnedCalls(int calls)
  {
    return PumpUntil([&] { return gate_.Returned() >= calls; });
  }
  bool WaitAtGate(Op operation)
  {
    return PumpUntil([&] { return gate_.Waiting(operation); });
  }

  CProgressBarCtrl Bar() const
  {
    return CProgressBarCtrl(GetDlgItem(page_, IDC_CREATE_PROGRESS_BAR));
  }
  bool SheetButtonEnabled(int id) const { return IsControlEnabled(sheet_, id); }

  // Sends the page a progress report as the worker does; the page's answer.
  LRESULT Report(uint32_t done, uint32_t total) const
  {
    return SendMessageW(page_, WMU_CREATE_PROGRESS, done, total);
  }
  void Tick(UINT_PTR timer) const { SendMessageW(page_, WM_TIMER, timer, 0); }

  FakeDeviceHost host_;
  CGatedDeviceHost gate_{host_};
};

bool FileExists(const std::u16string& path)
{
  return std::filesystem::exists(std::filesystem::path(path));
}

// Every drive letter from A to Z in use.
DriveLetterFacts EveryLetterTaken()
{
  DriveLetterFacts facts;
  facts.lettersInUse = (1u << 26) - 1;
  return facts;
}

class ProgressPageNoFreeLetterTest : public ProgressPageWorkerTest {
 protected:
  ProgressPageNoFreeLetterTest() : ProgressPageWorkerTest(EveryLetterTaken) {}
};

}  // namespace

TEST_F(ProgressPageWorkerTest, ThePageShowsItsControlsWithEveryWizardButtonDisabled)
{
  gate_.Hold(Op::kMountWithPassword);
  host_.Answer(Op::kMountWithPassword, {kDevNotRunning});
  prompts_.Answer(kIdOk);
  Open();
  ASSERT_TRUE(WaitAtGate(Op::kMountWithPassword));

  ASSERT_NO_FATAL_FAILURE(
      ExpectControls(DialogControls(page_),
                     {
                         {IDC_CREATE_STATE, L"Static", L"Creating virtual disk image..."},
                         {IDC_CREATE_PROGRESS_BAR, L"msctls_progress32", L""},
                         {IDC_CREATE_REMAINING_LABEL, L"Static", L"Estimated remaining time:"},
                         {IDC_CREATE_REMAINING_TIME, L"Static", L""},
                     }));
  EXPECT_FALSE(Bar().IsMarquee());
  EXPECT_FALSE(SheetButtonEnabled(0x3023));  // Back
  EXPECT_FALSE(SheetButtonEnabled(0x3024));  // Next
  EXPECT_FALSE(SheetButtonEnabled(0x3025));  // Finish
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(sheet_, IDHELP)) && SheetButtonEnabled(IDHELP));

  gate_.Release(Op::kMountWithPassword);
  EXPECT_TRUE(WaitUntilClosed());
}

TEST_F(ProgressPageWorkerTest, SuccessFormatsAtTheHighestFreeLetterAndMovesOnToTheSummary)
{
  const std::u16string mountPoint = ExpectedMountPoint();
  ASSERT_FALSE(mountPoint.empty());
  gate_.Hold(Op::kFormatVolume);
  Open();
  ASSERT_TRUE(WaitAtGate(Op::kFormatVolume));

  // Formatting: the marquee and the file-system text; the remaining time is hidden.
  ASSERT_TRUE(PumpUntil([&] { return Bar().IsMarquee(); }));
  EXPECT_EQ(Bar().Position(), 0);
  EXPECT_EQ(ControlText(page_, IDC_CREATE_STATE),
            L"Creating file system structure. This may take several minutes. Please wait...");
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(page_, IDC_CREATE_REMAINING_LABEL)));
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(page_, IDC_CREATE_REMAINING_TIME)));
  EXPECT_TRUE(IsWindowVisible(GetDlgItem(page_, IDC_CREATE_PROGRESS_BAR)));

  gate_.Release(Op::kFormatVolume);
  ASSERT_TRUE(WaitForSummary());
  const std::string point = Utf16ToUtf8(mountPoint.c_str());
  EXPECT_EQ(host_.CallTexts(),
            (std::vector<std::string>{"MountWithPassword(" + Utf16ToUtf8(Path().c_str()) + ", " +
                                          point + ", flags 0x8, password pass word)",
                                      "FormatVolume(" + point + ", selector 0)",
                                      "DismountMountPoint(" + point + ", forced 1)"}));
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_TRUE(FileExists(Path()));
  EXPECT_TRUE(WaitForReturnedCalls(3));
}

TEST_F(ProgressPageWorkerTest, TheBarTakesTheLowSixteenBitsOfTheTotalAndTheEstimateTheWholeValues)
{
  // The creation fails before its first report (no such folder); the worker then waits at
  // the mount while the test reports as a worker would.
  wizard_.Request().path = dir_.File(u"missing\\new.qvi");
  gate_.Hold(Op::kMountWithPassword);
  host_.Answer(Op::kMountWithPassword, {kSysNotFound});
  prompts_.Answer(kIdOk);
  constexpr uint64_t kStart = 1'700'000'000;
  SysFreezeClock(kStart);
  Open();
  ASSERT_TRUE(WaitAtGate(Op::kMountWithPassword));

  // Nothing reported yet: the estimate timer shows nothing.
  Tick(CNewVirtualDiskImageWizard::CProgressPage::kEstimateTimer);
  EXPECT_EQ(ControlText(page_, IDC_CREATE_REMAINING_TIME), L"");

  EXPECT_EQ(Report(0, 70000), 1);
  EXPECT_EQ(Bar().RangeHigh(), 70000 - 65536);
  SysFreezeClock(kStart + 30);
  EXPECT_EQ(Report(30000, 70000), 1);
  // A later report does not set the range again.
  EXPECT_EQ(Bar().RangeHigh(), 70000 - 65536);
  // The first estimate measures from the first report: 30 s for 30000, 40000 to go.
  Tick(CNewVirtualDiskImageWizard::CProgressPage::kEstimateTimer);
  EXPECT_EQ(ControlText(page_, IDC_CREATE_REMAINING_TIME), Wide(FormatDurationText(40)));
  Tick(CNewVirtualDiskImageWizard::CProgressPage::kBarTimer);
  EXPECT_EQ(Bar().Position(), 70000 - 65536);  // the bar keeps its position inside its range

  // The same amount again gives no new estimate.
  SysFreezeClock(kStart + 40);
  EXPECT_EQ(Report(30000, 70000), 1);
  Tick(CNewVirtualDiskImageWizard::CProgressPage::kEstimateTimer);
  EXPECT_EQ(ControlText(page_, IDC_CREATE_REMAINING_TIME), Wide(FormatDurationText(40)));

  // Then the rate over the whole stall: 20 s for 10000 more, 30000 to go: 60 s.
  SysFreezeClock(kStart + 50);
  EXPECT_EQ(Report(40000, 70000), 1);
  Tick(CNewVirtualDiskImageWizard::CProgressPage::kEstimateTimer);
  EXPECT_EQ(ControlText(page_, IDC_CREATE_REMAINING_TIME), Wide(FormatDurationText(60)));

  gate_.Release(Op::kMountWithPassword);
  ASSERT_TRUE(WaitUntilClosed());
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, CreationFailure(kSysNotFound, Path())->text);
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Error");
  EXPECT_EQ(prompts_.Prompts()[0].flags, kPromptError);
}

TEST_F(ProgressPageWorkerTest, ATotalOfExactlySixtyFourKibiStepsGivesAnEmptyBarRange)
{
  wizard_.Request().path = dir_.File(u"missing\\new.qvi");
  gate_.Hold(Op::kMountWithPassword);
  host_.Answer(Op::kMountWithPassword, {kSysNotFound});
  prompts_.Answer(kIdOk);
  Open();
  ASSERT_TRUE(WaitAtGate(Op::kMountWithPassword));

  EXPECT_EQ(Report(0, 65536), 1);
  EXPECT_EQ(Bar().RangeLow(), 0);
  EXPECT_EQ(Bar().RangeHigh(), 0);

  gate_.Release(Op::kMountWithPassword);
  EXPECT_TRUE(WaitUntilClosed());
}

TEST_F(ProgressPageWorkerTest, TheMountsFailureAfterAFailedCreationIsTheOneReported)
{
  wizard_.Request().fixedSize = 1;
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 2 * kMegabyte;
  SysSetFileFaults(&faults);
  host_.Answer(Op::kMountWithPassword, {kDevNotRunning});
  prompts_.Answer(kIdOk);
  Open();
  const bool closed = WaitUntilClosed();
  SysSetFileFaults(nullptr);
  ASSERT_TRUE(closed);

  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, CreationFailure(kDevNotRunning, Path())->text);
  EXPECT_FALSE(FileExists(Path()));
  EXPECT_EQ(host_.Calls().size(), 1u);
}

TEST_F(ProgressPageWorkerTest, AFailedFormatIsReportedAndTheWizardCloses)
{
  host_.Answer(Op::kMountWithPassword, {kStatusSuccess});
  host_.Answer(Op::kFormatVolume, {kSysWriteFault});
  host_.Answer(Op::kDismountMountPoint, {kStatusSuccess});
  prompts_.Answer(kIdOk);
  Open();
  ASSERT_TRUE(WaitUntilClosed());

  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text,
            u"Cannot write data to " + Path() +
                u".\nPlease check that there target drive is not write protected and has "
                u"enough free space.");
  EXPECT_EQ(host_.Calls().size(), 3u);
}

TEST_F(ProgressPageWorkerTest, CancelClosesAtOnceStopsTheCreationAndShowsNothing)
{
  // Large enough to be still writing when the cancel comes.
  wizard_.Request().capacity = 1 * kGigabyte;
  wizard_.Request().fixedSize = 1;
  host_.Answer(Op::kMountWithPassword, {kSysNotFound});
  Open();
  ASSERT_TRUE(PumpUntil([&] { return Bar().RangeHigh() > 0; }));

  wizard_.PressButton(PSBTN_CANCEL);
  ASSERT_TRUE(WaitUntilClosed(std::chrono::seconds(2)));
  // The worker goes on to its mount attempt only once the creation has stopped and removed
  // its file.
  ASSERT_TRUE(WaitForReturnedCalls(1));
  EXPECT_FALSE(FileExists(Path()));
  EXPECT_TRUE(prompts_.Prompts().empty());
  ASSERT_EQ(host_.Calls().size(), 1u);
  EXPECT_EQ(host_.Calls()[0].operation, Op::kMountWithPassword);
}

TEST_F(ProgressPageNoFreeLetterTest, TheSummaryIsReachedWithAnUnformattedDisk)
{
  host_.SetStrict(true);
  Open();
  ASSERT_TRUE(WaitForSummary());
  EXPECT_TRUE(host_.Calls().empty());
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_EQ(OpenWithPassword(Path(), u"pass word"), kStatusSuccess);
}
