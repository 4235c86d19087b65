// The frame base: the rebar, the client view and the status bar share the client area; menu
// prompts and tool tips come from the commands' strings; the update map reaches the popups
// when they open and the bars at idle time.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "support/sample_frame.h"
#include "support/ui_harness.h"
#include "ui/message_loop.h"

namespace {

class FrameWindowTest : public UiTest {
 protected:
  FrameWindowTest() { EXPECT_NE(frame_.Create(), nullptr); }

  // A child's rectangle in the frame's client coordinates.
  RECT InClient(HWND child) const
  {
    RECT rect{};
    GetWindowRect(child, &rect);
    MapWindowPoints(nullptr, frame_.Handle(), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
  }

  void ExpectLayout()
  {
    RECT client{};
    GetClientRect(frame_.Handle(), &client);
    const RECT reBar = InClient(frame_.ReBar().Handle());
    const RECT view = InClient(frame_.list);
    const RECT status = InClient(frame_.StatusBar().Handle());
    EXPECT_EQ(reBar.top, 0);
    EXPECT_GT(reBar.bottom, reBar.top);
    EXPECT_EQ(view.top, reBar.bottom);
    EXPECT_EQ(view.bottom, status.top);
    EXPECT_EQ(status.bottom, client.bottom);
    EXPECT_EQ(view.left, 0);
    EXPECT_EQ(view.right, client.right);
    EXPECT_EQ(reBar.right - reBar.left, client.right);
  }

  std::wstring ToolTipOf(UINT command, HWND to)
  {
    NMTTDISPINFOW info{};
    info.hdr.hwndFrom =
        reinterpret_cast<HWND>(SendMessageW(frame_.toolBar.Handle(), TB_GETTOOLTIPS, 0, 0));
    info.hdr.idFrom = command;
    info.hdr.code = TTN_GETDISPINFOW;
    wchar_t unchanged[] = L"unchanged";
    info.lpszText = unchanged;
    SendMessageW(to, WM_NOTIFY, command, reinterpret_cast<LPARAM>(&info));
    return info.lpszText != nullptr ? info.lpszText : L"";
  }

  CMessageLoop loop_;
  CSampleFrame frame_;
};

TEST_F(FrameWindowTest, BarsAndViewShareTheClientArea)
{
  ExpectLayout();
  SetWindowPos(frame_.Handle(), nullptr, 0, 0, 700, 500, SWP_NOMOVE | SWP_NOZORDER);
  ExpectLayout();
  SetWindowPos(frame_.Handle(), nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
  ExpectLayout();
}

TEST_F(FrameWindowTest, TheViewsPlaceIsThePartBetweenTheBars)
{
  const RECT place = frame_.ClientViewRect();
  const RECT view = InClient(frame_.list);
  EXPECT_TRUE(EqualRect(&place, &view));
  EXPECT_EQ(place.top, InClient(frame_.ReBar().Handle()).bottom);
  EXPECT_EQ(place.bottom, InClient(frame_.StatusBar().Handle()).top);
}

// A layout with the client size unchanged leaves the bars alone: telling them the same size
// again would only lay them out and repaint them for nothing.
TEST_F(FrameWindowTest, TheBarsAreToldTheClientSizeOnlyWhenItChanges)
{
  // Counts the frame's client size told to a bar, not the bar's own size that it is told
  // when it then moves itself.
  const SUBCLASSPROC countSizes = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR count) {
    RECT client{};
    GetClientRect(GetParent(window), &client);
    if (message == WM_SIZE && lParam == MAKELPARAM(client.right, client.bottom)) {
      ++*reinterpret_cast<int*>(count);
    }
    return DefSubclassProc(window, message, wParam, lParam);
  };
  int reBarSizes = 0;
  int statusBarSizes = 0;
  const HWND reBar = frame_.ReBar().Handle();
  const HWND statusBar = frame_.StatusBar().Handle();
  ASSERT_TRUE(SetWindowSubclass(reBar, countSizes, 1, reinterpret_cast<DWORD_PTR>(&reBarSizes)));
  ASSERT_TRUE(
      SetWindowSubclass(statusBar, countSizes, 1, reinterpret_cast<DWORD_PTR>(&statusBarSizes)));

  frame_.UpdateLayout();
  SendMessageW(frame_.Handle(), WM_SIZE, SIZE_RESTORED, 0);  // same size, told again
  EXPECT_EQ(reBarSizes, 0);
  EXPECT_EQ(statusBarSizes, 0);
  ExpectLayout();

  SetWindowPos(frame_.Handle(), nullptr, 0, 0, 640, 420, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(reBarSizes, 1);
  EXPECT_EQ(statusBarSizes, 1);
  ExpectLayout();

  RemoveWindowSubclass(reBar, countSizes, 1);
  RemoveWindowSubclass(statusBar, countSizes, 1);
}

TEST_F(FrameWindowTest, BandsCarryTheCommandBarThenTheToolBar)
{
  EXPECT_EQ(GetDlgCtrlID(frame_.ReBar().Handle()), IDW_SAMPLE_REBAR);
  EXPECT_EQ(GetDlgCtrlID(frame_.StatusBar().Handle()), IDW_SAMPLE_STATUS_BAR);
  EXPECT_NE(GetWindowLongW(frame_.StatusBar().Handle(), GWL_STYLE) & SBARS_SIZEGRIP, 0);
  ASSERT_EQ(frame_.ReBar().BandCount(), 2);
  EXPECT_EQ(frame_.ReBar().BandId(0), static_cast<UINT>(IDW_SAMPLE_FIRST_BAND));
  EXPECT_EQ(frame_.ReBar().BandId(1), static_cast<UINT>(IDW_SAMPLE_FIRST_BAND + 1));
  EXPECT_EQ(frame_.ReBar().BandChild(0), frame_.commandBar.Handle());
  EXPECT_EQ(frame_.ReBar().BandChild(1), frame_.toolBar.Handle());
  EXPECT_EQ(frame_.StatusBar().PaneText(0), L"Ready");
}

TEST_F(FrameWindowTest, MenuPromptsShowWhileAMenuIsOpenThenTheIdleTextReturns)
{
  const HMENU file = GetSubMenu(frame_.commandBar.Menu(), 0);
  SendMessageW(frame_.Handle(), WM_MENUSELECT, MAKEWPARAM(ID_SAMPLE_OPEN, MF_STRING),
               reinterpret_cast<LPARAM>(file));
  EXPECT_TRUE(frame_.StatusBar().IsSimple());
  EXPECT_EQ(frame_.StatusBar().SimpleText(), L"Open a sample");
  SendMessageW(frame_.Handle(), WM_MENUSELECT, MAKEWPARAM(ID_SAMPLE_CLOSE, MF_STRING),
               reinterpret_cast<LPARAM>(file));
  EXPECT_EQ(frame_.StatusBar().SimpleText(), L"Close the sample");  // no "\n" in its string
  SendMessageW(frame_.Handle(), WM_MENUSELECT, MAKEWPARAM(2, MF_POPUP),
               reinterpret_cast<LPARAM>(frame_.commandBar.Menu()));
  EXPECT_EQ(frame_.StatusBar().SimpleText(), L"");
  SendMessageW(frame_.Handle(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
  EXPECT_FALSE(frame_.StatusBar().IsSimple());
  EXPECT_EQ(frame_.StatusBar().PaneText(0), L"Ready");
}

TEST_F(FrameWindowTest, TheCommandBarsMenusShowTheirPrompts)
{
  std::wstring prompt;
  frame_.onMenuIdle = [&] {
    prompt = frame_.StatusBar().SimpleText();
    PostMessageW(frame_.list, WM_KEYDOWN, VK_ESCAPE, 1);
  };
  PostMessageW(frame_.list, WM_SYSKEYDOWN, 'F', (LPARAM{1} << 29) | 1);
  PumpUntil([&] { return !prompt.empty() && frame_.commandBar.OpenIndex() < 0; });
  frame_.onMenuIdle = nullptr;
  EXPECT_EQ(prompt, L"Create a new sample");  // the first item is selected
  EXPECT_FALSE(frame_.StatusBar().IsSimple());
  EXPECT_EQ(frame_.StatusBar().PaneText(0), L"Ready");
}

TEST_F(FrameWindowTest, ToolTipsAreTheTextAfterTheNewline)
{
  EXPECT_EQ(ToolTipOf(ID_SAMPLE_OPEN, frame_.Handle()), L"Open sample");
  EXPECT_EQ(ToolTipOf(ID_SAMPLE_CLOSE, frame_.Handle()), L"unchanged");  // no "\n": no tip
  // A toolbar in a band asks its notification window, the frame.
  EXPECT_EQ(ToolTipOf(ID_SAMPLE_NEW, frame_.toolBar.Handle()), L"New sample");
  EXPECT_EQ(CFrameWindow::CommandPrompt(ID_SAMPLE_NEW), L"Create a new sample");
  EXPECT_EQ(CFrameWindow::CommandToolTip(ID_SAMPLE_CLOSE), L"");
  EXPECT_EQ(CFrameWindow::CommandPrompt(1), L"");
}

TEST_F(FrameWindowTest, TheUpdateMapReachesPopupsAsTheyOpenAndTheBarsAtIdleTime)
{
  frame_.UpdateUi().SetEnabled(ID_SAMPLE_CLOSE, false);
  frame_.UpdateUi().SetPaneText(0, L"3 disks");
  const HMENU file = GetSubMenu(frame_.commandBar.Menu(), 0);
  SendMessageW(frame_.Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file), 0);
  EXPECT_NE(GetMenuState(file, ID_SAMPLE_CLOSE, MF_BYCOMMAND) & MF_GRAYED, 0u);
  EXPECT_TRUE(frame_.toolBar.IsEnabled(ID_SAMPLE_CLOSE));
  EXPECT_EQ(frame_.StatusBar().PaneText(0), L"Ready");

  loop_.RunIdleHandlers();
  EXPECT_FALSE(frame_.toolBar.IsEnabled(ID_SAMPLE_CLOSE));
  EXPECT_TRUE(frame_.toolBar.IsEnabled(ID_SAMPLE_OPEN));
  EXPECT_EQ(frame_.StatusBar().PaneText(0), L"3 disks");
}

// A frame that counts its idle calls in a counter that outlives it.
class CCountingFrame : public CSampleFrame {
 public:
  explicit CCountingFrame(int& idles) : idles_(idles) {}
  void OnIdle() override
  {
    ++idles_;
    CSampleFrame::OnIdle();
  }

 private:
  int& idles_;
};

TEST_F(FrameWindowTest, TheFrameLeavesTheMessageLoopWithItsWindowOrItsObject)
{
  int idles = 0;
  {
    CCountingFrame counting(idles);
    ASSERT_NE(counting.Create(), nullptr);
    counting.UpdateUi().SetEnabled(ID_SAMPLE_OPEN, false);
    loop_.RunIdleHandlers();
    EXPECT_EQ(idles, 1);
    EXPECT_FALSE(counting.toolBar.IsEnabled(ID_SAMPLE_OPEN));
  }  // the object goes while its window is still open
  loop_.RunIdleHandlers();
  EXPECT_EQ(idles, 1);

  CCountingFrame closed(idles);
  ASSERT_NE(closed.Create(), nullptr);
  DestroyWindow(closed.Handle());  // the window goes first
  loop_.RunIdleHandlers();
  EXPECT_EQ(idles, 1);
}

// A band narrower than its toolbar shows a chevron; pushing it drops down the hidden buttons.
class ChevronTest : public FrameWindowTest {
 protected:
  ChevronTest()
  {
    SetWindowPos(frame_.Handle(), nullptr, 0, 0, 190, 300, SWP_NOMOVE | SWP_NOZORDER);
  }

  // Pushes the chevron of band `band` and runs `atIdle` once the dropped-down menu waits.
  void PushChevron(UINT band, const std::function<void(HMENU)>& atIdle)
  {
    NMREBARCHEVRON chevron{};
    chevron.hdr.hwndFrom = frame_.ReBar().Handle();
    chevron.hdr.idFrom = IDW_SAMPLE_REBAR;
    chevron.hdr.code = RBN_CHEVRONPUSHED;
    chevron.uBand = band;
    chevron.wID = frame_.ReBar().BandId(static_cast<int>(band));
    GetClientRect(frame_.ReBar().Handle(), &chevron.rc);
    chevron.rc.left = chevron.rc.right - 12;
    int waits = 0;
    frame_.onMenuIdle = [&] {
      if (waits++ == 0) {
        atIdle(frame_.popupsOpened.back());
      } else if (waits < 6) {
        PostMessageW(frame_.list, WM_KEYDOWN, VK_ESCAPE, 1);
      }
    };
    SendMessageW(frame_.Handle(), WM_NOTIFY, IDW_SAMPLE_REBAR, reinterpret_cast<LPARAM>(&chevron));
    frame_.onMenuIdle = nullptr;
    EXPECT_GE(waits, 1) << "no menu dropped down";
    EXPECT_LT(waits, 6) << "the menu did not close";
    PumpMessages();
  }
};

TEST_F(ChevronTest, ToolBarChevronOffersTheHiddenButtons)
{
  const RECT shown = [&] {
    RECT rect{};
    GetClientRect(frame_.toolBar.Handle(), &rect);
    return rect;
  }();
  ASSERT_LT(shown.right, frame_.toolBar.ItemRect(3).right) << "Close must not fit";
  ASSERT_GE(shown.right, frame_.toolBar.ItemRect(0).right) << "New must fit";
  std::vector<UINT> offered;
  PushChevron(1, [&](HMENU menu) {
    for (int item = 0; item < GetMenuItemCount(menu); ++item) {
      offered.push_back(GetMenuItemID(menu, item));
    }
    PostMessageW(frame_.list, WM_KEYDOWN, VK_UP, 1);  // the last item: Close
    PostMessageW(frame_.list, WM_KEYDOWN, VK_RETURN, 1);
  });
  ASSERT_FALSE(offered.empty());
  EXPECT_EQ(offered.back(), static_cast<UINT>(ID_SAMPLE_CLOSE));
  EXPECT_EQ(std::count(offered.begin(), offered.end(), ID_SAMPLE_NEW), 0);
  EXPECT_EQ(frame_.commands, std::vector<UINT>{ID_SAMPLE_CLOSE});
}

TEST_F(ChevronTest, CommandBarChevronOffersTheHiddenMenusAndLeavesThemToTheBar)
{
  SetWindowPos(frame_.Handle(), nullptr, 0, 0, 130, 300, SWP_NOMOVE | SWP_NOZORDER);
  RECT shown{};
  GetClientRect(frame_.commandBar.Handle(), &shown);
  ASSERT_LT(shown.right, CToolBarCtrl(frame_.commandBar.Handle()).ItemRect(3).right)
      << "Help must not fit";
  const HMENU help = GetSubMenu(frame_.commandBar.Menu(), 3);
  bool offersHelp = false;
  PushChevron(0, [&](HMENU menu) {
    const int count = GetMenuItemCount(menu);
    offersHelp = count > 0 && GetSubMenu(menu, count - 1) == help;
    PostMessageW(frame_.list, WM_KEYDOWN, VK_ESCAPE, 1);
  });
  EXPECT_TRUE(offersHelp);
  EXPECT_TRUE(IsMenu(help));
  EXPECT_EQ(GetMenuItemCount(frame_.commandBar.Menu()), 4);
  EXPECT_EQ(GetMenuItemCount(help), 1);
}

}  // namespace
