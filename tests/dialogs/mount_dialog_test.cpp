// The mount dialog through its real window: the template, the drive list over given drive
// facts, the device-arrival refill, Browse, the on-screen keyboard, the defaults from the
// settings and what OK and Cancel hand back.
#include "dialogs/mount_dialog_win.h"

#include <commctrl.h>
#include <dbt.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "dialog_controls.h"
#include "res/resource.h"
#include "settings/memory_store.h"
#include "settings/options.h"
#include "settings/settings_backend.h"
#include "support/ui_harness.h"
#include "ui/controls/combo_box.h"

namespace {

// The drive facts the dialog sees: set by each test, read whenever the list is filled.
DriveLetterFacts scriptedFacts;
int factQueries = 0;

DriveLetterFacts ScriptedFacts()
{
  ++factQueries;
  return scriptedFacts;
}

constexpr uint32_t Bit(char letter)
{
  return 1u << (letter - 'A');
}

std::vector<std::wstring> ListEntries(HWND list)
{
  const CComboBox box(list);
  std::vector<std::wstring> entries;
  for (int index = 0; index < box.Count(); ++index) entries.push_back(box.ItemText(index));
  return entries;
}

std::wstring SelectedEntry(HWND list)
{
  const CComboBox box(list);
  const int selected = box.CurSel();
  return selected == CB_ERR ? L"(none)" : box.ItemText(selected);
}

void SendVolumeEvent(HWND dialog, WPARAM event)
{
  DEV_BROADCAST_VOLUME volume{};
  volume.dbcv_size = sizeof(volume);
  volume.dbcv_devicetype = DBT_DEVTYP_VOLUME;
  volume.dbcv_unitmask = Bit('F');
  SendMessageW(dialog, WM_DEVICECHANGE, event, reinterpret_cast<LPARAM>(&volume));
}

class MountDialogTest : public UiTest {
 protected:
  MountDialogTest()
  {
    previousSettings_ = SetSettingsBackend(&settings_);
    scriptedFacts = DriveLetterFacts{};
    scriptedFacts.lettersInUse = Bit('A') | Bit('C') | Bit('D');
    factQueries = 0;
  }
  ~MountDialogTest() override { SetSettingsBackend(previousSettings_); }

  // The dialog created modeless, as the window tests drive it.
  HWND Open(const std::u16string& path = {})
  {
    dialog_ = std::make_unique<CMountDlg>(path, ScriptedFacts);
    const HWND window = dialog_->Create(nullptr);
    EXPECT_NE(window, nullptr);
    return window;
  }

  std::unique_ptr<CMountDlg> dialog_;

 private:
  MemorySettingsBackend settings_;
  SettingsBackend* previousSettings_;
};

}  // namespace

