// The command bar, driven by the keys and mouse messages a user produces: mnemonics open
// their menu, the arrow keys move between menus, Escape closes, Alt and F10 enter keyboard
// mode, the system menu still opens with Alt+Space, commands reach the frame and disabled
// items stay grey. Menus are driven from inside their own loop: each time the menu loop waits
// for input (WM_ENTERIDLE), the test checks what is open and posts the next key, so no step
// depends on timing; every menu loop is ended by a bounded number of steps.
#include <windows.h>

#include <functional>
#include <vector>

#include "support/sample_frame.h"
#include "support/ui_harness.h"
#include "ui/message_loop.h"

namespace {

constexpr int kFile = 0;
constexpr int kEdit = 1;
constexpr int kView = 2;
constexpr int kHelp = 3;

// lParam bits of a key message: context code (Alt held), previous state, transition.
constexpr LPARAM kAltHeld = LPARAM{1} << 29;
constexpr LPARAM kKeyUp = (LPARAM{1} << 30) | (LPARAM{1} << 31);

class CommandBarTest : public UiTest {
 protected:
  CommandBarTest() { EXPECT_NE(frame_.Create(), nullptr); }

  CCommandBar& Bar() { return frame_.commandBar; }

  void PostKey(UINT message, WPARAM key, LPARAM flags = 0) const
  {
    PostMessageW(frame_.list, message, key, flags | 1);
  }
  // The message loop translates the key into its character (WM_SYSCHAR), as for real input.
  void PostAltLetter(wchar_t letter) const
  {
    PostKey(WM_SYSKEYDOWN, static_cast<WPARAM>(towupper(letter)), kAltHeld);
  }
  void PostAltAlone() const
  {
    PostKey(WM_SYSKEYDOWN, VK_MENU, kAltHeld);
    PostKey(WM_SYSKEYUP, VK_MENU, kKeyUp);
  }

  // Runs `steps` one per wait of the menu loop; after the last, further waits post Escape
  // until the loop ends (at most a few times). Returns when the given keys have been handled
  // and no menu is open.
  void DriveMenus(std::vector<std::function<void()>> steps)
  {
    size_t next = 0;
    int escapes = 0;
    frame_.onMenuIdle = [&] {
      if (next < steps.size()) {
        steps[next++]();
      } else if (escapes++ < 5) {
        PostKey(WM_KEYDOWN, VK_ESCAPE);
      }
    };
    PumpUntil([&] { return next == steps.size() && Bar().OpenIndex() < 0; });
    frame_.onMenuIdle = nullptr;
    EXPECT_EQ(next, steps.size()) << "the menu loop ended before every step ran";
    EXPECT_LE(escapes, 5) << "the menu loop did not end";
  }

  // The button index of the popup that opened last.
  int LastPopup() const
  {
    if (frame_.popupsOpened.empty()) return -1;
    for (int index = 0; index < 4; ++index) {
      if (GetSubMenu(frame_.commandBar.Menu(), index) == frame_.popupsOpened.back()) return index;
    }
    return -1;
  }

