// The new image wizard through its real windows: the sheet (caption, fonts, centring, the
// buttons of each page), every collecting page's template read back, navigation with the
// checks of each page and their messages, Cancel before creation, the summary and Finish,
// and the help topics. Most tests reach the summary by the wizard's own jump, without the
// progress page; one whole run creates a small image with the device host scripted.
#include "wizard/new_image_wizard_win.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "dialog_controls.h"
#include "res/resource.h"
#include "support/fake_device_host.h"
#include "support/ui_harness.h"
#include "system/wide_text_win.h"
#include "ui/message_loop.h"

namespace {

// The sheet's wizard buttons.
constexpr int kBackButton = 0x3023;
constexpr int kNextButton = 0x3024;
constexpr int kFinishButton = 0x3025;

constexpr int kLocationPage = 4;

class WizardTest : public UiTest {
 protected:
  // The wizard created modeless over `owner`; its window.
  HWND Open(HWND owner = nullptr)
  {
    sheet_ = wizard_.Create(owner);
    EXPECT_NE(sheet_, nullptr);
    PumpMessages();
    return sheet_;
  }

  // Moves to page `index` without Next's checks (as the tests of one page need).
  HWND GoTo(int index)
  {
    EXPECT_TRUE(wizard_.SetActivePage(index));
    PumpMessages();
    return wizard_.ActivePageWindow();
  }

  HWND Page() const { return wizard_.ActivePageWindow(); }
  int Index() const { return wizard_.ActivePageIndex(); }

  // Presses Next and lets the sheet act on it.
  void Next()
  {
    wizard_.PressButton(PSBTN_NEXT);
    PumpMessages();
  }

  bool ButtonEnabled(int id) const
  {
    const HWND button = GetDlgItem(sheet_, id);
    return button != nullptr && IsWindowVisible(button) && IsWindowEnabled(button);
  }

