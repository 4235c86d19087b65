// The progress bar wrapper on a real progress bar: a 32-bit range, position and steps read
// back with the control's own messages, and a marquee that really moves.
#include <windows.h>

#include <commctrl.h>

#include <chrono>

#include "support/control_host.h"
#include "support/ui_harness.h"
#include "tools/screenshot/capture.h"
#include "ui/controls/progress_bar.h"

namespace {

class ProgressBarTest : public UiTest {
 protected:
  CProgressBarCtrl CreateBar(DWORD style = 0)
  {
    return CProgressBarCtrl(host_.Create(PROGRESS_CLASSW, style, RECT{10, 10, 310, 30}));
  }

  // The bar as it is drawn after `milliseconds` of message pumping.
  static RgbImage DrawnAfter(const CProgressBarCtrl& bar, int milliseconds)
  {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    PumpUntil([&] { return std::chrono::steady_clock::now() >= until; });
    RgbImage image;
    EXPECT_TRUE(CaptureWindow(bar.Handle(), image));
    return image;
  }

  CControlHost host_;
};

TEST_F(ProgressBarTest, RangeHoldsThirtyTwoBitBounds)
{
  const CProgressBarCtrl bar = CreateBar();
  bar.SetRange(0, 100000);
  PBRANGE range{};
  bar.Send(PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
  EXPECT_EQ(range.iLow, 0);
  EXPECT_EQ(range.iHigh, 100000);
  bar.Send(PBM_SETRANGE32, 5, 70000);
  EXPECT_EQ(bar.RangeLow(), 5);
  EXPECT_EQ(bar.RangeHigh(), 70000);
}

TEST_F(ProgressBarTest, PositionIsSetReadAndKeptInsideTheRange)
{
  const CProgressBarCtrl bar = CreateBar();
  bar.SetRange(0, 65535);
  EXPECT_EQ(bar.SetPosition(40000), 0);
  EXPECT_EQ(bar.Send(PBM_GETPOS), 40000);
  EXPECT_EQ(bar.SetPosition(100), 40000);
  bar.Send(PBM_SETPOS, 250);
  EXPECT_EQ(bar.Position(), 250);
  bar.SetPosition(70000);
  EXPECT_EQ(bar.Position(), 65535);
}

TEST_F(ProgressBarTest, StepItAdvancesByTheStep)
{
  const CProgressBarCtrl bar = CreateBar();
  bar.SetRange(0, 100);
  bar.SetStep(30);
  EXPECT_EQ(bar.StepIt(), 0);
  EXPECT_EQ(bar.StepIt(), 30);
  EXPECT_EQ(bar.Send(PBM_GETPOS), 60);
  EXPECT_EQ(bar.Send(PBM_GETSTEP), 30);
}

TEST_F(ProgressBarTest, MarqueeAddsTheStyleAndMovesTheBarUntilItIsSwitchedOff)
{
  const CProgressBarCtrl bar = CreateBar();
  bar.SetRange(0, 100);
  ASSERT_FALSE(bar.IsMarquee());
  const RgbImage still = DrawnAfter(bar, 0);
  EXPECT_EQ(DrawnAfter(bar, 150).pixels, still.pixels);  // a plain bar does not move

  bar.SetMarquee(true, 20);
  EXPECT_NE(GetWindowLongW(bar.Handle(), GWL_STYLE) & PBS_MARQUEE, 0);
  EXPECT_TRUE(bar.IsMarquee());
  const RgbImage first = DrawnAfter(bar, 100);
  const RgbImage later = DrawnAfter(bar, 150);
  EXPECT_NE(first.pixels, later.pixels);

  bar.SetMarquee(false);
  EXPECT_EQ(GetWindowLongW(bar.Handle(), GWL_STYLE) & PBS_MARQUEE, 0);
  const RgbImage stopped = DrawnAfter(bar, 50);
  EXPECT_EQ(DrawnAfter(bar, 150).pixels, stopped.pixels);
}

}  // namespace
