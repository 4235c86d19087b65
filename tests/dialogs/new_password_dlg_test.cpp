// The change-password dialog under Wine: its template as the window shows it, the Browse
// button, the OK enabling, the password checks with their prompts and focus, the wiping of
// the passwords, and the whole command on a real image.
#include "dialogs/new_password_dlg_win.h"

#include <gtest/gtest.h>

#include "app/prompt.h"
#include "dialog_controls.h"
#include "dialogs/image_browse.h"
#include "password_image.h"
#include "res/resource.h"
#include "res/texts.h"
#include "support/ui_harness.h"
#include "system/wide_text_win.h"

namespace {

const std::u16string kEnterPassword = u"Please enter the password.";
const std::u16string kMismatch = u"Passwords mismatch! Please re-type your password.";
const std::u16string kInvalidPassword = u"Invalid Password";

class NewPasswordDlgTest : public UiTest {
 protected:
  bool AskWith(NewPasswordAnswers& answers, const std::function<void(HWND)>& script)
  {
    return AskModally(dialog_, answers, script);
  }

  void ExpectPrompt(size_t index, const std::u16string& text, HWND owner)
  {
    ASSERT_GT(prompts_.Prompts().size(), index);
    const auto& prompt = prompts_.Prompts()[index];
    EXPECT_EQ(prompt.text, text);
    EXPECT_EQ(prompt.caption, kInvalidPassword);
    EXPECT_EQ(prompt.flags, kPromptError);
    EXPECT_EQ(prompt.owner, owner);
  }

  CNewPasswordDlg dialog_;
};

TEST_F(NewPasswordDlgTest, TheTemplateShowsTheDesignedControls)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(CWindow::WindowText(window), L"Set New Password");
  const std::vector<ControlSeen> controls = DialogControls(window);
  ASSERT_NO_FATAL_FAILURE(ExpectControls(controls, {
                                                       {-1, L"Button", L"Virtual disk image"},
                                                       {IDC_IMAGE_PATH, L"Edit", L""},
                                                       {IDC_BROWSE, L"Button", L"Browse..."},
                                                       {-1, L"Static", L"Old &Password:"},
                                                       {IDC_PASSWORD, L"Edit", L""},
                                                       {-1, L"Static", L"&New Password:"},
                                                       {IDC_NEW_PASSWORD, L"Edit", L""},
                                                       {-1, L"Static", L"&Confirm Password:"},
                                                       {IDC_CONFIRM_PASSWORD, L"Edit", L""},
                                                       {IDOK, L"Button", L"OK"},
                                                       {IDCANCEL, L"Button", L"Cancel"},
                                                   }));
  EXPECT_EQ(controls[0].style & BS_TYPEMASK, static_cast<DWORD>(BS_GROUPBOX));
  EXPECT_EQ(controls[1].style & ES_PASSWORD, 0u);
  for (const size_t password : {4u, 6u, 8u}) {
    EXPECT_NE(controls[password].style & ES_PASSWORD, 0u) << password;
  }
  EXPECT_EQ(controls[9].style & BS_TYPEMASK, static_cast<DWORD>(BS_DEFPUSHBUTTON));
  EXPECT_EQ(controls[10].style & BS_TYPEMASK, static_cast<DWORD>(BS_PUSHBUTTON));
  EXPECT_NE(SendMessageW(window, WM_GETICON, ICON_BIG, 0), 0);
  EXPECT_NE(SendMessageW(window, WM_GETICON, ICON_SMALL, 0), 0);
}

TEST_F(NewPasswordDlgTest, OkIsEnabledOnlyWhileThePathIsNotEmpty)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(IsControlEnabled(window, IDOK));
  SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
  EXPECT_TRUE(IsControlEnabled(window, IDOK));
  SetControlText(window, IDC_IMAGE_PATH, L"");
  EXPECT_FALSE(IsControlEnabled(window, IDOK));
}

TEST_F(NewPasswordDlgTest, BrowseStartsFromThePathAndPutsTheChosenImageIntoIt)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\old.qvi");
  fileDialogs_.Choose(u"C:\\disks\\new.qvi");
  Click(window, IDC_BROWSE);
  ASSERT_EQ(fileDialogs_.Calls().size(), 1u);
  const auto& call = fileDialogs_.Calls()[0];
  EXPECT_EQ(call.kind, CScriptedFileDialogs::Kind::kOpen);
  EXPECT_EQ(call.request.owner, window);
  EXPECT_EQ(call.request.fileName, u"C:\\disks\\old.qvi");
  EXPECT_EQ(call.request.flags, 0x02001004u);
  EXPECT_EQ(call.request.filter, LoadText(IDS_IMAGE_FILE_FILTER));
  EXPECT_TRUE(call.request.initialFolder.empty());
  EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"C:\\disks\\new.qvi");
  EXPECT_TRUE(IsControlEnabled(window, IDOK));

  fileDialogs_.Cancel();
  Click(window, IDC_BROWSE);
  EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"C:\\disks\\new.qvi");
}

TEST_F(NewPasswordDlgTest, AnEmptyOldPasswordIsAskedForAndFocused)
{
  NewPasswordAnswers answers;
  prompts_.Answer(kIdOk);
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    SetControlText(window, IDC_NEW_PASSWORD, L"new secret");
    SetControlText(window, IDC_CONFIRM_PASSWORD, L"new secret");
    Click(window, IDOK);
    ExpectPrompt(0, kEnterPassword, window);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_PASSWORD));
    EXPECT_EQ(ControlText(window, IDC_NEW_PASSWORD), L"new secret");
    Click(window, IDCANCEL);
  });
  EXPECT_FALSE(ok);
  EXPECT_TRUE(answers.newPassword.empty());
}