  // The answer of the page's own Next handler, without the sheet acting on it.
  LRESULT PageNextAnswer()
  {
    NMHDR header{sheet_, 0, static_cast<UINT>(PSN_WIZNEXT)};
    SendMessageW(Page(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
    return GetWindowLongPtrW(Page(), DWLP_MSGRESULT);
  }

  // Types `text` into the capacity box the way a user does: focus in, text, focus out.
  void TypeCapacity(const std::wstring& text)
  {
    const HWND box = GetDlgItem(Page(), IDC_CAPACITY_TEXT);
    SetFocus(box);
    ASSERT_EQ(GetFocus(), box);
    SetControlText(Page(), IDC_CAPACITY_TEXT, text);
    SetFocus(GetDlgItem(Page(), IDC_CAPACITY_FIXED_SIZE));
    ASSERT_NE(GetFocus(), box);
  }

  // Moves a trackbar as a user's drag ends.
  void MoveTrackbar(int id, int position)
  {
    const HWND trackbar = GetDlgItem(Page(), id);
    SendMessageW(trackbar, TBM_SETPOS, TRUE, position);
    SendMessageW(Page(), WM_HSCROLL, MAKEWPARAM(TB_THUMBPOSITION, position),
                 reinterpret_cast<LPARAM>(trackbar));
  }

  void SelectAlgorithm(int index)
  {
    const HWND list = GetDlgItem(Page(), IDC_ALGORITHM);
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(Page(), WM_COMMAND, MAKEWPARAM(IDC_ALGORITHM, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
  }

  int TrackbarMax(int id) const
  {
    return static_cast<int>(SendDlgItemMessageW(Page(), id, TBM_GETRANGEMAX, 0, 0));
  }
  int TrackbarPosition(int id) const
  {
    return static_cast<int>(SendDlgItemMessageW(Page(), id, TBM_GETPOS, 0, 0));
  }

  bool Visible(int id) const { return IsWindowVisible(GetDlgItem(Page(), id)) != FALSE; }

  void ExpectPrompt(size_t index, const std::u16string& text, const std::u16string& caption)
  {
    ASSERT_GT(prompts_.Prompts().size(), index);
    EXPECT_EQ(prompts_.Prompts()[index].text, text);
    EXPECT_EQ(prompts_.Prompts()[index].caption, caption);
    EXPECT_EQ(prompts_.Prompts()[index].flags, 0x10u);  // OK, error icon
  }

  CMessageLoop loop_;
  CNewVirtualDiskImageWizard wizard_;
  HWND sheet_ = nullptr;
};

LOGFONTW FontOf(HFONT font)
{
  LOGFONTW description{};
  GetObjectW(font, sizeof description, &description);
  return description;
}

HFONT ControlFont(HWND page, int id)
{
  return reinterpret_cast<HFONT>(SendDlgItemMessageW(page, id, WM_GETFONT, 0, 0));
}

LONG_PTR ControlStyle(HWND page, int id)
{
  return GetWindowLongPtrW(GetDlgItem(page, id), GWL_STYLE);
}

POINT CentreOf(HWND window)
{
  RECT rect{};
  GetWindowRect(window, &rect);
  return POINT{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

}  // namespace

TEST_F(WizardTest, SheetCaptionButtonsAndStyle)
{
  Open();
  EXPECT_EQ(CWindow::WindowText(sheet_), L"New Virtual Disk Image Wizard");
  EXPECT_EQ(Index(), 0);
  // No context-help button in the caption, no Apply button.
  EXPECT_EQ(GetWindowLongPtrW(sheet_, GWL_EXSTYLE) & WS_EX_CONTEXTHELP, 0);
  const HWND apply = GetDlgItem(sheet_, 0x3021);
  EXPECT_TRUE(apply == nullptr || !IsWindowVisible(apply));
  // The welcome page: only Next.
  EXPECT_TRUE(ButtonEnabled(kNextButton));
  EXPECT_FALSE(ButtonEnabled(kBackButton));
  EXPECT_FALSE(ButtonEnabled(IDHELP));
  // The interior pages: Back, Next and Help.
  for (int index = 1; index <= kLocationPage; ++index) {
    SCOPED_TRACE(index);
    GoTo(index);
    EXPECT_TRUE(ButtonEnabled(kBackButton));
    EXPECT_TRUE(ButtonEnabled(kNextButton));
    EXPECT_TRUE(ButtonEnabled(IDHELP));
  }
}

TEST_F(WizardTest, RegisteredMessagesAnswerTheTitleAndBulletFonts)
{
  Open();
  const auto title = reinterpret_cast<HFONT>(SendMessageW(
      sheet_,
      RegisterWindowMessageW(L"GetExteriorPageTitleFont_531AF056-B8BE-4c4c-B786-AC608DF0DF12"), 0,
      0));
  const auto bullet = reinterpret_cast<HFONT>(SendMessageW(
      sheet_, RegisterWindowMessageW(L"GetBulletFont_AD347D08-8F65-45ef-982E-6352E8218AD5"), 0, 0));
  ASSERT_NE(title, nullptr);
  ASSERT_NE(bullet, nullptr);
  EXPECT_EQ(title, CNewVirtualDiskImageWizard::ExteriorTitleFontOf(sheet_));
  EXPECT_EQ(bullet, CNewVirtualDiskImageWizard::BulletFontOf(sheet_));
  const LOGFONTW titleFont = FontOf(title);
  const LOGFONTW pageFont = FontOf(reinterpret_cast<HFONT>(SendMessageW(Page(), WM_GETFONT, 0, 0)));
  EXPECT_GE(titleFont.lfWeight, FW_BOLD);
  EXPECT_GT(std::abs(titleFont.lfHeight), std::abs(pageFont.lfHeight));
  EXPECT_STREQ(FontOf(bullet).lfFaceName, L"Marlett");
  // The welcome page's title is drawn in the title font.
  EXPECT_EQ(ControlFont(Page(), IDC_WIZARD_TITLE), title);
}

TEST_F(WizardTest, SheetCentresOnItsOwnerOnceARun)
{
  const COwnedWindow owner(CreateWindowExW(0, L"Static", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                           40, 30, 900, 700, nullptr, nullptr, nullptr, nullptr));
  ASSERT_TRUE(owner);
  Open(owner.Get());
  const POINT sheetCentre = CentreOf(sheet_);
  const POINT ownerCentre = CentreOf(owner.Get());
  EXPECT_LE(std::abs(sheetCentre.x - ownerCentre.x), 1);
  EXPECT_LE(std::abs(sheetCentre.y - ownerCentre.y), 1);
  // A later size message leaves the sheet where it is.
  SetWindowPos(sheet_, nullptr, 5, 6, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  RECT rect{};
  GetWindowRect(sheet_, &rect);
  SendMessageW(sheet_, WM_SIZE, SIZE_RESTORED,
               MAKELPARAM(rect.right - rect.left, rect.bottom - rect.top));
  GetWindowRect(sheet_, &rect);
  EXPECT_EQ(rect.left, 5);
  EXPECT_EQ(rect.top, 6);
}

TEST_F(WizardTest, WelcomePageTemplate)
{
  Open();
  ExpectControls(DialogControls(Page()),
                 {{IDC_WIZARD_TITLE, L"Static", L"Welcome to the New Virtual Disk Image Wizard"},
                  {-1, L"Static",
                   L"This wizard helps you to create a new virtual disk image on this computer."},
                  {-1, L"Static", L"To continue, click Next."}});
}

TEST_F(WizardTest, CapacityPageTemplateAfterInitialisation)
{
  Open();
  const HWND page = GoTo(1);
  ExpectControls(
      DialogControls(page),
      {{-1, L"Static", L"Specify capacity of the new virtual disk image."},
       {IDC_CAPACITY_TRACKBAR, L"msctls_trackbar32", L""},
       {IDC_CAPACITY_TEXT, L"Edit", L"4 MB"},
       {IDC_CAPACITY_MINIMUM, L"Static", L"4 MB"},
       {IDC_CAPACITY_MAXIMUM, L"Static", L"2 TB"},
       {IDC_CAPACITY_FIXED_SIZE, L"Button", L"Create fixed-size image"},
       {IDC_CAPACITY_FIXED_SIZE_TEXT, L"Static",
        L"Allocate the full capacity of the virtual disk. Otherwise, the image will start small "
        L"and grow as you write your data."},
       {IDC_CAPACITY_FAT_COMPATIBLE, L"Button", L"FAT-compatible image"},
       {IDC_CAPACITY_FAT_COMPATIBLE_TEXT, L"Static",
        L"Split large virtual disk image into 2GB files to overcome FAT filesystem limit on "
        L"maximum file size."}});
  EXPECT_EQ(TrackbarMax(IDC_CAPACITY_TRACKBAR), 31);
  EXPECT_EQ(TrackbarPosition(IDC_CAPACITY_TRACKBAR), 0);
  // Hidden in the template, shown by the page; both boxes unchecked.
  for (int id : {IDC_CAPACITY_FIXED_SIZE, IDC_CAPACITY_FAT_COMPATIBLE, IDC_CAPACITY_FIXED_SIZE_TEXT,
                 IDC_CAPACITY_FAT_COMPATIBLE_TEXT}) {
    EXPECT_TRUE(Visible(id)) << id;
  }
  for (int id : {IDC_CAPACITY_FIXED_SIZE, IDC_CAPACITY_FAT_COMPATIBLE}) {
    EXPECT_EQ(ControlStyle(page, id) & BS_TYPEMASK, BS_AUTOCHECKBOX) << id;
    EXPECT_EQ(CheckState(page, id), static_cast<UINT>(BST_UNCHECKED)) << id;
  }
  EXPECT_NE(ControlStyle(page, IDC_CAPACITY_TEXT) & ES_AUTOHSCROLL, 0);
}

TEST_F(WizardTest, CapacityTrackbarShowsItsStep)
{
  Open();
  GoTo(1);
  MoveTrackbar(IDC_CAPACITY_TRACKBAR, 7);
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"512 MB");
  MoveTrackbar(IDC_CAPACITY_TRACKBAR, 8);
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"1.0 GB");
  MoveTrackbar(IDC_CAPACITY_TRACKBAR, 30);
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"1.50 TB");
}

TEST_F(WizardTest, CapacityTypedIsNormalisedWhenTheBoxIsLeft)
{
  Open();
  GoTo(1);
  TypeCapacity(L"1.5 TB");
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"1.5 TB");
  EXPECT_EQ(TrackbarPosition(IDC_CAPACITY_TRACKBAR), 30);

  TypeCapacity(L"3 TB");
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"2.00 TB");
  EXPECT_EQ(TrackbarPosition(IDC_CAPACITY_TRACKBAR), 31);

  // The box showed a text in GB when it gained the focus: a bare number takes that unit.
  MoveTrackbar(IDC_CAPACITY_TRACKBAR, 10);
  TypeCapacity(L"1000");
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"1000.0 GB");
  EXPECT_EQ(TrackbarPosition(IDC_CAPACITY_TRACKBAR), 29);