TEST_F(MountDialogTest, TemplateHasTheDesignedControls)
{
  const HWND window = Open();
  EXPECT_EQ(CWindow::WindowText(window), L"Mount Virtual Disk Image");
  EXPECT_NE(SendMessageW(window, WM_GETICON, ICON_BIG, 0), 0);
  EXPECT_NE(SendMessageW(window, WM_GETICON, ICON_SMALL, 0), 0);

  struct Expected {
    int id;
    const wchar_t* className;
    const wchar_t* text;
  };
  const Expected controls[] = {
      {IDC_IMAGE_PATH, L"Edit", L""},
      {IDC_BROWSE, L"Button", L"&Browse..."},
      {IDC_PASSWORD, L"Edit", L""},
      {IDC_MOUNT_KEYBOARD, L"Button", L"OSK"},
      {IDC_MOUNT_POINT, L"ComboBox", nullptr},
      {IDC_MOUNT_READ_ONLY, L"Button", L"Read &only"},
      {IDC_MOUNT_REMOVABLE, L"Button", L"&Removable media"},
      {IDC_MOUNT_INVISIBLE, L"Button", L"Make virtual disk &invisible to other users"},
      {IDOK, L"Button", L"&OK"},
      {IDCANCEL, L"Button", L"&Cancel"},
  };
  for (const Expected& control : controls) {
    SCOPED_TRACE(control.id);
    const HWND item = GetDlgItem(window, control.id);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(_wcsicmp(ClassOf(item).c_str(), control.className), 0) << ClassOf(item);
    if (control.text != nullptr) {
      EXPECT_EQ(CWindow::WindowText(item), control.text);
    }
    EXPECT_TRUE(StyleOf(item) & WS_TABSTOP);
  }

  EXPECT_TRUE(StyleOf(GetDlgItem(window, IDC_PASSWORD)) & ES_PASSWORD);
  EXPECT_FALSE(StyleOf(GetDlgItem(window, IDC_IMAGE_PATH)) & ES_PASSWORD);
  EXPECT_EQ(StyleOf(GetDlgItem(window, IDC_MOUNT_POINT)) & 3, CBS_DROPDOWNLIST);
  for (const int box : {IDC_MOUNT_READ_ONLY, IDC_MOUNT_REMOVABLE, IDC_MOUNT_INVISIBLE}) {
    EXPECT_EQ(StyleOf(GetDlgItem(window, box)) & BS_TYPEMASK, BS_AUTOCHECKBOX) << box;
  }
  EXPECT_EQ(StyleOf(GetDlgItem(window, IDOK)) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
  EXPECT_EQ(StyleOf(GetDlgItem(window, IDCANCEL)) & BS_TYPEMASK, BS_PUSHBUTTON);
  EXPECT_EQ(StyleOf(GetDlgItem(window, IDC_BROWSE)) & BS_TYPEMASK, BS_PUSHBUTTON);
  const HWND keyboard = GetDlgItem(window, IDC_MOUNT_KEYBOARD);
  EXPECT_TRUE(StyleOf(keyboard) & BS_ICON);
  EXPECT_NE(SendMessageW(keyboard, BM_GETIMAGE, IMAGE_ICON, 0), 0);

  // The labels and the two group boxes, in the order of the template.
  std::vector<std::wstring> labels;
  std::vector<std::wstring> groups;
  for (const ControlSeen& control : DialogControls(window)) {
    if (control.id != -1 && control.id != 0xFFFF) continue;
    const bool isGroup = _wcsicmp(control.className.c_str(), L"Button") == 0 &&
                         (control.style & BS_TYPEMASK) == BS_GROUPBOX;
    (isGroup ? groups : labels).push_back(control.text);
  }
  EXPECT_EQ(groups, (std::vector<std::wstring>{L"Virtual disk", L"Mount options"}));
  EXPECT_EQ(labels, (std::vector<std::wstring>{L"Disk &Image:", L"&Password:", L"Mount &Point:"}));
}

TEST_F(MountDialogTest, DriveListOffersTheFreeLettersAndSelectsTheFirst)
{
  scriptedFacts.lettersInUse = Bit('A') | Bit('B') | Bit('C') | Bit('D');
  scriptedFacts.hiddenLetters = Bit('E') | Bit('Y');
  // A connected network drive's letter is taken; a remembered but disconnected one is not
  // among the connected resources and stays free.
  scriptedFacts.networkLocalNames = {u"Z:", u"\\\\server\\share"};
  const HWND window = Open();
  const HWND list = GetDlgItem(window, IDC_MOUNT_POINT);
  std::vector<std::wstring> expected;
  for (wchar_t letter = L'F'; letter <= L'X'; ++letter) expected.push_back({letter, L':'});
  EXPECT_EQ(ListEntries(list), expected);
  EXPECT_EQ(SelectedEntry(list), L"F:");
  EXPECT_EQ(factQueries, 1);
}

TEST_F(MountDialogTest, WithNoFreeLetterTheListIsEmptyAndOkGivesNoMountPoint)
{
  scriptedFacts.lettersInUse = (1u << 26) - 1;
  const HWND window = Open(u"C:\\disks\\work.qvi");
  EXPECT_TRUE(ListEntries(GetDlgItem(window, IDC_MOUNT_POINT)).empty());
  EXPECT_TRUE(IsControlEnabled(window, IDOK));
  Click(window, IDOK);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(dialog_->Request().imagePath, u"C:\\disks\\work.qvi");
  EXPECT_TRUE(dialog_->Request().mountPoint.empty());
}

TEST_F(MountDialogTest, OkIsEnabledOnlyWhileThePathHoldsText)
{
  const HWND window = Open();
  EXPECT_FALSE(IsControlEnabled(window, IDOK));
  EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_IMAGE_PATH));
  SetControlText(window, IDC_IMAGE_PATH, L"x");
  EXPECT_TRUE(IsControlEnabled(window, IDOK));
  SetControlText(window, IDC_IMAGE_PATH, L"");
  EXPECT_FALSE(IsControlEnabled(window, IDOK));
}

