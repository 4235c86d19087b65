// The clear dialog under Wine: its template as the window shows it, the Browse button, the
// OK enabling, the empty-password prompt, the wiping of the password, and the hand-over.
#include "dialogs/clear_image_dlg_win.h"

#include <gtest/gtest.h>

#include "app/prompt.h"
#include "dialog_controls.h"
#include "res/resource.h"
#include "support/ui_harness.h"

namespace {

class ClearImageDlgTest : public UiTest {
 protected:
  bool AskWith(ClearImageAnswers& answers, const std::function<void(HWND)>& script)
  {
    return AskModally(dialog_, answers, script);
  }

  CClearVirtualDiskImageDlg dialog_;
};

TEST_F(ClearImageDlgTest, TheTemplateShowsTheDesignedControls)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(CWindow::WindowText(window), L"Clear Virtual Disk Image");
  const std::vector<ControlSeen> controls = DialogControls(window);
  ASSERT_NO_FATAL_FAILURE(ExpectControls(
      controls,
      {
          {-1, L"Static", L"Disk &Image:"},
          {IDC_IMAGE_PATH, L"Edit", L""},
          {IDC_BROWSE, L"Button", L"&Browse..."},
          {-1, L"Static", L"&Password:"},
          {IDC_PASSWORD, L"Edit", L""},
          {IDC_WARNING_ICON, L"Static", L""},
          {IDC_WARNING_TEXT, L"Static",
           L"After the virtual disk image has been cleared it will be impossible to restore its "
           L"contents!"},
          {IDOK, L"Button", L"&OK"},
          {IDCANCEL, L"Button", L"&Cancel"},
      }));
  EXPECT_EQ(controls[1].style & ES_PASSWORD, 0u);
  EXPECT_NE(controls[4].style & ES_PASSWORD, 0u);
  EXPECT_EQ(controls[5].style & SS_TYPEMASK, static_cast<DWORD>(SS_ICON));
  EXPECT_NE(SendDlgItemMessageW(window, IDC_WARNING_ICON, STM_GETICON, 0, 0), 0);
  EXPECT_EQ(controls[7].style & BS_TYPEMASK, static_cast<DWORD>(BS_DEFPUSHBUTTON));
  EXPECT_EQ(controls[8].style & BS_TYPEMASK, static_cast<DWORD>(BS_PUSHBUTTON));
  EXPECT_NE(SendMessageW(window, WM_GETICON, ICON_BIG, 0), 0);
}

TEST_F(ClearImageDlgTest, OkFollowsThePathAndBrowseFillsIt)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(IsControlEnabled(window, IDOK));
  fileDialogs_.Choose(u"C:\\disks\\work.qvi");
  Click(window, IDC_BROWSE);
  ASSERT_EQ(fileDialogs_.Calls().size(), 1u);
  EXPECT_EQ(fileDialogs_.Calls()[0].request.flags, 0x02001004u);
  EXPECT_EQ(fileDialogs_.Calls()[0].request.fileName, u"");
  EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"C:\\disks\\work.qvi");
  EXPECT_TRUE(IsControlEnabled(window, IDOK));
}

TEST_F(ClearImageDlgTest, AnEmptyPasswordIsAskedForAndFocused)
{
  ClearImageAnswers answers;
  prompts_.Answer(kIdOk);
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    Click(window, IDOK);
    ASSERT_EQ(prompts_.Prompts().size(), 1u);
    EXPECT_EQ(prompts_.Prompts()[0].text, u"Please enter the password.");
    EXPECT_EQ(prompts_.Prompts()[0].caption, u"Invalid Password");
    EXPECT_EQ(prompts_.Prompts()[0].flags, kPromptError);
    EXPECT_EQ(prompts_.Prompts()[0].owner, window);
    EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_PASSWORD));
    Click(window, IDCANCEL);
  });
  EXPECT_FALSE(ok);
}

TEST_F(ClearImageDlgTest, OkHandsThePathAndPasswordOver)
{
  ClearImageAnswers answers;
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    SetControlText(window, IDC_PASSWORD, L"secret");
    Click(window, IDOK);
  });
  EXPECT_TRUE(ok);
  EXPECT_EQ(answers.path, u"C:\\disks\\work.qvi");
  EXPECT_EQ(answers.password, u"secret");
  EXPECT_TRUE(dialog_.Password().empty());
}

TEST_F(ClearImageDlgTest, ThePasswordFieldIsWipedBeforeItIsDestroyed)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  SetControlText(window, IDC_PASSWORD, L"secret");
  CTextAtDestroy field(GetDlgItem(window, IDC_PASSWORD));
  DestroyWindow(window);
  EXPECT_TRUE(field.destroyed);
  EXPECT_EQ(field.text, L"");
}

}  // namespace