  TypeCapacity(L"5.5 MB");
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"5.0 MB");
  EXPECT_EQ(TrackbarPosition(IDC_CAPACITY_TRACKBAR), 1);

  TypeCapacity(L"abc GB");
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"4.0 MB");
  EXPECT_EQ(TrackbarPosition(IDC_CAPACITY_TRACKBAR), 0);
}

TEST_F(WizardTest, CapacityNextStoresTheBoxAndTheOptions)
{
  Open();
  GoTo(1);
  TypeCapacity(L"900 M");
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"900.0 MB");
  Click(Page(), IDC_CAPACITY_FIXED_SIZE);
  Next();
  EXPECT_EQ(Index(), 2);
  EXPECT_EQ(wizard_.Request().capacity, 900u * 1048576u);
  EXPECT_EQ(wizard_.Request().fixedSize, 1u);
  EXPECT_EQ(wizard_.Request().fatCompatible, 0u);

  // Back keeps the page's values; Next stores the box's text unchanged, unclamped.
  wizard_.PressButton(PSBTN_BACK);
  PumpMessages();
  ASSERT_EQ(Index(), 1);
  EXPECT_EQ(ControlText(Page(), IDC_CAPACITY_TEXT), L"900.0 MB");
  Click(Page(), IDC_CAPACITY_FAT_COMPATIBLE);
  SetControlText(Page(), IDC_CAPACITY_TEXT, L"1 MB");
  Next();
  EXPECT_EQ(wizard_.Request().capacity, 1048576u);
  EXPECT_EQ(wizard_.Request().fatCompatible, 1u);
  // A text without a unit that was never completed reads as 0.
  GoTo(1);
  SetControlText(Page(), IDC_CAPACITY_TEXT, L"1000");
  Next();
  EXPECT_EQ(wizard_.Request().capacity, 0u);
}

