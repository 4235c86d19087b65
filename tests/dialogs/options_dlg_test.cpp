// The options sheet through its real windows: both pages' templates, the stored settings
// shown in the boxes and the hot-key control, the monitor's dependent controls, and what
// OK writes into the settings in memory.
#include "dialogs/options_dlg_win.h"

#include <gtest/gtest.h>

#include "dialog_controls.h"
#include "res/resource.h"
#include "settings/autostart.h"
#include "settings/memory_store.h"
#include "settings/options.h"
#include "settings/settings_backend.h"
#include "support/ui_harness.h"
#include "ui/message_loop.h"

namespace {

class OptionsDlgTest : public UiTest {
 protected:
  OptionsDlgTest() : previousSettings_(SetSettingsBackend(&settings_)) {}
  ~OptionsDlgTest() override { SetSettingsBackend(previousSettings_); }

  // The sheet created modeless on `page`; its page window.
  HWND Open(int page)
  {
    window_ = sheet_.Create(nullptr);
    EXPECT_NE(window_, nullptr);
    EXPECT_TRUE(sheet_.SetActivePage(page));
    return sheet_.ActivePageWindow();
  }

  // Presses OK; true once the sheet has closed.
  bool PressOk()
  {
    sheet_.PressButton(PSBTN_OK);
    return PumpUntil([&] { return sheet_.Handle() == nullptr || !prompts_.Prompts().empty(); }) &&
           sheet_.Handle() == nullptr;
  }

  static MonitorOptions StoredMonitor()
  {
    MonitorOptions options{9, 9, 9};
    ReadMonitorOptions(&options);
    return options;
  }

  MemorySettingsBackend settings_;
  SettingsBackend* previousSettings_;
  RecentImageList recent_;
  CMessageLoop loop_;
  COptionsDlg sheet_{recent_};
  HWND window_ = nullptr;
};

bool IsAutoCheckBox(HWND page, int id)
{
  return (GetWindowLongW(GetDlgItem(page, id), GWL_STYLE) & BS_TYPEMASK) == BS_AUTOCHECKBOX;
}

}  // namespace

TEST_F(OptionsDlgTest, GeneralPageHasTheDesignedControls)
{
  const HWND page = Open(0);
  EXPECT_EQ(CWindow::WindowText(window_).find(L"Options"), 0u);
  ExpectControls(
      DialogControls(page),
      {{-1, L"Static", L"Specify virtual disk image mount, dismount and privacy options."},
       {-1, L"Button", L"Default mount options"},
       {-1, L"Static",
        L"These options will be used as defaults. You can override default values when you "
        L"mount virtual disk image."},
       {1013, L"Button", L"Mount virtual disks as &removable media"},
       {1008, L"Button", L"Make mounted virtual disks &invisible to other users"},
       {-1, L"Button", L"Dismount options"},
       {-1, L"Static", L"Skip check for open files when all mounted virtual disks are dismounted."},
       {1009, L"Button", L"&Ignore open files on dismount of all virtual disks"},
       {-1, L"Button", L"Privacy"},
       {1005, L"Button", L"Do &not save history of recently mounted virtual disk images"}});
  for (int id : {1013, 1008, 1009, 1005}) EXPECT_TRUE(IsAutoCheckBox(page, id)) << id;
  // The sheet's Help button is there for the page.
  EXPECT_TRUE(IsWindowEnabled(GetDlgItem(window_, IDHELP)));
}

