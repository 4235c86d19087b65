#include "dialogs/password_checks.h"

#include "app/password_prompts.h"

NewPasswordCheck CheckNewPassword(std::u16string_view oldPassword, std::u16string_view newPassword,
                                  std::u16string_view confirmation)
{
  NewPasswordCheck check;
  if (oldPassword.empty()) {
    check.prompt = EnterPasswordPrompt();
    check.focus = NewPasswordField::kOldPassword;
  } else if (newPassword.empty()) {
    check.prompt = EnterPasswordPrompt();
    check.focus = NewPasswordField::kNewPassword;
  } else if (newPassword != confirmation) {
    check.prompt = PasswordMismatchPrompt();
    check.focus = NewPasswordField::kNewPassword;
    check.emptyNewPassword = true;
  } else {
    check.accept = true;
  }
  return check;
}

std::optional<Prompt> CheckClearPassword(std::u16string_view password)
{
  if (password.empty()) return EnterPasswordPrompt();
  return std::nullopt;
}
