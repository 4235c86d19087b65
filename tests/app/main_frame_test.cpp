// The main frame under Wine: its bars and view with their ids and styles, every command of
// its menu reaching its flow, dialog or view operation, the accelerators, the commands'
// states for the selection, the recent images, the registered messages, and the placement
// kept between runs.
#include "app/main_frame_win.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "app/flow_fixture.h"
#include "app/instance_names.h"
#include "res/resource.h"
#include "services/window_ref_win.h"
#include "settings/window_placement.h"
#include "support/ui_harness.h"
#include "system/wide_text_win.h"
#include "ui/strings.h"

namespace {

constexpr StatusCode kSuccess = 0;

MountedDisk SampleDisk(const char16_t* mountPoint, const char16_t* imagePath, uint32_t idWord)
{
  MountedDisk disk;
  disk.mountPoint = mountPoint;
  disk.imagePath = imagePath;
  disk.info.capacity = 1073741824;
  disk.info.diskId.data1 = idWord;
  disk.info.algorithm = 0;
  disk.info.keyLength = 32;
  return disk;
}

std::wstring ClassOf(HWND window)
{
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

DWORD StyleOf(HWND window)
{
  return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

// Every command of a menu and its submenus, in menu order.
void CollectCommands(HMENU menu, std::vector<UINT>& commands)
{
  for (int position = 0; position < GetMenuItemCount(menu); ++position) {
    if (const HMENU submenu = GetSubMenu(menu, position)) {
      CollectCommands(submenu, commands);
    } else if (const UINT id = GetMenuItemID(menu, position); id != 0 && id != ~0u) {
      commands.push_back(id);
    }
  }
}

std::wstring MenuText(HMENU menu, int position)
{
  wchar_t text[300] = {};
  GetMenuStringW(menu, static_cast<UINT>(position), text, 300, MF_BYPOSITION);
  return text;
}

// Holds modifier keys down in the thread's keyboard state while it lives.
class CHeldKeys {
 public:
  explicit CHeldKeys(std::initializer_list<int> keys)
  {
    GetKeyboardState(saved_);
    BYTE state[256];
    std::copy(std::begin(saved_), std::end(saved_), state);
    for (const int key : keys) state[key] |= 0x80;
    SetKeyboardState(state);
  }
  ~CHeldKeys() { SetKeyboardState(saved_); }
  CHeldKeys(const CHeldKeys&) = delete;
  CHeldKeys& operator=(const CHeldKeys&) = delete;

 private:
  BYTE saved_[256] = {};
};

// A frame that records the commands reaching it instead of carrying them out.
class CCommandRecordingFrame final : public CMainFrame {
 public:
  std::vector<UINT> commands;

 protected:
  bool OnCommand(UINT id, UINT, HWND) override
  {
    commands.push_back(id);
    return true;
  }
};

class MainFrameTest : public UiTest {
 protected:
  MainFrameTest()
  {
    host_.AddDisk(SampleDisk(u"W:", u"C:\\Users\\Ada\\Work.qvi", 1));
    host_.AddDisk(SampleDisk(u"P:", u"C:\\Users\\Ada\\Private.qvi", 2));
    host_.AddDisk(SampleDisk(u"Q:", u"D:\\Backup\\Archive.qvi", 3));
    host_.AddDisk(SampleDisk(u"S:", u"E:\\Travel.qvi", 4));
  }

  ~MainFrameTest() override
  {
    Close(frame_);
    Close(recordingFrame_);
  }

  // Creates `frame` as the interactive run does, and lets the view's first fill run.
  void Show(CMainFrame& frame)
  {
    ASSERT_NE(frame.Create(L"Cryptelle"), nullptr);
    frame.SetAccelerators(LoadAcceleratorsW(ResourceModule(), MAKEINTRESOURCEW(IDR_MAINFRAME)));
    ShowWindow(frame.Handle(), SW_SHOWNORMAL);
    PumpMessages();
  }
  void Show() { Show(frame_); }

  // Destroys the frame's window and takes the quit request its destruction posts.
  static void Close(CMainFrame& frame)
  {
    if (!frame.IsWindow()) return;
    DestroyWindow(frame.Handle());
    PumpMessages();
  }

  HWND List() { return frame_.View().Handle(); }
  HMENU Menu() { return frame_.CommandBar().Menu(); }
  HMENU RecentMenu() { return GetSubMenu(GetSubMenu(Menu(), 0), 9); }

  // Sends `command` to the frame as the menu does.
  void Command(UINT command) { SendMessageW(frame_.Handle(), WM_COMMAND, command, 0); }

  // Sends `command`, which opens a modal window; `script` sees that window and closes it.
  void CommandOpeningModal(UINT command, const std::function<void(HWND)>& script)
  {
    RunModal(
        [&] {
          Command(command);
          return INT_PTR{0};
        },
        script);
  }

  size_t Enumerations() const
  {
    const std::vector<DeviceHostCall> calls = host_.Calls();
    return static_cast<size_t>(std::count_if(calls.begin(), calls.end(), [](const auto& call) {
      return call.operation == DeviceHostOperation::kEnumerateDisks;
    }));
  }

  bool MenuItemGrayed(UINT command)
  {
    return (GetMenuState(Menu(), command, MF_BYCOMMAND) & MF_GRAYED) != 0;
  }
  bool MenuItemChecked(UINT command)
  {
    return (GetMenuState(Menu(), command, MF_BYCOMMAND) & MF_CHECKED) != 0;
  }

  CMemorySettings settings_;
  FakeDeviceHost host_;
  CScriptedDirectoryProbe probe_;
  CMessageLoop loop_;  // the frame's bars and filters join the thread's loop
  CMainFrame frame_;
  CCommandRecordingFrame recordingFrame_;
};

}  // namespace

TEST_F(MainFrameTest, FrameIsAnOverlappedApplicationWindowWithoutClassicMenu)
{
  Show();
  EXPECT_EQ(StyleOf(frame_.Handle()) & 0x06CF0000u, 0x06CF0000u);
  EXPECT_EQ(GetWindowLongPtrW(frame_.Handle(), GWL_EXSTYLE) & 0x00040100, 0x00040100);
  EXPECT_EQ(GetMenu(frame_.Handle()), nullptr);
  EXPECT_EQ(CWindow::WindowText(frame_.Handle()), L"Cryptelle");
}

TEST_F(MainFrameTest, RebarHoldsTheCommandBarAndTheToolbarInBandsFrom60160)
{
  Show();
  const HWND reBar = GetDlgItem(frame_.Handle(), 59392);
  ASSERT_NE(reBar, nullptr);
  EXPECT_EQ(ClassOf(reBar), L"ReBarWindow32");
  const CReBarCtrl bands(reBar);
  ASSERT_EQ(bands.BandCount(), 2);
  EXPECT_EQ(bands.BandId(0), 60160u);
  EXPECT_EQ(bands.BandId(1), 60161u);
  EXPECT_EQ(bands.BandChild(0), frame_.CommandBar().Handle());
  EXPECT_EQ(bands.BandChild(1), frame_.ToolBar().Handle());
  // Both bands show a chevron when they are too narrow.
  for (int band = 0; band < 2; ++band) {
    REBARBANDINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = RBBIM_STYLE;
    SendMessageW(reBar, RB_GETBANDINFOW, static_cast<WPARAM>(band),
                 reinterpret_cast<LPARAM>(&info));
    EXPECT_NE(info.fStyle & RBBS_USECHEVRON, 0u) << band;
  }
  // The command bar shows the five popups of menu 100, with the menu images beside their
  // commands.
  EXPECT_EQ(frame_.CommandBar().ButtonCount(), 5);
  EXPECT_EQ(frame_.CommandBar().Images().IndexOf(40001), 1);
  EXPECT_EQ(frame_.CommandBar().Images().IndexOf(40310), 9);
  EXPECT_EQ(frame_.CommandBar().Images().IndexOf(40314), -1);
}

TEST_F(MainFrameTest, ToolTipsAreTheCommandStringsAfterTheLineBreak)
{
  Show();
  NMTTDISPINFOW info{};
  info.hdr.hwndFrom = frame_.ToolBar().Handle();
  info.hdr.idFrom = 40002;
  info.hdr.code = TTN_GETDISPINFOW;
  SendMessageW(frame_.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
  ASSERT_NE(info.lpszText, nullptr);
  EXPECT_EQ(std::wstring(info.lpszText), L"Dismount virtual disk");
}

TEST_F(MainFrameTest, ToolbarHasItsEightEntriesWithTexts)
{
  Show();
  const CToolBarCtrl& toolBar = frame_.ToolBar();
  ASSERT_EQ(toolBar.ButtonCount(), 8);
  const std::vector<UINT> expected = {40000, 0, 40001, 0, 40002, 40003, 0, 40009};
  std::vector<UINT> commands;
  for (int index = 0; index < toolBar.ButtonCount(); ++index) {
    commands.push_back(toolBar.CommandAt(index));
    EXPECT_EQ(toolBar.IsSeparator(index), expected[static_cast<size_t>(index)] == 0) << index;
  }
  EXPECT_EQ(commands, expected);
  EXPECT_EQ(toolBar.ButtonText(40000), L"Create");
  EXPECT_EQ(toolBar.ButtonText(40001), L"Mount");
  EXPECT_EQ(toolBar.ButtonText(40002), L"Dismount");
  EXPECT_EQ(toolBar.ButtonText(40003), L"Dismount All");
  EXPECT_EQ(toolBar.ButtonText(40009), L"Options");
  const DWORD style = StyleOf(toolBar.Handle());
  EXPECT_NE(style & TBSTYLE_FLAT, 0u);
  EXPECT_NE(style & TBSTYLE_LIST, 0u);
  EXPECT_NE(style & TBSTYLE_TOOLTIPS, 0u);
  // The images are 24 pixels wide.
  const auto images = reinterpret_cast<HIMAGELIST>(toolBar.Send(TB_GETIMAGELIST));
  int width = 0;
  int height = 0;
  ASSERT_TRUE(ImageList_GetIconSize(images, &width, &height));
  EXPECT_EQ(width, 24);
  EXPECT_EQ(ImageList_GetImageCount(images), 5);
  EXPECT_EQ(height, 24);
}

TEST_F(MainFrameTest, StatusBarHasASizeGripAndShowsMenuPrompts)
{
  Show();
  const HWND statusBar = GetDlgItem(frame_.Handle(), 59393);
  ASSERT_NE(statusBar, nullptr);
  EXPECT_EQ(ClassOf(statusBar), L"msctls_statusbar32");
  EXPECT_NE(StyleOf(statusBar) & SBARS_SIZEGRIP, 0u);
  // The table has no idle text: the bar stays empty.
  EXPECT_EQ(frame_.StatusBar().PaneText(0), L"");
  SendMessageW(frame_.Handle(), WM_MENUSELECT, MAKEWPARAM(40001, MF_STRING),
               reinterpret_cast<LPARAM>(Menu()));
  EXPECT_EQ(frame_.StatusBar().SimpleText(), L"Mount virtual disk image");
  SendMessageW(frame_.Handle(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
  EXPECT_FALSE(frame_.StatusBar().IsSimple());
}

TEST_F(MainFrameTest, ViewIsTheClientReportListWithTheDesignedStyle)
{
  Show();
  EXPECT_EQ(frame_.ClientView(), List());
  EXPECT_EQ(GetParent(List()), frame_.Handle());
  EXPECT_EQ(StyleOf(List()), 0x56000209u);
  EXPECT_EQ(ListRowCount(List()), 4);
  EXPECT_EQ(ListCellText(List(), 0, 0), L"P:");
  // It lies between the bars.
  RECT view{};
  RECT reBar{};
  RECT statusBar{};
  GetWindowRect(List(), &view);
  GetWindowRect(frame_.ReBar().Handle(), &reBar);
  GetWindowRect(frame_.StatusBar().Handle(), &statusBar);
  EXPECT_GE(view.top, reBar.bottom);
  EXPECT_LE(view.bottom, statusBar.top);
}

TEST_F(MainFrameTest, MenuHoldsEveryDesignedCommand)
{
  Show();
  std::vector<UINT> commands;
  CollectCommands(Menu(), commands);
  const std::vector<UINT> expected = {40000, 40001, 40002, 40003, 40104, 57616, 57665, 40106,
                                      40107, 40304, 40305, 40316, 40306, 40315, 40307, 40308,
                                      59395, 40108, 40009, 40310, 40123, 40314};
  EXPECT_EQ(commands, expected);
}

TEST_F(MainFrameTest, NothingSelectedDisablesDismountBrowseAndProperties)
{
  Show();
  EXPECT_FALSE(frame_.ToolBar().IsEnabled(40002));
  EXPECT_TRUE(MenuItemGrayed(40002));
  EXPECT_TRUE(MenuItemGrayed(40107));
  EXPECT_FALSE(frame_.UpdateUi().IsEnabled(40317));
  EXPECT_TRUE(frame_.ToolBar().IsEnabled(40001));
  EXPECT_FALSE(MenuItemGrayed(40003));
}

TEST_F(MainFrameTest, ThreeSelectedRowsEnableDismountAndDisableProperties)
{
  Show();
  for (int row = 0; row < 3; ++row) SelectListRow(List(), row, true);
  EXPECT_TRUE(frame_.ToolBar().IsEnabled(40002));
  EXPECT_FALSE(MenuItemGrayed(40002));
  EXPECT_TRUE(frame_.UpdateUi().IsEnabled(40317));
  EXPECT_TRUE(MenuItemGrayed(40107));
  // One row left selected enables Properties.
  SelectListRow(List(), 1, false);
  SelectListRow(List(), 2, false);
  EXPECT_FALSE(MenuItemGrayed(40107));
}

TEST_F(MainFrameTest, ColumnCommandsAreCheckedByTheVisibleColumns)
{
  Show();
  EXPECT_TRUE(MenuItemChecked(40304));
  EXPECT_TRUE(MenuItemChecked(40305));
  EXPECT_FALSE(MenuItemChecked(40316));
  EXPECT_TRUE(MenuItemChecked(40306));
  EXPECT_FALSE(MenuItemChecked(40315));
}

TEST_F(MainFrameTest, ColumnCommandTogglesItsColumn)
{
  Show();
  Command(40316);  // Free Space: bit 2
  EXPECT_EQ(frame_.View().GetVisibleColumns(), 11u | 4u);
  EXPECT_EQ(ListColumnCount(List()), 4);
  EXPECT_TRUE(MenuItemChecked(40316));
  Command(40304);  // Mount Point: bit 0
  EXPECT_EQ(frame_.View().GetVisibleColumns(), 14u);
  EXPECT_FALSE(MenuItemChecked(40304));
  for (const UINT command : {40305u, 40316u}) Command(command);
  // Image Path is the only column left: its command is disabled.
  EXPECT_EQ(frame_.View().GetVisibleColumns(), 8u);
  EXPECT_TRUE(MenuItemGrayed(40306));
  EXPECT_FALSE(MenuItemGrayed(40305));
}

TEST_F(MainFrameTest, NewImageRunsTheWizardAndItsCancelMountsNothing)
{
  Show();
  std::wstring caption;
  CommandOpeningModal(40000, [&](HWND sheet) {
    wchar_t text[100] = {};
    GetWindowTextW(sheet, text, 100);
    caption = text;
    PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_EQ(caption, L"New Virtual Disk Image Wizard");
  for (const DeviceHostCall& call : host_.Calls()) {
    EXPECT_NE(call.operation, DeviceHostOperation::kMountWithPassword);
  }
}

TEST_F(MainFrameTest, MountOpensTheMountDialogWithoutPath)
{
  Show();
  std::wstring path = L"not read";
  CommandOpeningModal(40001, [&](HWND dialog) {
    path = ControlText(dialog, IDC_IMAGE_PATH);
    EXPECT_NE(GetDlgItem(dialog, IDC_MOUNT_POINT), nullptr);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_EQ(path, L"");
}

TEST_F(MainFrameTest, DismountDismountsTheSelectedDisks)
{
  Show();
  SelectListRow(List(), 0, true);  // P:
  SelectListRow(List(), 2, true);  // S:
  const size_t before = host_.Calls().size();
  Command(40002);
  const std::vector<std::string> calls = host_.CallTexts();
  ASSERT_GE(calls.size(), before + 2);
  EXPECT_EQ(calls[before].rfind("DismountById", 0), 0u) << calls[before];
  EXPECT_EQ(calls[before + 1].rfind("DismountById", 0), 0u) << calls[before + 1];
  // The list is filled anew.
  PumpMessages();
  EXPECT_EQ(ListRowCount(List()), 2);
}

TEST_F(MainFrameTest, DismountAllDismountsEveryDiskNotForced)
{
  Show();
  Command(40003);
  const std::vector<DeviceHostCall> calls = host_.Calls();
  const auto dismount = std::find_if(calls.begin(), calls.end(), [](const auto& call) {
    return call.operation == DeviceHostOperation::kDismountAll;
  });
  ASSERT_NE(dismount, calls.end());
  EXPECT_EQ(dismount->forced, 0u);
  PumpMessages();
  EXPECT_EQ(ListRowCount(List()), 0);
}

TEST_F(MainFrameTest, SetPasswordOpensTheChangePasswordDialog)
{
  Show();
  bool seen = false;
  CommandOpeningModal(40104, [&](HWND dialog) {
    seen = GetDlgItem(dialog, IDC_NEW_PASSWORD) != nullptr &&
           GetDlgItem(dialog, IDC_CONFIRM_PASSWORD) != nullptr;
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_TRUE(seen);
}

TEST_F(MainFrameTest, SelectAllSelectsEveryRow)
{
  Show();
  Command(40106);
  EXPECT_EQ(ListSelectedCount(List()), 4);
}

TEST_F(MainFrameTest, PropertiesShowTheSingleSelectedDisk)
{
  Show();
  SelectListRow(List(), 1, true);  // Q:
  std::wstring imagePath;
  CommandOpeningModal(40107, [&](HWND dialog) {
    imagePath = ControlText(dialog, IDC_PROPERTY_IMAGE_PATH);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_EQ(imagePath, L"D:\\Backup\\Archive.qvi");
}

TEST_F(MainFrameTest, PropertiesWithSeveralRowsSelectedDoNothing)
{
  Show();
  SelectListRow(List(), 0, true);
  SelectListRow(List(), 1, true);
  Command(40107);  // no dialog: the backstops would fail the test
  EXPECT_EQ(ListSelectedCount(List()), 2);
}

TEST_F(MainFrameTest, ClearOpensTheClearDialog)
{
  Show();
  bool seen = false;
  CommandOpeningModal(40108, [&](HWND dialog) {
    seen = GetDlgItem(dialog, IDC_WARNING_TEXT) != nullptr;
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_TRUE(seen);
}

TEST_F(MainFrameTest, OptionsOpensTheOptionsSheet)
{
  Show();
  bool seen = false;
  CommandOpeningModal(40009, [&](HWND sheet) {
    const HWND page = PropSheet_GetCurrentPageHwnd(sheet);
    seen = GetDlgItem(page, IDC_OPTION_PRIVACY) != nullptr;
    PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
  });
  EXPECT_TRUE(seen);
}

TEST_F(MainFrameTest, BrowseOpensTheSelectedDiskInTheFileManager)
{
  Show();
  SelectListRow(List(), 2, true);  // S:
  probe_.Answer(5);                // access denied: a formatted volume
  shell_.AnswerOpen(kSuccess);
  Command(40317);
  EXPECT_EQ(probe_.Paths(), std::vector<std::u16string>{u"S:\\"});
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].kind, CScriptedShell::Kind::kOpen);
  EXPECT_EQ(shell_.Calls()[0].path, u"S:");
}

TEST_F(MainFrameTest, RefreshEnumeratesTheDisksAnew)
{
  Show();
  const size_t before = Enumerations();
  host_.AddDisk(SampleDisk(u"T:", u"C:\\New.qvi", 9));
  Command(59395);
  PumpMessages();
  EXPECT_EQ(Enumerations(), before + 1);
  EXPECT_EQ(ListRowCount(List()), 5);
}

TEST_F(MainFrameTest, HelpTopicsOpenTheHelpContents)
{
  Show();
  help_.Answer(kSuccess);
  Command(40310);
  ASSERT_EQ(help_.Calls().size(), 1u);
  EXPECT_TRUE(help_.Calls()[0].contents);
  EXPECT_EQ(help_.Calls()[0].owner, ToWindowRef(frame_.Handle()));
}

TEST_F(MainFrameTest, HomePageOpensInTheBrowser)
{
  Show();
  shell_.AnswerOpen(kSuccess);
  Command(40123);
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].kind, CScriptedShell::Kind::kOpen);
  EXPECT_EQ(shell_.Calls()[0].path.rfind(u"https://", 0), 0u);
}

TEST_F(MainFrameTest, AboutShowsTheVersionAndTheCryptoLibrary)
{
  Show();
  std::wstring version;
  std::wstring library;
  CommandOpeningModal(40314, [&](HWND dialog) {
    version = ControlText(dialog, IDC_ABOUT_VERSION);
    library = ControlText(dialog, IDC_ABOUT_CRYPTO_LIBRARY);
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  });
  EXPECT_EQ(version, L"Version 1.0.0.0");
  EXPECT_EQ(library.rfind(L"Encryption by OpenSSL ", 0), 0u) << library;
}

TEST_F(MainFrameTest, ExitClosesTheFrame)
{
  Show();
  Command(57665);
  PumpMessages();
  EXPECT_FALSE(frame_.IsWindow());
}

TEST_F(MainFrameTest, RecentImagesShowNewestFirstAndTheFirstCommandMountsTheNewest)
{
  RecentImageList stored;
  stored.entries = {u"C:\\Images\\Older.qvi", u"C:\\Images\\Newest.qvi"};
  ASSERT_FALSE(IsFailure(WriteRecentList(stored, kRecentListKeyPath)));
  Show();
  ASSERT_EQ(GetMenuItemCount(RecentMenu()), 2);
  EXPECT_EQ(MenuText(RecentMenu(), 0), L"&1 C:\\Images\\Newest.qvi");
  EXPECT_EQ(MenuText(RecentMenu(), 1), L"&2 C:\\Images\\Older.qvi");
  std::wstring path;
  CommandOpeningModal(57616, [&](HWND dialog) {
    path = ControlText(dialog, IDC_IMAGE_PATH);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_EQ(path, L"C:\\Images\\Newest.qvi");
}

TEST_F(MainFrameTest, MountedImageJoinsTheRecentImagesAndTheList)
{
  Show();
  probe_.Answer(5);  // the new drive holds a file system
  shell_.AnswerLookAt(kSuccess);
  shell_.AnswerOpen(kSuccess);
  CommandOpeningModal(40001, [&](HWND dialog) {
    SetControlText(dialog, IDC_IMAGE_PATH, L"C:\\Images\\Fresh.qvi");
    SetControlText(dialog, IDC_PASSWORD, L"secret");
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  });
  ASSERT_EQ(GetMenuItemCount(RecentMenu()), 1);
  EXPECT_EQ(MenuText(RecentMenu(), 0), L"&1 C:\\Images\\Fresh.qvi");
  EXPECT_EQ(GetMenuState(RecentMenu(), 0, MF_BYPOSITION) & MF_GRAYED, 0u);
  EXPECT_EQ(frame_.RecentImages().entries, std::vector<std::u16string>{u"C:\\Images\\Fresh.qvi"});
  PumpMessages();
  EXPECT_EQ(ListRowCount(List()), 5);
}

TEST_F(MainFrameTest, EmptyRecentListShowsEmptyDisabled)
{
  Show();
  ASSERT_EQ(GetMenuItemCount(RecentMenu()), 1);
  EXPECT_EQ(MenuText(RecentMenu(), 0), L"(empty)");
  EXPECT_EQ(GetMenuItemID(RecentMenu(), 0), 57616u);
  EXPECT_NE(GetMenuState(RecentMenu(), 0, MF_BYPOSITION) & MF_GRAYED, 0u);
  Command(57616);  // nothing to mount: no dialog opens
}

TEST_F(MainFrameTest, AcceleratorsGiveTheirCommands)
{
  Show(recordingFrame_);
  const HWND list = recordingFrame_.View().Handle();
  PostMessageW(list, WM_KEYDOWN, VK_F5, 0x003F0001);
  PostMessageW(list, WM_KEYDOWN, VK_F12, 0x00580001);
  PostMessageW(list, WM_KEYDOWN, VK_F1, 0x003B0001);
  PumpMessages();
  {
    const CHeldKeys control({VK_CONTROL});
    PostMessageW(list, WM_KEYDOWN, 'N', 0x00310001);
    PostMessageW(list, WM_KEYDOWN, 'O', 0x00180001);
    PostMessageW(list, WM_KEYDOWN, 'A', 0x001E0001);
    PumpMessages();
  }
  {
    const CHeldKeys alt({VK_MENU});
    PostMessageW(list, WM_SYSKEYDOWN, VK_RETURN, 0x201C0001);
    PumpMessages();
  }
  const std::vector<UINT> expected = {59395, 40009, 40310, 40000, 40001, 40106, 40107};
  EXPECT_EQ(recordingFrame_.commands, expected);
}

TEST_F(MainFrameTest, RefreshMessageEnumeratesAnewAndAnswersZero)
{
  Show();
  const size_t before = Enumerations();
  host_.AddDisk(SampleDisk(u"T:", u"C:\\New.qvi", 9));
  EXPECT_EQ(SendMessageW(frame_.Handle(), RegisterWindowMessageW(Wide(kRefreshMessageName)), 0, 0),
            0);
  EXPECT_EQ(Enumerations(), before + 1);
  EXPECT_EQ(ListRowCount(List()), 5);
}

TEST_F(MainFrameTest, ActivateMessageAnswersItsFixedValue)
{
  Show();
  EXPECT_EQ(static_cast<uint32_t>(SendMessageW(
                frame_.Handle(), RegisterWindowMessageW(Wide(kSingleInstanceName)), 0, 0)),
            0x8CBAF11Eu);
  EXPECT_TRUE(frame_.IsWindow());
}

TEST_F(MainFrameTest, CloseMessageClosesTheFrame)
{
  Show();
  EXPECT_EQ(SendMessageW(frame_.Handle(), RegisterWindowMessageW(Wide(kCloseMessageName)), 0, 0),
            0);
  EXPECT_TRUE(frame_.IsWindow());  // the close request is posted
  PumpMessages();
  EXPECT_FALSE(frame_.IsWindow());
}

TEST_F(MainFrameTest, DestructionSavesThePlacementAndEndsTheLoop)
{
  Show();
  SetWindowPos(frame_.Handle(), nullptr, 30, 40, 500, 300, SWP_NOZORDER);
  DestroyWindow(frame_.Handle());
  MSG quit{};
  EXPECT_TRUE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  WindowPlacement stored;
  bool found = false;
  ReadWindowPos(&stored, &found);  // found only for a binary value of exactly 44 bytes
  ASSERT_TRUE(found);
  EXPECT_EQ(stored.length, 44u);
  EXPECT_EQ(stored.normalPosition.left, 30);
  EXPECT_EQ(stored.normalPosition.top, 40);
  EXPECT_EQ(stored.normalPosition.right, 530);
  EXPECT_EQ(stored.normalPosition.bottom, 340);
}

TEST_F(MainFrameTest, StoredPlacementIsRestoredNormal)
{
  WindowPlacement stored;
  stored.showCommand = SW_SHOWMAXIMIZED;
  stored.normalPosition = {20, 30, 620, 430};
  ASSERT_FALSE(IsFailure(WriteWindowPos(stored)));
  Show();
  EXPECT_FALSE(IsZoomed(frame_.Handle()));
  RECT window{};
  GetWindowRect(frame_.Handle(), &window);
  EXPECT_EQ(window.left, 20);
  EXPECT_EQ(window.top, 30);
  EXPECT_EQ(window.right, 620);
  EXPECT_EQ(window.bottom, 430);
}

TEST_F(MainFrameTest, PlacementOffThePrimaryScreenIsIgnored)
{
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const int height = GetSystemMetrics(SM_CYSCREEN);
  WindowPlacement stored;
  stored.showCommand = SW_SHOWNORMAL;
  stored.normalPosition = {width + 100, height + 100, width + 700, height + 500};
  ASSERT_FALSE(IsFailure(WriteWindowPos(stored)));
  Show();
  RECT window{};
  GetWindowRect(frame_.Handle(), &window);
  EXPECT_LT(window.left, width);
  EXPECT_LT(window.top, height);
}

namespace {

// The interactive run's frame, found by its title once it shows: F5 first, then Exit.
int ticks = 0;
HWND runFrame = nullptr;

BOOL CALLBACK TakeVisibleFrame(HWND window, LPARAM)
{
  if (IsWindowVisible(window) && CWindow::WindowText(window) == L"Cryptelle") {
    runFrame = window;
    return FALSE;
  }
  return TRUE;
}

void CALLBACK DriveRunningFrame(HWND, UINT, UINT_PTR timer, DWORD)
{
  if (runFrame == nullptr) EnumThreadWindows(GetCurrentThreadId(), TakeVisibleFrame, 0);
  if (runFrame == nullptr) return;
  const HWND list = FindWindowExW(runFrame, nullptr, L"Cryptelle.MountedDiskView", nullptr);
  if (++ticks == 1) {
    PostMessageW(list, WM_KEYDOWN, VK_F5, 0x003F0001);
  } else {
    KillTimer(nullptr, timer);
    PostMessageW(runFrame, WM_COMMAND, 57665, 0);
  }
}

}  // namespace

TEST_F(MainFrameTest, InteractiveRunShowsTheFrameUntilItIsClosed)
{
  const UINT_PTR timer = SetTimer(nullptr, 0, 50, DriveRunningFrame);
  ASSERT_NE(timer, 0u);
  EXPECT_EQ(RunMainFrame(loop_, SW_SHOWNORMAL), 0);
  ASSERT_NE(runFrame, nullptr);
  EXPECT_FALSE(IsWindow(runFrame));
  // The first fill and the F5 refresh; the placement was saved at the end.
  EXPECT_EQ(Enumerations(), 2u);
  WindowPlacement stored;
  bool found = false;
  ReadWindowPos(&stored, &found);
  EXPECT_TRUE(found);
}