  CMessageLoop loop_;
  CSampleFrame frame_;
};

TEST_F(CommandBarTest, ShowsOneButtonPerPopupWithItsText)
{
  ASSERT_EQ(Bar().ButtonCount(), 4);
  const CToolBarCtrl bar(Bar().Handle());
  EXPECT_EQ(bar.ButtonText(kFile), L"&File");
  EXPECT_EQ(bar.ButtonText(kHelp), L"&Help");
  EXPECT_FALSE(Bar().IsKeyboardMode());
  EXPECT_EQ(Bar().OpenIndex(), -1);
}

TEST_F(CommandBarTest, MnemonicOpensItsMenuAndEscapeClosesIt)
{
  PostAltLetter(L'e');
  std::vector<int> open;
  DriveMenus({[&] {
    open.push_back(Bar().OpenIndex());
    PostKey(WM_KEYDOWN, VK_ESCAPE);
  }});
  EXPECT_EQ(open, std::vector<int>{kEdit});
  EXPECT_EQ(LastPopup(), kEdit);
  EXPECT_EQ(Bar().OpenIndex(), -1);
  // Escape on the first level returns to the bar, with the menu's button hot.
  EXPECT_TRUE(Bar().IsKeyboardMode());
  EXPECT_EQ(Bar().HotIndex(), kEdit);
  PostKey(WM_KEYDOWN, VK_ESCAPE);
  PumpMessages();
  EXPECT_FALSE(Bar().IsKeyboardMode());
  EXPECT_TRUE(frame_.commands.empty());
}

TEST_F(CommandBarTest, ArrowKeysMoveBetweenMenusAndWrapAround)
{
  PostAltLetter(L'f');
  std::vector<int> open;
  const auto recordThen = [&](WPARAM key) {
    return [&, key] {
      open.push_back(Bar().OpenIndex());
      PostKey(WM_KEYDOWN, key);
    };
  };
  DriveMenus({recordThen(VK_RIGHT), recordThen(VK_LEFT), recordThen(VK_LEFT), recordThen(VK_RIGHT),
              recordThen(VK_ESCAPE)});
  EXPECT_EQ(open, (std::vector<int>{kFile, kEdit, kFile, kHelp, kFile}));
  EXPECT_TRUE(frame_.commands.empty());
}

TEST_F(CommandBarTest, AltLetterInAnOpenMenuOpensThatMnemonicsMenu)
{
  PostAltLetter(L'f');
  std::vector<int> open;
  DriveMenus({[&] {
                open.push_back(Bar().OpenIndex());
                PostAltLetter(L'h');
              },
              [&] {
                open.push_back(Bar().OpenIndex());
                PostAltLetter(L'h');  // its own mnemonic: stays open
              },
              [&] {
                open.push_back(Bar().OpenIndex());
                PostKey(WM_KEYDOWN, VK_ESCAPE);
              }});
  EXPECT_EQ(open, (std::vector<int>{kFile, kHelp, kHelp}));
  EXPECT_TRUE(frame_.commands.empty());
}

TEST_F(CommandBarTest, RightOpensASubmenuBeforeItMovesToTheNextMenu)
{
  PostAltLetter(L'v');  // the first item of View is the Columns submenu
  std::vector<int> open;
  const HMENU columns = GetSubMenu(GetSubMenu(Bar().Menu(), kView), 0);
  bool columnsOpened = false;
  DriveMenus({[&] {
                open.push_back(Bar().OpenIndex());
                PostKey(WM_KEYDOWN, VK_RIGHT);
              },
              [&] {
                open.push_back(Bar().OpenIndex());
                columnsOpened = frame_.popupsOpened.back() == columns;
                PostKey(WM_KEYDOWN, VK_RIGHT);  // on "First", which has no submenu
              },
              [&] {
                open.push_back(Bar().OpenIndex());
                PostKey(WM_KEYDOWN, VK_ESCAPE);
              }});
  EXPECT_EQ(open, (std::vector<int>{kView, kView, kHelp}));
  EXPECT_TRUE(columnsOpened);
}

TEST_F(CommandBarTest, ChosenCommandReachesTheFrame)
{
  PostAltLetter(L'f');
  DriveMenus({[&] { PostKey(WM_KEYDOWN, VK_DOWN); },  // from "New Sample" to "Open Sample"
              [&] { PostKey(WM_KEYDOWN, VK_RETURN); }});
  PumpMessages();
  EXPECT_EQ(frame_.commands, std::vector<UINT>{ID_SAMPLE_OPEN});
  EXPECT_FALSE(Bar().IsKeyboardMode());

  // An item's own mnemonic chooses it too.
  PostAltLetter(L'e');
  DriveMenus({[&] { PostKey(WM_CHAR, L'p'); }});
  PumpMessages();
  EXPECT_EQ(frame_.commands, (std::vector<UINT>{ID_SAMPLE_OPEN, ID_SAMPLE_PROPERTIES}));
}

TEST_F(CommandBarTest, PopupItemsMakeRoomForTheirImages)
{
  const HMENU file = GetSubMenu(Bar().Menu(), kFile);
  RECT withImage{};
  RECT withoutImage{};
  PostAltLetter(L'f');
  DriveMenus({[&] {
    GetMenuItemRect(Bar().Handle(), file, 1, &withImage);     // Open Sample: an image
    GetMenuItemRect(Bar().Handle(), file, 4, &withoutImage);  // Exit: none
    PostKey(WM_KEYDOWN, VK_ESCAPE);
  }});
  EXPECT_GE(withImage.bottom - withImage.top, 24);
  EXPECT_GT(withoutImage.bottom - withoutImage.top, 0);
  EXPECT_LT(withoutImage.bottom - withoutImage.top, withImage.bottom - withImage.top);
}

TEST_F(CommandBarTest, DisabledItemIsGreyAndGivesNoCommand)
{
  frame_.UpdateUi().SetEnabled(ID_SAMPLE_CLOSE, false);
  UINT closeState = 0;
  UINT openState = 0;
  PostAltLetter(L'f');
  DriveMenus({[&] {
    // The update map reached the popup as it opened.
    closeState = GetMenuState(Bar().Menu(), ID_SAMPLE_CLOSE, MF_BYCOMMAND);
    openState = GetMenuState(Bar().Menu(), ID_SAMPLE_OPEN, MF_BYCOMMAND);
    PostKey(WM_CHAR, L'c');
  }});
  PumpMessages();
  EXPECT_NE(closeState & MF_GRAYED, 0u);
  EXPECT_EQ(openState & MF_GRAYED, 0u);
  EXPECT_TRUE(frame_.commands.empty());
}

TEST_F(CommandBarTest, AltAloneEntersKeyboardModeWhereArrowsMoveAndEscapeLeaves)
{
  PostAltAlone();
  PumpMessages();
  ASSERT_TRUE(Bar().IsKeyboardMode());
  EXPECT_EQ(Bar().HotIndex(), kFile);
  PostKey(WM_KEYDOWN, VK_RIGHT);
  PumpMessages();
  EXPECT_EQ(Bar().HotIndex(), kEdit);
  PostKey(WM_KEYDOWN, VK_LEFT);
  PostKey(WM_KEYDOWN, VK_LEFT);
  PumpMessages();
  EXPECT_EQ(Bar().HotIndex(), kHelp);
  PostKey(WM_KEYDOWN, VK_ESCAPE);
  PumpMessages();
  EXPECT_FALSE(Bar().IsKeyboardMode());
  EXPECT_EQ(Bar().HotIndex(), -1);

  // Alt again leaves keyboard mode as well.
  PostAltAlone();
  PumpMessages();
  EXPECT_TRUE(Bar().IsKeyboardMode());
  PostAltAlone();
  PumpMessages();
  EXPECT_FALSE(Bar().IsKeyboardMode());
  EXPECT_EQ(frame_.systemMenusOpened, 0);
}

TEST_F(CommandBarTest, KeyboardModeEndsWhenAnotherWindowIsActivated)
{
  PostAltAlone();
  PumpMessages();
  ASSERT_TRUE(Bar().IsKeyboardMode());
  CCustomWindow other;
  ASSERT_NE(other.Create(nullptr, RECT{0, 0, 100, 100}, L"other", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
            nullptr);
  SetActiveWindow(other.Handle());
  PostMessageW(other.Handle(), WM_NULL, 0, 0);
  PumpMessages();
  EXPECT_FALSE(Bar().IsKeyboardMode());
  EXPECT_EQ(Bar().HotIndex(), -1);
}

TEST_F(CommandBarTest, KeysWaitWhileTheFrameIsDisabledByAModalWindow)
{
  EnableWindow(frame_.Handle(), FALSE);
  PostAltLetter(L'f');
  PostAltAlone();
  PumpMessages();
  EnableWindow(frame_.Handle(), TRUE);
  EXPECT_TRUE(frame_.popupsOpened.empty());
  EXPECT_FALSE(Bar().IsKeyboardMode());
}

TEST_F(CommandBarTest, F10EntersKeyboardModeWhereDownAndMnemonicsOpenMenus)
{
  PostKey(WM_SYSKEYDOWN, VK_F10);
  PostKey(WM_SYSKEYUP, VK_F10, kKeyUp);
  PumpMessages();
  ASSERT_TRUE(Bar().IsKeyboardMode());
  PostKey(WM_KEYDOWN, VK_RIGHT);
  PostKey(WM_KEYDOWN, VK_DOWN);
  std::vector<int> open;
  DriveMenus({[&] {
    open.push_back(Bar().OpenIndex());
    PostKey(WM_KEYDOWN, VK_ESCAPE);
  }});
  EXPECT_EQ(open, std::vector<int>{kEdit});
  ASSERT_TRUE(Bar().IsKeyboardMode());

  // In keyboard mode a plain letter is a mnemonic.
  PostKey(WM_KEYDOWN, 'H');
  DriveMenus({[&] {
    open.push_back(Bar().OpenIndex());
    PostKey(WM_KEYDOWN, VK_ESCAPE);
  }});
  EXPECT_EQ(open, (std::vector<int>{kEdit, kHelp}));
  PostKey(WM_SYSKEYDOWN, VK_F10);
  PumpMessages();
  EXPECT_FALSE(Bar().IsKeyboardMode());
}

// The mouse: a click opens a popup, moving over another button opens that one instead, and a
// click on the open popup's own button closes it without opening it again.
TEST_F(CommandBarTest, MouseOverAnotherButtonOpensItsMenuAndAClickOnTheOpenOneClosesIt)
{
  const auto centre = [&](int index) {
    const RECT rect = CToolBarCtrl(Bar().Handle()).ItemRect(index);
    return POINT{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
  };
  const auto moveTo = [&](int index, UINT message) {
    POINT point = centre(index);
    const LPARAM clientPoint = MAKELPARAM(point.x, point.y);
    ClientToScreen(Bar().Handle(), &point);
    SetCursorPos(point.x, point.y);
    PostMessageW(Bar().Handle(), message, message == WM_LBUTTONDOWN ? MK_LBUTTON : 0, clientPoint);
  };
  std::vector<int> open;
  moveTo(kFile, WM_LBUTTONDOWN);
  DriveMenus({[&] {
                open.push_back(Bar().OpenIndex());
                moveTo(kView, WM_MOUSEMOVE);
              },
              [&] {
                open.push_back(Bar().OpenIndex());
                moveTo(kView, WM_LBUTTONDOWN);
              }});
  PumpMessages();
  EXPECT_EQ(open, (std::vector<int>{kFile, kView}));
  EXPECT_EQ(Bar().OpenIndex(), -1);
  EXPECT_FALSE(Bar().IsKeyboardMode());
  EXPECT_TRUE(frame_.commands.empty());
  // The closing click did not open the popup again.
  EXPECT_EQ(frame_.popupsOpened.size(), 2u);
}

TEST_F(CommandBarTest, AltSpaceStillOpensTheSystemMenu)
{
  PostKey(WM_SYSKEYDOWN, VK_SPACE, kAltHeld);
  int barOpenedAMenu = 0;
  int escapes = 0;
  frame_.onMenuIdle = [&] {
    if (Bar().OpenIndex() >= 0) ++barOpenedAMenu;
    if (escapes++ < 5) PostKey(WM_KEYDOWN, VK_ESCAPE);
  };
  PumpUntil([&] { return frame_.systemMenusOpened > 0 && escapes > 0; });
  PumpMessages();

  frame_.onMenuIdle = nullptr;
  EXPECT_EQ(frame_.systemMenusOpened, 1);
  EXPECT_EQ(barOpenedAMenu, 0);
  EXPECT_TRUE(frame_.popupsOpened.empty());
  EXPECT_LE(escapes, 5);
}

}  // namespace