TEST_F(OptionsDlgTest, MonitorPageHasTheDesignedControls)
{
  const HWND page = Open(1);
  ExpectControls(
      DialogControls(page),
      {{-1, L"Static", L"Configure Cryptelle Monitor."},
       {-1, L"Button", L"Cryptelle Monitor"},
       {-1, L"Static",
        L"Cryptelle Monitor allows to quickly dismount virtual disks. You can access it by "
        L"clicking the system tray icon."},
       {1010, L"Button", L"&Enable Cryptelle Monitor"},
       {1003, L"Button", L"&Load Cryptelle Monitor when Windows starts"},
       {1011, L"Button", L"&Unload Cryptelle Monitor when there are no mounted disks"},
       {1000, L"Static",
        L"You can assign a hot key combination to quickly dismount all virtual disks and "
        L"unload Cryptelle Monitor in case of emergency."},
       {1001, L"Static", L"&Emergency hot key:"},
       {1012, L"msctls_hotkey32", L""}});
  for (int id : {1010, 1003, 1011}) EXPECT_TRUE(IsAutoCheckBox(page, id)) << id;
  TCITEMW tab{};
  wchar_t title[32] = {};
  tab.mask = TCIF_TEXT;
  tab.pszText = title;
  tab.cchTextMax = 32;
  SendMessageW(PropSheet_GetTabControl(window_), TCM_GETITEMW, 1, reinterpret_cast<LPARAM>(&tab));
  EXPECT_STREQ(title, L"Monitor");
}

TEST_F(OptionsDlgTest, GeneralPageShowsTheStoredValuesAndOkWritesTheBoxes)
{
  ASSERT_FALSE(IsFailure(WriteGeneralOptions({1, 0, 7, 0})));
  const HWND page = Open(0);
  EXPECT_EQ(CheckState(page, 1013), BST_CHECKED);
  EXPECT_EQ(CheckState(page, 1008), BST_UNCHECKED);
  EXPECT_EQ(CheckState(page, 1009), BST_UNCHECKED);  // 7 is outside 0..2
  EXPECT_EQ(CheckState(page, 1005), BST_UNCHECKED);

  Click(page, 1013);
  Click(page, 1005);
  recent_.entries = {u"C:\\Disks\\work.qvi"};
  ASSERT_TRUE(PressOk());
  GeneralOptions stored{9, 9, 9, 9};
  ReadGeneralOptions(&stored);
  EXPECT_EQ(stored.removable, 0u);
  EXPECT_EQ(stored.invisible, 0u);
  EXPECT_EQ(stored.ignoreOpenFiles, 0u);
  EXPECT_EQ(stored.privacy, 1u);
  EXPECT_TRUE(recent_.entries.empty());
}

TEST_F(OptionsDlgTest, MonitorPageShowsTheStoredHotKeyAndDisablesDependentsWithTheMonitor)
{
  ASSERT_FALSE(IsFailure(WriteMonitorOptions({1, 1, 0x067B})));  // Ctrl+Shift+F12
  const HWND page = Open(1);
  EXPECT_EQ(SendDlgItemMessageW(page, 1012, HKM_GETHOTKEY, 0, 0),
            MAKEWORD(VK_F12, HOTKEYF_CONTROL | HOTKEYF_SHIFT));
  EXPECT_EQ(CheckState(page, 1010), BST_CHECKED);
  EXPECT_EQ(CheckState(page, 1011), BST_CHECKED);
  EXPECT_EQ(CheckState(page, 1003), BST_UNCHECKED);
  for (int id : {1003, 1011, 1012, 1000, 1001}) EXPECT_TRUE(IsControlEnabled(page, id)) << id;

  Click(page, 1010);
  for (int id : {1003, 1011, 1012, 1000, 1001}) EXPECT_FALSE(IsControlEnabled(page, id)) << id;
  Click(page, 1010);
  for (int id : {1003, 1011, 1012, 1000, 1001}) EXPECT_TRUE(IsControlEnabled(page, id)) << id;
}

TEST_F(OptionsDlgTest, OkWritesTheMonitorValuesWithTheHotKeyInStoredForm)
{
  const HWND page = Open(1);
  for (int id : {1003, 1011, 1012, 1000, 1001}) EXPECT_FALSE(IsControlEnabled(page, id)) << id;
  Click(page, 1011);  // changes nothing until OK, even while disabled
  SendDlgItemMessageW(page, 1012, HKM_SETHOTKEY, MAKEWORD(VK_F12, HOTKEYF_CONTROL | HOTKEYF_SHIFT),
                      0);
  ASSERT_TRUE(PressOk());
  const MonitorOptions stored = StoredMonitor();
  EXPECT_EQ(stored.enableMonitor, 0u);
  EXPECT_EQ(stored.unloadAutomatically, 1u);
  EXPECT_EQ(stored.emergencyHotKey, 0x067Bu);
  EXPECT_TRUE(processes_.Requests().empty());  // the monitor is not enabled
}

