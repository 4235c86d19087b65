// The toolbar, rebar and status bar wrappers: buttons with texts and states, bands found by
// id, and the status bar's simple mode over its pane.
#include <windows.h>

#include <commctrl.h>

#include <array>

#include "support/ui_harness.h"
#include "ui/controls/rebar.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/tool_bar.h"
#include "ui/window.h"

namespace {

class BarsTest : public UiTest {
 protected:
  BarsTest()
  {
    EXPECT_NE(
        owner_.Create(nullptr, RECT{0, 0, 500, 300}, L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
        nullptr);
  }

  CToolBarCtrl MakeToolBar(UINT id) const
  {
    const CToolBarCtrl toolBar =
        CToolBarCtrl::Create(owner_.Handle(), id,
                             WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN |
                                 CCS_NODIVIDER | TBSTYLE_FLAT | TBSTYLE_LIST);
    const int first = toolBar.AddTexts(L"|One|Two|Three||");
    const std::array<TBBUTTON, 4> buttons = {{
        {I_IMAGENONE, 101, TBSTATE_ENABLED, BTNS_BUTTON | BTNS_AUTOSIZE, {}, 0, first},
        {0, 0, TBSTATE_ENABLED, BTNS_SEP, {}, 0, -1},
        {I_IMAGENONE, 102, TBSTATE_ENABLED, BTNS_BUTTON | BTNS_AUTOSIZE, {}, 0, first + 1},
        {I_IMAGENONE, 103, TBSTATE_ENABLED, BTNS_BUTTON | BTNS_AUTOSIZE, {}, 0, first + 2},
    }};
    EXPECT_TRUE(toolBar.AddButtons(buttons));
    toolBar.AutoSize();
    return toolBar;
  }

  CCustomWindow owner_;
};

TEST_F(BarsTest, ToolBarButtonsHaveTheirTextsStatesAndPlaces)
{
  const CToolBarCtrl toolBar = MakeToolBar(7);
  ASSERT_TRUE(toolBar.IsWindow());
  MoveWindow(toolBar.Handle(), 0, 0, 400, 30, TRUE);
  ASSERT_EQ(toolBar.ButtonCount(), 4);
  EXPECT_EQ(toolBar.CommandAt(0), 101u);
  EXPECT_TRUE(toolBar.IsSeparator(1));
  EXPECT_EQ(toolBar.CommandAt(1), 0u);
  EXPECT_EQ(toolBar.ButtonText(102), L"Two");

  EXPECT_TRUE(toolBar.IsEnabled(103));
  toolBar.Enable(103, false);
  EXPECT_FALSE(toolBar.IsEnabled(103));
  toolBar.Press(101, true);
  EXPECT_TRUE(toolBar.IsPressed(101));

  const RECT third = toolBar.ItemRect(2);
  EXPECT_GT(third.right, third.left);
  EXPECT_EQ(toolBar.HitTest({(third.left + third.right) / 2, (third.top + third.bottom) / 2}), 2);
  const RECT separator = toolBar.ItemRect(1);
  EXPECT_EQ(toolBar.HitTest({(separator.left + separator.right) / 2, third.top + 2}), -1);
  const SIZE ideal = toolBar.IdealSize();
  EXPECT_GE(ideal.cx, toolBar.ItemRect(3).right);
}

TEST_F(BarsTest, ToolBarTakesImageAndButtonSizes)
{
  const CToolBarCtrl toolBar = CToolBarCtrl::Create(
      owner_.Handle(), 8, WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN | TBSTYLE_FLAT);
  ASSERT_TRUE(toolBar.IsWindow());
  toolBar.SetBitmapSize({24, 24});
  toolBar.SetButtonSize({31, 31});
  const TBBUTTON button{0, 101, TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, -1};
  ASSERT_TRUE(toolBar.AddButtons({&button, 1}));
  const RECT rect = toolBar.ItemRect(0);
  EXPECT_EQ(rect.right - rect.left, 31);
  EXPECT_EQ(rect.bottom - rect.top, 31);
}

TEST_F(BarsTest, ReBarBandsAreFoundByTheirIds)
{
  const CReBarCtrl reBar = CReBarCtrl::Create(
      owner_.Handle(), 59392,
      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | RBS_VARHEIGHT | RBS_BANDBORDERS | CCS_NODIVIDER);
  ASSERT_TRUE(reBar.IsWindow());
  const CToolBarCtrl first = MakeToolBar(1);
  const CToolBarCtrl second = MakeToolBar(2);
  ASSERT_TRUE(reBar.AddBand({first.Handle(), 60160, false, true}));
  const int oneRow = reBar.BarHeight();
  ASSERT_TRUE(reBar.AddBand({second.Handle(), 60161, true, true}));
  EXPECT_EQ(reBar.BandCount(), 2);
  EXPECT_EQ(reBar.IndexOf(60161), 1);
  EXPECT_EQ(reBar.IndexOf(60162), -1);
  EXPECT_EQ(reBar.BandId(0), 60160u);
  EXPECT_EQ(reBar.BandChild(1), second.Handle());
  EXPECT_EQ(GetParent(second.Handle()), reBar.Handle());
  EXPECT_GT(oneRow, 0);
  EXPECT_GT(reBar.BarHeight(), oneRow);  // the second band starts a row of its own
}

TEST_F(BarsTest, StatusBarShowsPassingTextInSimpleModeOverItsPane)
{
  const CStatusBarCtrl bar = CStatusBarCtrl::Create(owner_.Handle(), 59393, L"Ready", true);
  ASSERT_TRUE(bar.IsWindow());
  EXPECT_NE(GetWindowLongW(bar.Handle(), GWL_STYLE) & SBARS_SIZEGRIP, 0);
  EXPECT_EQ(bar.PaneText(0), L"Ready");
  EXPECT_FALSE(bar.IsSimple());

  bar.SetSimple(true);
  EXPECT_TRUE(bar.SetSimpleText(L"Open a sample"));
  EXPECT_TRUE(bar.IsSimple());
  EXPECT_EQ(bar.SimpleText(), L"Open a sample");
  bar.SetSimple(false);
  EXPECT_FALSE(bar.IsSimple());
  EXPECT_EQ(bar.PaneText(0), L"Ready");

  EXPECT_TRUE(bar.SetPaneText(0, L"2 disks"));
  EXPECT_EQ(bar.PaneText(0), L"2 disks");
}

}  // namespace