TEST_F(WizardTest, EncryptionPageTemplateAfterInitialisation)
{
  Open();
  const HWND page = GoTo(2);
  ExpectControls(DialogControls(page),
                 {{-1, L"Static", L"Select the encryption algorithm and cipher key length."},
                  {-1, L"Static", L"Encryption algorithm:"},
                  {IDC_ALGORITHM, L"ComboBox", L"AES"},
                  {IDC_KEY_LENGTH_LABEL, L"Static", L"Key length:"},
                  {IDC_KEY_LENGTH_TRACKBAR, L"msctls_trackbar32", L""},
                  {IDC_KEY_LENGTH, L"Static", L"128 bits"},
                  {IDC_KEY_LENGTH_MINIMUM, L"Static", L"128 bits"},
                  {IDC_KEY_LENGTH_MAXIMUM, L"Static", L"256 bits"},
                  {IDC_WARNING_ICON, L"Static", L""},
                  {IDC_WARNING_TEXT, L"Static",
                   L"Selected key length is too small. It is not recommended to store sensitive "
                   L"information to this virtual disk image."}});
  const HWND list = GetDlgItem(page, IDC_ALGORITHM);
  ASSERT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 3);
  const wchar_t* names[] = {L"AES", L"BLOWFISH", L"CAST"};
  for (int i = 0; i < 3; ++i) {
    wchar_t name[16] = {};
    SendMessageW(list, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(name));
    EXPECT_STREQ(name, names[i]);
  }
  EXPECT_EQ(ControlStyle(page, IDC_ALGORITHM) & (CBS_DROPDOWNLIST | CBS_SORT), CBS_DROPDOWNLIST);
  EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), 0);
  EXPECT_EQ(TrackbarMax(IDC_KEY_LENGTH_TRACKBAR), 2);
  EXPECT_EQ(TrackbarPosition(IDC_KEY_LENGTH_TRACKBAR), 0);
  // The length label travels at the trackbar's right end.
  EXPECT_EQ(reinterpret_cast<HWND>(
                SendDlgItemMessageW(page, IDC_KEY_LENGTH_TRACKBAR, TBM_GETBUDDY, FALSE, 0)),
            GetDlgItem(page, IDC_KEY_LENGTH));
  for (int id : {IDC_KEY_LENGTH_LABEL, IDC_KEY_LENGTH_TRACKBAR, IDC_KEY_LENGTH,
                 IDC_KEY_LENGTH_MINIMUM, IDC_KEY_LENGTH_MAXIMUM}) {
    EXPECT_TRUE(Visible(id)) << id;
  }
  EXPECT_FALSE(Visible(IDC_WARNING_ICON));
  EXPECT_FALSE(Visible(IDC_WARNING_TEXT));
  EXPECT_NE(ControlStyle(page, IDC_WARNING_ICON) & SS_ICON, 0);
  EXPECT_NE(SendDlgItemMessageW(page, IDC_WARNING_ICON, STM_GETICON, 0, 0), 0);
}

TEST_F(WizardTest, EncryptionCarriesTheLengthAcrossCiphersAndNextStoresIt)
{
  Open();
  GoTo(2);
  SelectAlgorithm(1);
  EXPECT_EQ(TrackbarMax(IDC_KEY_LENGTH_TRACKBAR), 40);
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH), L"128 bits");
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH_MAXIMUM), L"448 bits");
  MoveTrackbar(IDC_KEY_LENGTH_TRACKBAR, 9);  // 200 bits
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH), L"200 bits");
  SelectAlgorithm(0);
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH), L"192 bits");
  EXPECT_EQ(TrackbarPosition(IDC_KEY_LENGTH_TRACKBAR), 1);
  SelectAlgorithm(2);
  EXPECT_EQ(TrackbarMax(IDC_KEY_LENGTH_TRACKBAR), 8);
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH), L"128 bits");
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH_MINIMUM), L"64 bits");

  SelectAlgorithm(1);
  MoveTrackbar(IDC_KEY_LENGTH_TRACKBAR, 40);
  EXPECT_EQ(ControlText(Page(), IDC_KEY_LENGTH), L"448 bits");
  EXPECT_FALSE(Visible(IDC_WARNING_TEXT));
  Next();
  EXPECT_EQ(Index(), 3);
  EXPECT_EQ(wizard_.Request().algorithm, 1u);
  EXPECT_EQ(wizard_.Request().keyBits, 448u);
}