// A top-level window that counts the monitor's settings-changed messages it receives.
class CSettingsChangedListener {
 public:
  CSettingsChangedListener()
      : message_(RegisterWindowMessageW(L"{AB21BA1F-EAA3-4250-AD7E-7D98CBAF11E3}"))
  {
    window_ = CreateWindowExW(0, L"Static", L"listener", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                              nullptr, nullptr);
    SetWindowSubclass(window_, Proc, reinterpret_cast<UINT_PTR>(this), 0);
  }
  ~CSettingsChangedListener()
  {
    RemoveWindowSubclass(window_, Proc, reinterpret_cast<UINT_PTR>(this));
    DestroyWindow(window_);
  }

  int received = 0;

 private:
  static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                               DWORD_PTR)
  {
    auto* self = reinterpret_cast<CSettingsChangedListener*>(id);
    if (message == self->message_ && wParam == 0 && lParam == 0) ++self->received;
    return DefSubclassProc(window, message, wParam, lParam);
  }

  UINT message_;
  HWND window_;
};

TEST_F(OptionsDlgTest, OkWithTheMonitorEnabledStartsItAndTellsEveryWindow)
{
  CSettingsChangedListener listener;
  const HWND page = Open(1);
  Click(page, 1010);
  Click(page, 1003);
  processes_.AnswerStart(kStatusSuccess);
  ASSERT_TRUE(PressOk());
  EXPECT_TRUE(PumpUntil([&] { return listener.received == 1; }));
  ASSERT_EQ(processes_.Requests().size(), 1u);
  EXPECT_EQ(processes_.Requests()[0].commandLine, u"ctellmon.exe");
  EXPECT_EQ(StoredMonitor().enableMonitor, 1u);
  bool autostart = false;
  ReadAutostartEnabled(&autostart);
  EXPECT_TRUE(autostart);
}

TEST_F(OptionsDlgTest, AHotKeyHeldByAnotherProgramKeepsThePageAndSavesNothing)
{
  ASSERT_TRUE(RegisterHotKey(nullptr, 7, MOD_CONTROL | MOD_SHIFT, VK_F11));
  const HWND page = Open(1);
  Click(page, 1010);
  SendDlgItemMessageW(page, 1012, HKM_SETHOTKEY, MAKEWORD(VK_F11, HOTKEYF_CONTROL | HOTKEYF_SHIFT),
                      0);
  prompts_.Answer(IDOK);
  EXPECT_FALSE(PressOk());
  UnregisterHotKey(nullptr, 7);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text,
            u"Key combination assigned to emergency hot key is used by another application.\n"
            u"Please use another key combination.");
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Error");
  EXPECT_EQ(prompts_.Prompts()[0].flags, static_cast<uint32_t>(MB_OK | MB_ICONERROR));
  EXPECT_EQ(sheet_.ActivePageIndex(), 1);
  EXPECT_EQ(StoredMonitor().enableMonitor, 9u);  // nothing written
}

TEST_F(OptionsDlgTest, EachPagesHelpButtonOpensItsTopic)
{
  help_.Answer(kStatusSuccess);
  help_.Answer(kStatusSuccess);
  Open(0);
  SendMessageW(GetDlgItem(window_, IDHELP), BM_CLICK, 0, 0);
  sheet_.SetActivePage(1);
  SendMessageW(GetDlgItem(window_, IDHELP), BM_CLICK, 0, 0);
  ASSERT_EQ(help_.Calls().size(), 2u);
  EXPECT_EQ(help_.Calls()[0].context, 156u);
  EXPECT_EQ(help_.Calls()[1].context, 158u);
}
