// The trackbar wrapper on a real trackbar: range, position, page size, tic marks and the
// buddy label, read back with the control's own messages.
#include <windows.h>

#include <commctrl.h>

#include "support/control_host.h"
#include "support/ui_harness.h"
#include "ui/controls/trackbar.h"

namespace {

class TrackBarTest : public UiTest {
 protected:
  CTrackBarCtrl CreateTrackBar(DWORD style = TBS_HORZ | TBS_AUTOTICKS)
  {
    return CTrackBarCtrl(host_.Create(TRACKBAR_CLASSW, style, RECT{10, 10, 210, 40}));
  }

  CControlHost host_;
};

TEST_F(TrackBarTest, RangeIsSetAndReadBack)
{
  const CTrackBarCtrl trackBar = CreateTrackBar();
  trackBar.SetRange(0, 31);
  EXPECT_EQ(trackBar.Send(TBM_GETRANGEMIN), 0);
  EXPECT_EQ(trackBar.Send(TBM_GETRANGEMAX), 31);
  trackBar.Send(TBM_SETRANGE, TRUE, MAKELPARAM(2, 40));
  EXPECT_EQ(trackBar.RangeMin(), 2);
  EXPECT_EQ(trackBar.RangeMax(), 40);
}

TEST_F(TrackBarTest, PositionIsSetReadAndKeptInsideTheRange)
{
  const CTrackBarCtrl trackBar = CreateTrackBar();
  trackBar.SetRange(0, 8);
  trackBar.SetPosition(5);
  EXPECT_EQ(trackBar.Send(TBM_GETPOS), 5);
  trackBar.Send(TBM_SETPOS, TRUE, 3);
  EXPECT_EQ(trackBar.Position(), 3);
  trackBar.SetPosition(40);
  EXPECT_EQ(trackBar.Position(), 8);
  // A narrower range pulls the position inside it.
  trackBar.SetRange(0, 2);
  EXPECT_EQ(trackBar.Position(), 2);
}

TEST_F(TrackBarTest, PageSizeIsSetAndReadBack)
{
  const CTrackBarCtrl trackBar = CreateTrackBar();
  trackBar.SetPageSize(4);
  EXPECT_EQ(trackBar.Send(TBM_GETPAGESIZE), 4);
  trackBar.Send(TBM_SETPAGESIZE, 0, 6);
  EXPECT_EQ(trackBar.PageSize(), 6);
}

TEST_F(TrackBarTest, TicFrequencyPlacesTheTicMarks)
{
  const CTrackBarCtrl trackBar = CreateTrackBar();
  trackBar.SetRange(0, 40);
  trackBar.SetTicFrequency(8);
  // Tics at 8, 16, 24 and 32, and the two ends.
  EXPECT_EQ(trackBar.Send(TBM_GETNUMTICS), 6);
  EXPECT_EQ(trackBar.TicCount(), 6);
  trackBar.SetTicFrequency(20);
  EXPECT_EQ(trackBar.TicCount(), 3);
}

TEST_F(TrackBarTest, BuddyIsPlacedAtTheChosenEnd)
{
  const CTrackBarCtrl trackBar = CreateTrackBar();
  const HWND label = host_.Create(L"STATIC", SS_LEFT, RECT{0, 100, 60, 120}, 101);
  trackBar.SetBuddy(label);
  EXPECT_EQ(reinterpret_cast<HWND>(trackBar.Send(TBM_GETBUDDY, FALSE)), label);
  EXPECT_EQ(trackBar.Buddy(), label);
  EXPECT_EQ(trackBar.Buddy(true), nullptr);

  RECT bar{};
  RECT buddy{};
  GetWindowRect(trackBar.Handle(), &bar);
  GetWindowRect(label, &buddy);
  EXPECT_GE(buddy.left, bar.right);  // moved to the right-hand end
}

}  // namespace
