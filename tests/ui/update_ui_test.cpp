// The user-interface update map: recorded states reach menus (submenus included) and
// toolbars, recorded texts the status bar's panes; what was never recorded is left alone.
#include <windows.h>

#include <commctrl.h>

#include "support/test_resources.h"
#include "support/ui_harness.h"
#include "ui/controls/status_bar.h"
#include "ui/handles.h"
#include "ui/update_ui.h"
#include "ui/window.h"

namespace {

class UpdateUiTest : public UiTest {
 protected:
  CMenu menu_{LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDM_TEST))};

  UINT MenuState(UINT id) const { return GetMenuState(menu_.Get(), id, MF_BYCOMMAND); }
};

HWND MakeToolBar(HWND parent)
{
  const HWND toolBar =
      CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", WS_CHILD | TBSTYLE_FLAT | TBSTYLE_LIST, 0, 0, 300,
                      30, parent, nullptr, ResourceModule(), nullptr);
  SendMessageW(toolBar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  TBBUTTON buttons[3] = {};
  const int ids[3] = {ID_CMD_OPEN, ID_CMD_CLOSE, ID_CMD_COLUMN};
  for (int i = 0; i < 3; ++i) {
    buttons[i].iBitmap = I_IMAGENONE;
    buttons[i].idCommand = ids[i];
    buttons[i].fsState = TBSTATE_ENABLED;
    buttons[i].fsStyle = static_cast<BYTE>(i == 2 ? BTNS_CHECK : BTNS_BUTTON);
  }
  SendMessageW(toolBar, TB_ADDBUTTONSW, 3, reinterpret_cast<LPARAM>(buttons));
  return toolBar;
}

TEST_F(UpdateUiTest, StatesReachMenuItemsInSubmenus)
{
  ASSERT_TRUE(menu_);
  CUpdateUi update;
  update.AddMenu(menu_.Get());
  update.SetEnabled(ID_CMD_CLOSE, false);
  update.SetChecked(ID_CMD_COLUMN, true);  // inside View > Columns
  update.Apply();
  EXPECT_NE(MenuState(ID_CMD_CLOSE) & MF_GRAYED, 0u);
  EXPECT_NE(MenuState(ID_CMD_COLUMN) & MF_CHECKED, 0u);
  EXPECT_EQ(MenuState(ID_CMD_OPEN) & (MF_GRAYED | MF_CHECKED), 0u);

  update.SetEnabled(ID_CMD_CLOSE, true);
  update.SetChecked(ID_CMD_COLUMN, false);
  update.Apply();
  EXPECT_EQ(MenuState(ID_CMD_CLOSE) & MF_GRAYED, 0u);
  EXPECT_EQ(MenuState(ID_CMD_COLUMN) & MF_CHECKED, 0u);
}

TEST_F(UpdateUiTest, UnrecordedStatesAreLeftAsTheMenuHasThem)
{
  EnableMenuItem(menu_.Get(), ID_CMD_OPEN, MF_BYCOMMAND | MF_GRAYED);
  CUpdateUi update;
  update.AddMenu(menu_.Get());
  update.SetChecked(ID_CMD_OPEN, true);  // only the check is recorded
  update.Apply();
  EXPECT_NE(MenuState(ID_CMD_OPEN) & MF_GRAYED, 0u);
  EXPECT_NE(MenuState(ID_CMD_OPEN) & MF_CHECKED, 0u);
  EXPECT_TRUE(update.IsEnabled(ID_CMD_OPEN));
  EXPECT_TRUE(update.IsChecked(ID_CMD_OPEN));
  EXPECT_FALSE(update.IsChecked(ID_CMD_CLOSE));
}

TEST_F(UpdateUiTest, StatesReachToolBarButtonsAndContextMenus)
{
  CCustomWindow owner;
  ASSERT_NE(owner.Create(nullptr, RECT{0, 0, 400, 200}, L"owner", WS_OVERLAPPEDWINDOW), nullptr);
  const HWND toolBar = MakeToolBar(owner.Handle());
  CMenu context(CreatePopupMenu());
  AppendMenuW(context.Get(), MF_STRING, ID_CMD_CLOSE, L"Close");

  CUpdateUi update;
  update.AddToolBar(toolBar);
  update.SetEnabled(ID_CMD_CLOSE, false);
  update.SetChecked(ID_CMD_COLUMN, true);
  update.SetEnabled(ID_CMD_REFRESH, false);  // not on the toolbar: skipped
  update.Apply();
  EXPECT_EQ(SendMessageW(toolBar, TB_ISBUTTONENABLED, ID_CMD_CLOSE, 0), 0);
  EXPECT_NE(SendMessageW(toolBar, TB_ISBUTTONENABLED, ID_CMD_OPEN, 0), 0);
  EXPECT_NE(SendMessageW(toolBar, TB_ISBUTTONCHECKED, ID_CMD_COLUMN, 0), 0);

  update.ApplyToMenu(context.Get());
  EXPECT_NE(GetMenuState(context.Get(), ID_CMD_CLOSE, MF_BYCOMMAND) & MF_GRAYED, 0u);
}

TEST_F(UpdateUiTest, PaneTextsReachTheStatusBarWhenTheyDiffer)
{
  CCustomWindow owner;
  ASSERT_NE(owner.Create(nullptr, RECT{0, 0, 400, 200}, L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
            nullptr);
  const CStatusBarCtrl bar = CStatusBarCtrl::Create(owner.Handle(), 1, L"Ready", false);
  CUpdateUi update;
  update.AddStatusBar(bar.Handle());
  update.Apply();
  EXPECT_EQ(bar.PaneText(0), L"Ready");  // no text recorded: left alone

  update.SetPaneText(0, L"2 disks");
  update.Apply();
  EXPECT_EQ(bar.PaneText(0), L"2 disks");

  // An unchanged text is not set again (the bar would repaint at every idle moment).
  int textsSet = 0;
  const SUBCLASSPROC countTexts = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR count) {
    if (message == SB_SETTEXTW) ++*reinterpret_cast<int*>(count);
    return DefSubclassProc(window, message, wParam, lParam);
  };
  ASSERT_TRUE(
      SetWindowSubclass(bar.Handle(), countTexts, 1, reinterpret_cast<DWORD_PTR>(&textsSet)));
  update.Apply();
  EXPECT_EQ(textsSet, 0);
  update.SetPaneText(0, L"3 disks");
  update.Apply();
  EXPECT_EQ(textsSet, 1);
  EXPECT_EQ(bar.PaneText(0), L"3 disks");
  RemoveWindowSubclass(bar.Handle(), countTexts, 1);
}

}  // namespace