TEST_F(NewPasswordDlgTest, AnEmptyNewPasswordIsAskedForAndFocused)
{
  NewPasswordAnswers answers;
  prompts_.Answer(kIdOk);
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    SetControlText(window, IDC_PASSWORD, L"old secret");
    Click(window, IDOK);
    ExpectPrompt(0, kEnterPassword, window);
    EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_NEW_PASSWORD));
    Click(window, IDCANCEL);
  });
  EXPECT_FALSE(ok);
}

TEST_F(NewPasswordDlgTest, AMismatchEmptiesTheNewPasswordsAndKeepsTheRest)
{
  NewPasswordAnswers answers;
  prompts_.Answer(kIdOk);
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    SetControlText(window, IDC_PASSWORD, L"old secret");
    SetControlText(window, IDC_NEW_PASSWORD, L"new secret");
    SetControlText(window, IDC_CONFIRM_PASSWORD, L"New secret");
    Click(window, IDOK);
    ExpectPrompt(0, kMismatch, window);
    EXPECT_EQ(ControlText(window, IDC_IMAGE_PATH), L"C:\\disks\\work.qvi");
    EXPECT_EQ(ControlText(window, IDC_PASSWORD), L"old secret");
    EXPECT_EQ(ControlText(window, IDC_NEW_PASSWORD), L"");
    EXPECT_EQ(ControlText(window, IDC_CONFIRM_PASSWORD), L"");
    EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_NEW_PASSWORD));
    EXPECT_TRUE(dialog_.NewPassword().empty());
    Click(window, IDCANCEL);
  });
  EXPECT_FALSE(ok);
}

TEST_F(NewPasswordDlgTest, OkHandsTheFieldsOverAndWipesTheDialogsCopies)
{
  NewPasswordAnswers answers;
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    SetControlText(window, IDC_PASSWORD, L"same");
    SetControlText(window, IDC_NEW_PASSWORD, L"same");
    SetControlText(window, IDC_CONFIRM_PASSWORD, L"same");
    Click(window, IDOK);
  });
  EXPECT_TRUE(ok);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_EQ(answers.path, u"C:\\disks\\work.qvi");
  EXPECT_EQ(answers.oldPassword, u"same");
  EXPECT_EQ(answers.newPassword, u"same");
  EXPECT_EQ(dialog_.Path(), u"C:\\disks\\work.qvi");
  EXPECT_TRUE(dialog_.OldPassword().empty());
  EXPECT_TRUE(dialog_.NewPassword().empty());
}

TEST_F(NewPasswordDlgTest, CancelHandsNothingOver)
{
  NewPasswordAnswers answers;
  const bool ok = AskWith(answers, [&](HWND window) {
    SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
    SetControlText(window, IDC_PASSWORD, L"old secret");
    Click(window, IDCANCEL);
  });
  EXPECT_FALSE(ok);
  EXPECT_TRUE(answers.path.empty());
  EXPECT_TRUE(answers.oldPassword.empty());
}

TEST_F(NewPasswordDlgTest, ThePasswordFieldsAreWipedBeforeTheyAreDestroyed)
{
  const HWND window = dialog_.Create(nullptr);
  ASSERT_NE(window, nullptr);
  std::vector<std::unique_ptr<CTextAtDestroy>> fields;
  for (const int id : {IDC_PASSWORD, IDC_NEW_PASSWORD, IDC_CONFIRM_PASSWORD}) {
    SetControlText(window, id, L"secret");
    fields.push_back(std::make_unique<CTextAtDestroy>(GetDlgItem(window, id)));
  }
  SetControlText(window, IDC_IMAGE_PATH, L"C:\\disks\\work.qvi");
  CTextAtDestroy path(GetDlgItem(window, IDC_IMAGE_PATH));
  DestroyWindow(window);
  for (const auto& field : fields) {
    EXPECT_TRUE(field->destroyed);
    EXPECT_EQ(field->text, L"");
  }
  EXPECT_TRUE(path.destroyed);
  EXPECT_EQ(path.text, L"C:\\disks\\work.qvi");
}

TEST_F(NewPasswordDlgTest, TheCommandReKeysARealImageThroughTheDialog)
{
  TempDir dir;
  const std::u16string path = dir.File(u"work.qvi");
  ASSERT_FALSE(IsFailure(CreatePasswordImage(path, u"old secret", 1 << 20)));
  prompts_.Answer(kIdOk);
  RunModal(
      [&] {
        ChangePasswordCommand(nullptr, dialog_);
        return INT_PTR{0};
      },
      [&](HWND window) {
        SetControlText(window, IDC_IMAGE_PATH, std::wstring(Wide(path)));
        SetControlText(window, IDC_PASSWORD, L"old secret");
        SetControlText(window, IDC_NEW_PASSWORD, L"new secret");
        SetControlText(window, IDC_CONFIRM_PASSWORD, L"new secret");
        Click(window, IDOK);
      });
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text,
            u"Virtual disk image password has been successfuly changed.");
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Operation Complete");
  EXPECT_FALSE(IsFailure(OpenWithPassword(path, u"new secret")));
  EXPECT_TRUE(IsFailure(OpenWithPassword(path, u"old secret")));
}

}  // namespace