TEST_F(WizardTest, PasswordPageTemplate)
{
  Open();
  const HWND page = GoTo(3);
  ExpectControls(
      DialogControls(page),
      {{-1, L"Static",
        L"Virtual disk password is used to protect its data from accessing by unauthorized "
        L"users. The password is case sensitive and may contain alphanumeric and any printable "
        L"characters (!@#$%, etc)."},
       {-1, L"Static", L"It is recommended to use passwords containing 8 or more symbols."},
       {-1, L"Static", L"Enter &password:"},
       {IDC_PASSWORD, L"Edit", L""},
       {-1, L"Static", L"&Confirm password:"},
       {IDC_CONFIRM_PASSWORD, L"Edit", L""},
       {IDC_WARNING_ICON, L"Static", L""},
       {IDC_WARNING_TEXT, L"Static",
        L"Please remember your password. If you lose it, it will be impossible to access the "
        L"data stored on virtual disk!"}});
  for (int id : {IDC_PASSWORD, IDC_CONFIRM_PASSWORD}) {
    EXPECT_NE(ControlStyle(page, id) & ES_PASSWORD, 0) << id;
    EXPECT_NE(ControlStyle(page, id) & ES_AUTOHSCROLL, 0) << id;
  }
  EXPECT_NE(SendDlgItemMessageW(page, IDC_WARNING_ICON, STM_GETICON, 0, 0), 0);
}

TEST_F(WizardTest, PasswordChecksKeepThePage)
{
  Open();
  GoTo(3);
  prompts_.Answer(IDOK);
  Next();
  EXPECT_EQ(Index(), 3);
  ExpectPrompt(0, u"Please enter the password.", u"Invalid Password");

  SetControlText(Page(), IDC_PASSWORD, L"Secret");
  SetControlText(Page(), IDC_CONFIRM_PASSWORD, L"secret");
  prompts_.Answer(IDOK);
  Next();
  EXPECT_EQ(Index(), 3);
  ExpectPrompt(1, u"Passwords mismatch! Please re-type your password.", u"Invalid Password");
  EXPECT_EQ(ControlText(Page(), IDC_PASSWORD), L"");
  EXPECT_EQ(ControlText(Page(), IDC_CONFIRM_PASSWORD), L"");
  EXPECT_EQ(GetFocus(), GetDlgItem(Page(), IDC_PASSWORD));
  EXPECT_TRUE(wizard_.Request().password.empty());

  SetControlText(Page(), IDC_PASSWORD, L"x");
  SetControlText(Page(), IDC_CONFIRM_PASSWORD, L"x");
  Next();
  EXPECT_EQ(Index(), kLocationPage);
  EXPECT_EQ(wizard_.Request().password, u"x");
  EXPECT_EQ(prompts_.Prompts().size(), 2u);
}

TEST_F(WizardTest, BackNeitherChecksNorStores)
{
  Open();
  GoTo(kLocationPage);
  wizard_.PressButton(PSBTN_BACK);
  PumpMessages();
  ASSERT_EQ(Index(), 3);
  EXPECT_TRUE(wizard_.Request().path.empty());
  SetControlText(Page(), IDC_PASSWORD, L"Secret");
  SetControlText(Page(), IDC_CONFIRM_PASSWORD, L"other");
  wizard_.PressButton(PSBTN_BACK);
  PumpMessages();
  ASSERT_EQ(Index(), 2);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_TRUE(wizard_.Request().password.empty());
  EXPECT_EQ(wizard_.Request().keyBits, 0u);
  // The typed texts stay in their boxes.
  wizard_.PressButton(PSBTN_NEXT);
  PumpMessages();
  ASSERT_EQ(Index(), 3);
  EXPECT_EQ(ControlText(Page(), IDC_PASSWORD), L"Secret");
  EXPECT_EQ(ControlText(Page(), IDC_CONFIRM_PASSWORD), L"other");
}