TEST_F(MountDialogTest, AGivenPathIsShownAndThePasswordHasTheFocus)
{
  const HWND window = Open(u"D:\\images\\photos.qvi");
  EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"D:\\images\\photos.qvi");
  EXPECT_TRUE(ControlText(window, IDC_PASSWORD).empty());
  EXPECT_TRUE(IsControlEnabled(window, IDOK));
  EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_PASSWORD));
}

TEST_F(MountDialogTest, BoxesStartFromTheProgramDefaults)
{
  const HWND window = Open();
  EXPECT_EQ(CheckState(window, IDC_MOUNT_READ_ONLY), static_cast<UINT>(BST_UNCHECKED));
  EXPECT_EQ(CheckState(window, IDC_MOUNT_REMOVABLE), static_cast<UINT>(BST_UNCHECKED));
  EXPECT_EQ(CheckState(window, IDC_MOUNT_INVISIBLE), static_cast<UINT>(BST_CHECKED));
}

TEST_F(MountDialogTest, BoxesStartFromTheStoredDefaults)
{
  GeneralOptions stored;
  stored.removable = 1;
  stored.invisible = 0;
  WriteGeneralOptions(stored);
  const HWND window = Open();
  EXPECT_EQ(CheckState(window, IDC_MOUNT_READ_ONLY), static_cast<UINT>(BST_UNCHECKED));
  EXPECT_EQ(CheckState(window, IDC_MOUNT_REMOVABLE), static_cast<UINT>(BST_CHECKED));
  EXPECT_EQ(CheckState(window, IDC_MOUNT_INVISIBLE), static_cast<UINT>(BST_UNCHECKED));
}

TEST_F(MountDialogTest, StoredDefaultsOutsideTheBoxStatesLeaveTheBoxesUnchecked)
{
  GeneralOptions stored;
  stored.removable = 7;
  stored.invisible = 3;
  WriteGeneralOptions(stored);
  const HWND window = Open();
  EXPECT_EQ(CheckState(window, IDC_MOUNT_REMOVABLE), static_cast<UINT>(BST_UNCHECKED));
  EXPECT_EQ(CheckState(window, IDC_MOUNT_INVISIBLE), static_cast<UINT>(BST_UNCHECKED));
}

TEST_F(MountDialogTest, VolumeArrivalRefillsTheListAndKeepsAStillFreeSelection)
{
  const HWND window = Open();
  const HWND list = GetDlgItem(window, IDC_MOUNT_POINT);
  CComboBox(list).SelectString(L"G:");
  scriptedFacts.lettersInUse |= Bit('F');
  SendVolumeEvent(window, DBT_DEVICEARRIVAL);
  EXPECT_EQ(factQueries, 2);
  const std::vector<std::wstring> entries = ListEntries(list);
  ASSERT_FALSE(entries.empty());
  EXPECT_EQ(entries.front(), L"B:");
  EXPECT_EQ(std::count(entries.begin(), entries.end(), L"F:"), 0);
  EXPECT_EQ(SelectedEntry(list), L"G:");
}

TEST_F(MountDialogTest, VolumeArrivalOnTheSelectedLetterSelectsTheFirstEntry)
{
  const HWND window = Open();
  const HWND list = GetDlgItem(window, IDC_MOUNT_POINT);
  CComboBox(list).SelectString(L"F:");
  scriptedFacts.lettersInUse |= Bit('F');
  SendVolumeEvent(window, DBT_DEVICEARRIVAL);
  EXPECT_EQ(SelectedEntry(list), L"B:");
}

TEST_F(MountDialogTest, VolumeRemovalDoesNotRefillTheList)
{
  const HWND window = Open();
  const HWND list = GetDlgItem(window, IDC_MOUNT_POINT);
  const std::vector<std::wstring> before = ListEntries(list);
  scriptedFacts.lettersInUse = 0;
  SendVolumeEvent(window, DBT_DEVICEREMOVECOMPLETE);
  EXPECT_EQ(factQueries, 1);
  EXPECT_EQ(ListEntries(list), before);
}