TEST_F(WizardTest, LocationPageTemplate)
{
  Open();
  const HWND page = GoTo(kLocationPage);
  ExpectControls(DialogControls(page),
                 {{-1, L"Static", L"Enter virtual disk name and location."},
                  {IDC_WIZARD_IMAGE_PATH, L"Edit", L""},
                  {IDC_BROWSE, L"Button", L"Browse..."},
                  {-1, L"Static", L"Click Next to create new virtual disk image."}});
  EXPECT_NE(ControlStyle(page, IDC_WIZARD_IMAGE_PATH) & ES_AUTOHSCROLL, 0);
}

TEST_F(WizardTest, LocationChecksShowTheirMessages)
{
  Open();
  GoTo(kLocationPage);
  prompts_.Answer(IDOK);
  Next();
  EXPECT_EQ(Index(), kLocationPage);
  ExpectPrompt(0, u"Please enter virtual disk image file path.", u"Invalid Path");
  EXPECT_EQ(GetFocus(), GetDlgItem(Page(), IDC_WIZARD_IMAGE_PATH));

  SetControlText(Page(), IDC_WIZARD_IMAGE_PATH, L"disk.qvi");
  prompts_.Answer(IDOK);
  Next();
  EXPECT_EQ(Index(), kLocationPage);
  ExpectPrompt(1, u"Please specify full path to virtual disk image file.", u"Invalid Path");

  SetControlText(Page(), IDC_WIZARD_IMAGE_PATH, L"Q:\\Locked\\disk.qvi");
  shell_.AnswerPrepareForWrite(0x40000005);
  prompts_.Answer(IDOK);
  Next();
  EXPECT_EQ(Index(), kLocationPage);
  ExpectPrompt(2,
               u"Cannot create Q:\\Locked\\disk.qvi.\nPlease check that the file path exists and "
               u"you have neccessary rights to create the file.",
               u"Error");
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].path, u"Q:\\Locked\\");
  EXPECT_EQ(shell_.Calls()[0].flags, 1u);
  EXPECT_EQ(wizard_.Request().path, u"Q:\\Locked\\disk.qvi");

  // A full path whose folder can be prepared lets the page go on to the creation.
  SetControlText(Page(), IDC_WIZARD_IMAGE_PATH, L"C:\\disk.qvi");
  shell_.AnswerPrepareForWrite(kStatusSuccess);
  EXPECT_EQ(PageNextAnswer(), 0);
  EXPECT_EQ(shell_.Calls().back().path, u"C:\\");
  EXPECT_EQ(prompts_.Prompts().size(), 3u);
}

TEST_F(WizardTest, BrowseAsksForASaveNameAndAddsTheExtension)
{
  Open();
  GoTo(kLocationPage);
  SetControlText(Page(), IDC_WIZARD_IMAGE_PATH, L"C:\\Disks\\old.qvi");
  fileDialogs_.Choose(u"C:\\Disks\\work", 1);
  Click(Page(), IDC_BROWSE);
  ASSERT_EQ(fileDialogs_.Calls().size(), 1u);
  const CScriptedFileDialogs::Call& call = fileDialogs_.Calls()[0];
  EXPECT_EQ(call.kind, CScriptedFileDialogs::Kind::kSave);
  EXPECT_EQ(call.request.owner, static_cast<WindowRef>(Page()));
  EXPECT_EQ(call.request.flags, 0x02000806u);
  EXPECT_EQ(call.request.fileName, u"C:\\Disks\\old.qvi");
  EXPECT_TRUE(call.request.defaultExtension.empty());
  EXPECT_EQ(ControlText(Page(), IDC_WIZARD_IMAGE_PATH), L"C:\\Disks\\work.qvi");
  EXPECT_EQ(wizard_.Request().path, u"C:\\Disks\\work.qvi");

  fileDialogs_.Choose(u"C:\\Disks\\raw.img", 2);
  Click(Page(), IDC_BROWSE);
  EXPECT_EQ(ControlText(Page(), IDC_WIZARD_IMAGE_PATH), L"C:\\Disks\\raw.img");

  fileDialogs_.Cancel();
  Click(Page(), IDC_BROWSE);
  EXPECT_EQ(ControlText(Page(), IDC_WIZARD_IMAGE_PATH), L"C:\\Disks\\raw.img");
}

TEST_F(WizardTest, HelpOpensTheTopicOfEachCollectingPage)
{
  Open();
  const int topics[] = {114, 112, 117, 109};
  for (int index = 1; index <= kLocationPage; ++index) {
    GoTo(index);
    help_.Answer(kStatusSuccess);
    wizard_.PressButton(PSBTN_HELP);
    PumpMessages();
  }
  ASSERT_EQ(help_.Calls().size(), 4u);
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_FALSE(help_.Calls()[i].contents);
    EXPECT_EQ(help_.Calls()[i].context, static_cast<uint32_t>(topics[i])) << i;
  }
}