TEST_F(MountDialogTest, BrowseAsksForAnImageFromTheDesktopAndKeepsTheOtherFields)
{
  const HWND window = Open(u"C:\\old.qvi");
  SetControlText(window, IDC_PASSWORD, L"secret");
  Click(window, IDC_MOUNT_READ_ONLY);
  Click(window, IDC_MOUNT_INVISIBLE);
  shell_.AnswerSpecialFolder(kStatusSuccess, u"C:\\users\\ann\\Desktop");
  fileDialogs_.Choose(u"E:\\chosen.qvi");
  Click(window, IDC_BROWSE);

  ASSERT_EQ(fileDialogs_.Calls().size(), 1u);
  const CScriptedFileDialogs::Call& call = fileDialogs_.Calls()[0];
  EXPECT_EQ(call.kind, CScriptedFileDialogs::Kind::kOpen);
  EXPECT_EQ(call.request.owner, static_cast<WindowRef>(window));
  constexpr char16_t kFilter[] = u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*\0\0";
  EXPECT_EQ(call.request.filter, std::u16string(kFilter, std::size(kFilter) - 1));
  EXPECT_EQ(call.request.flags, 0x0200100Cu);
  EXPECT_EQ(call.request.initialFolder, u"C:\\users\\ann\\Desktop");
  EXPECT_EQ(call.request.fileName, u"C:\\old.qvi");
  EXPECT_TRUE(call.request.defaultExtension.empty());
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].csidl, 0);

  EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"E:\\chosen.qvi");
  EXPECT_EQ(ControlText(window, IDC_PASSWORD), L"secret");
  EXPECT_EQ(CheckState(window, IDC_MOUNT_READ_ONLY), static_cast<UINT>(BST_CHECKED));
  EXPECT_EQ(CheckState(window, IDC_MOUNT_INVISIBLE), static_cast<UINT>(BST_UNCHECKED));
}

TEST_F(MountDialogTest, CancelledBrowseLeavesPathAndPasswordAsTheyWere)
{
  const HWND window = Open(u"C:\\old.qvi");
  SetControlText(window, IDC_PASSWORD, L"secret");
  shell_.AnswerSpecialFolder(kStatusSuccess, u"C:\\users\\ann\\Desktop");
  fileDialogs_.Cancel();
  Click(window, IDC_BROWSE);
  EXPECT_EQ(fileDialogs_.Calls().size(), 1u);
  EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"C:\\old.qvi");
  EXPECT_EQ(ControlText(window, IDC_PASSWORD), L"secret");
}

TEST_F(MountDialogTest, KeyboardStartsAtThePasswordFieldAndAFailureIsSilent)
{
  const HWND window = Open(u"C:\\disk.qvi");
  const HWND focus = GetFocus();
  processes_.AnswerStart(kSysGeneralFailure, u"not found");
  // The button's command without a mouse click, which would move the focus to the button.
  const HWND button = GetDlgItem(window, IDC_MOUNT_KEYBOARD);
  SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDC_MOUNT_KEYBOARD, BN_CLICKED),
               reinterpret_cast<LPARAM>(button));

  ASSERT_EQ(processes_.Requests().size(), 1u);
  const ProcessStartRequest& request = processes_.Requests()[0];
  EXPECT_EQ(request.program, u"%SystemRoot%\\system32\\osk.exe");
  EXPECT_TRUE(request.commandLine.empty());
  EXPECT_FALSE(request.desktop.has_value());
  RECT field{};
  GetWindowRect(GetDlgItem(window, IDC_PASSWORD), &field);
  ASSERT_TRUE(request.position.has_value());
  EXPECT_EQ(request.position->x, field.left);
  EXPECT_EQ(request.position->y, field.top);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_TRUE(IsWindow(window));
  EXPECT_EQ(GetFocus(), focus);
}