TEST_F(WizardTest, CompletionPageShowsTheSummary)
{
  NewImageRequest& request = wizard_.Request();
  request.capacity = 1649267441664;
  request.fixedSize = 1;
  request.algorithm = 1;
  request.keyBits = 448;
  request.path = u"D:\\Disks\\work.qvi";
  Open();
  GoTo(kLocationPage);
  wizard_.JumpToSummary();
  PumpMessages();
  ASSERT_EQ(Index(), CNewVirtualDiskImageWizard::kSummaryPageIndex);
  const HWND page = Page();
  ExpectControls(
      DialogControls(page),
      {{IDC_WIZARD_TITLE, L"Static", L"Completing the New Virtual Disk Image Wizard"},
       {-1, L"Static", L"You have successfully created the new virtual disk image!"},
       {IDC_SUMMARY_BULLET_FIRST, L"Static", L"i"},
       {-1, L"Static", L"Virtual disk image:"},
       {IDC_SUMMARY_PATH, L"Static", L"D:\\Disks\\work.qvi"},
       {IDC_SUMMARY_BULLET_FIRST + 1, L"Static", L"i"},
       {-1, L"Static", L"Capacity:"},
       {IDC_SUMMARY_CAPACITY, L"Static", L"1.50 TB"},
       {IDC_SUMMARY_BULLET_FIRST + 2, L"Static", L"i"},
       {-1, L"Static", L"Encryption algorithm:"},
       {IDC_SUMMARY_ALGORITHM, L"Static", L"BLOWFISH-448"},
       {IDC_SUMMARY_BULLET_FIRST + 3, L"Static", L"i"},
       {-1, L"Static", L"Fixed-size image:"},
       {IDC_SUMMARY_FIXED_SIZE, L"Static", L"Yes"},
       {IDC_SUMMARY_BULLET_LAST, L"Static", L"i"},
       {-1, L"Static", L"FAT-compatible:"},
       {IDC_SUMMARY_FAT_COMPATIBLE, L"Static", L"No"},
       {-1, L"Static",
        L"To mount this virtual disk image immediately, select 'Mount virtual disk image'."},
       {IDC_SUMMARY_MOUNT, L"Button", L"Mount virtual disk image"},
       {-1, L"Static", L"To close this wizard, click Finish."}});
  EXPECT_NE(ControlStyle(page, IDC_SUMMARY_PATH) & SS_PATHELLIPSIS, 0);
  EXPECT_EQ(ControlStyle(page, IDC_SUMMARY_MOUNT) & BS_TYPEMASK, BS_AUTOCHECKBOX);
  EXPECT_EQ(CheckState(page, IDC_SUMMARY_MOUNT), static_cast<UINT>(BST_UNCHECKED));
  const HFONT bullet = CNewVirtualDiskImageWizard::BulletFontOf(sheet_);
  for (int id = IDC_SUMMARY_BULLET_FIRST; id <= IDC_SUMMARY_BULLET_LAST; ++id) {
    EXPECT_EQ(ControlFont(page, id), bullet) << id;
  }
  EXPECT_EQ(ControlFont(page, IDC_WIZARD_TITLE),
            CNewVirtualDiskImageWizard::ExteriorTitleFontOf(sheet_));
  // Only Finish: there is no way back to the choices, and no Help.
  EXPECT_TRUE(ButtonEnabled(kFinishButton));
  EXPECT_FALSE(ButtonEnabled(kBackButton));
  EXPECT_FALSE(ButtonEnabled(IDHELP));
}

TEST_F(WizardTest, SummaryOfAnAlgorithmOutsideTheListHasNoName)
{
  wizard_.Request().algorithm = 3;
  wizard_.Request().keyBits = 128;
  Open();
  wizard_.JumpToSummary();
  PumpMessages();
  EXPECT_EQ(ControlText(Page(), IDC_SUMMARY_ALGORITHM), L"-128");
}

namespace {

// The wizard run modally to its summary, ended with Finish after `check` set the check box.
class WizardFinishTest : public UiTest, public ::testing::WithParamInterface<bool> {};

}  // namespace

TEST_P(WizardFinishTest, FinishCopiesTheMountChoice)
{
  const bool mount = GetParam();
  CNewVirtualDiskImageWizard wizard;
  wizard.Request().path = u"C:\\Disks\\new.qvi";
  const INT_PTR result = RunModal([&] { return wizard.DoModal(nullptr); },
                                  [&](HWND) {
                                    wizard.JumpToSummary();
                                    PumpMessages();
                                    const HWND page = wizard.ActivePageWindow();
                                    if (mount) Click(page, IDC_SUMMARY_MOUNT);
                                    wizard.PressButton(PSBTN_FINISH);
                                  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(wizard.MountRequested(), mount);
  EXPECT_EQ(wizard.ImagePath(), u"C:\\Disks\\new.qvi");
}

INSTANTIATE_TEST_SUITE_P(CheckBox, WizardFinishTest, ::testing::Bool());

namespace {

class WizardCancelTest : public UiTest, public ::testing::WithParamInterface<int> {};

}  // namespace

TEST_P(WizardCancelTest, CancelBeforeCreationClosesAtOnceAndCreatesNothing)
{
  const std::filesystem::path image =
      std::filesystem::temp_directory_path() / L"cryptelle-wizard-cancel.qvi";
  std::filesystem::remove(image);
  CNewVirtualDiskImageWizard wizard;
  wizard.Request().path = Utf16(image.wstring().c_str());
  const INT_PTR result = RunModal([&] { return wizard.DoModal(nullptr); },
                                  [&](HWND) {
                                    wizard.SetActivePage(GetParam());
                                    PumpMessages();
                                    wizard.PressButton(PSBTN_CANCEL);
                                  });
  EXPECT_NE(result, 1);
  EXPECT_FALSE(wizard.MountRequested());
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_TRUE(shell_.Calls().empty());
  EXPECT_FALSE(std::filesystem::exists(image));
}

INSTANTIATE_TEST_SUITE_P(CollectingPages, WizardCancelTest, ::testing::Range(0, 5));

TEST_F(WizardTest, WholeRunCreatesTheImageAndEndsOnTheSummary)
{
  FakeDeviceHost host;
  const std::filesystem::path image =
      std::filesystem::temp_directory_path() / L"cryptelle-wizard-run.qvi";
  std::filesystem::remove(image);
  Open();
  Next();
  ASSERT_EQ(Index(), 1);
  TypeCapacity(L"5.5 MB");
  Next();
  ASSERT_EQ(Index(), 2);
  SelectAlgorithm(1);
  MoveTrackbar(IDC_KEY_LENGTH_TRACKBAR, 40);
  Next();
  ASSERT_EQ(Index(), 3);
  SetControlText(Page(), IDC_PASSWORD, L"Secret");
  SetControlText(Page(), IDC_CONFIRM_PASSWORD, L"Secret");
  Next();
  ASSERT_EQ(Index(), kLocationPage);
  SetControlText(Page(), IDC_WIZARD_IMAGE_PATH, image.wstring());
  shell_.AnswerPrepareForWrite(kStatusSuccess);
  Next();
  ASSERT_TRUE(PumpUntil([&] { return Index() == CNewVirtualDiskImageWizard::kSummaryPageIndex; },
                        std::chrono::seconds(15)));
  EXPECT_TRUE(prompts_.Prompts().empty());

  EXPECT_TRUE(std::filesystem::exists(image));
  const std::vector<DeviceHostCall> calls = host.Calls();
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls[0].operation, DeviceHostOperation::kMountWithPassword);
  EXPECT_EQ(calls[0].imagePath, Utf16(image.wstring().c_str()));
  EXPECT_EQ(calls[0].password, u"Secret");
  EXPECT_EQ(calls[0].mountFlags, 8u);
  // The new disk got its file system on the temporary drive, which was then let go.
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[1].operation, DeviceHostOperation::kFormatVolume);
  EXPECT_EQ(calls[1].mountPoint, calls[0].mountPoint);
  EXPECT_EQ(calls[1].selector, 0u);
  EXPECT_EQ(calls[2].operation, DeviceHostOperation::kDismountMountPoint);
  EXPECT_EQ(calls[2].forced, 1u);

  EXPECT_EQ(ControlText(Page(), IDC_SUMMARY_PATH), image.wstring());
  EXPECT_EQ(ControlText(Page(), IDC_SUMMARY_CAPACITY), L"5.0 MB");
  EXPECT_EQ(ControlText(Page(), IDC_SUMMARY_ALGORITHM), L"BLOWFISH-448");
  EXPECT_EQ(ControlText(Page(), IDC_SUMMARY_FIXED_SIZE), L"No");
  EXPECT_EQ(ControlText(Page(), IDC_SUMMARY_FAT_COMPATIBLE), L"No");
  Click(Page(), IDC_SUMMARY_MOUNT);
  wizard_.PressButton(PSBTN_FINISH);
  EXPECT_TRUE(PumpUntil([&] { return wizard_.Handle() == nullptr; }));
  EXPECT_TRUE(wizard_.MountRequested());
  EXPECT_EQ(wizard_.ImagePath(), Utf16(image.wstring().c_str()));
  std::filesystem::remove(image);
}