TEST_F(MountDialogTest, AskReturnsTheRequestAfterOk)
{
  CMountDlg dialog(u"", ScriptedFacts);
  std::optional<MountRequest> request;
  RunModal(
      [&] {
        request = dialog.Ask(nullptr, u"C:\\disks\\work.qvi");
        return 0;
      },
      [&](HWND window) {
        EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"C:\\disks\\work.qvi");
        EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_PASSWORD));
        SetControlText(window, IDC_PASSWORD, L"pass word");
        Click(window, IDC_MOUNT_READ_ONLY);
        Click(window, IDC_MOUNT_REMOVABLE);
        CComboBox(GetDlgItem(window, IDC_MOUNT_POINT)).SelectString(L"P:");
        Click(window, IDOK);
      });
  ASSERT_TRUE(request.has_value());
  EXPECT_EQ(request->imagePath, u"C:\\disks\\work.qvi");
  EXPECT_EQ(request->password, u"pass word");
  EXPECT_EQ(request->mountPoint, u"P:");
  EXPECT_TRUE(request->readOnly);
  EXPECT_TRUE(request->removable);
  EXPECT_TRUE(request->invisible);
  EXPECT_EQ(MountFlagsOf(*request), 7u);
  // The dialog keeps no copy of the password once it has handed the request over.
  EXPECT_TRUE(dialog.Request().password.empty());
}

TEST_F(MountDialogTest, AskAcceptsAnEmptyPassword)
{
  CMountDlg dialog(u"", ScriptedFacts);
  std::optional<MountRequest> request;
  RunModal(
      [&] {
        request = dialog.Ask(nullptr, u"");
        return 0;
      },
      [&](HWND window) {
        SetControlText(window, IDC_IMAGE_PATH, L"C:\\missing.qvi");
        Click(window, IDOK);
      });
  ASSERT_TRUE(request.has_value());
  EXPECT_EQ(request->imagePath, u"C:\\missing.qvi");
  EXPECT_TRUE(request->password.empty());
  EXPECT_EQ(request->mountPoint, u"B:");
  EXPECT_EQ(MountFlagsOf(*request), 4u);
}

TEST_F(MountDialogTest, AskReturnsNothingAfterCancel)
{
  CMountDlg dialog(u"", ScriptedFacts);
  std::optional<MountRequest> request = MountRequest{};
  RunModal(
      [&] {
        request = dialog.Ask(nullptr, u"C:\\disks\\work.qvi");
        return 0;
      },
      [&](HWND window) {
        SetControlText(window, IDC_PASSWORD, L"typed");
        Click(window, IDCANCEL);
      });
  EXPECT_FALSE(request.has_value());
  EXPECT_TRUE(dialog.Request().password.empty());
}

TEST_F(MountDialogTest, ThePasswordFieldIsWipedBeforeTheDialogCloses)
{
  const HWND window = Open(u"C:\\disk.qvi");
  const HWND field = GetDlgItem(window, IDC_PASSWORD);
  SetControlText(window, IDC_PASSWORD, L"secret");
  std::wstring textAtDestroy = L"(not seen)";
  // The field's text as its parent's destruction reaches it.
  SetWindowSubclass(
      field,
      [](HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
         DWORD_PTR seen) -> LRESULT {
        if (message == WM_DESTROY)
          *reinterpret_cast<std::wstring*>(seen) = CWindow::WindowText(control);
        return DefSubclassProc(control, message, wParam, lParam);
      },
      1, reinterpret_cast<DWORD_PTR>(&textAtDestroy));
  Click(window, IDCANCEL);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_TRUE(textAtDestroy.empty()) << textAtDestroy;
}

// Wine's prefix maps C: to its system folder and Z: to the Unix root, and connects no
// network drives.
TEST_F(MountDialogTest, SystemFactsTakeTheDrivesInUse)
{
  const DriveLetterFacts facts = GatherDriveFacts();
  EXPECT_EQ(facts.lettersInUse & (Bit('C') | Bit('Z')), Bit('C') | Bit('Z'));
  EXPECT_EQ(facts.lettersInUse, static_cast<uint32_t>(GetLogicalDrives()));
  EXPECT_TRUE(facts.networkLocalNames.empty());

  CMountDlg dialog(u"");
  const HWND window = dialog.Create(nullptr);
  ASSERT_NE(window, nullptr);
  const std::vector<std::wstring> entries = ListEntries(GetDlgItem(window, IDC_MOUNT_POINT));
  EXPECT_FALSE(entries.empty());
  EXPECT_EQ(std::count(entries.begin(), entries.end(), L"C:"), 0);
  EXPECT_EQ(std::count(entries.begin(), entries.end(), L"Z:"), 0);
  EXPECT_EQ(entries.size(), FreeDriveLetters(facts).size());
}
