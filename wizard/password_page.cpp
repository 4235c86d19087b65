#include "wizard/password_page.h"

#include "app/password_prompts.h"

PasswordPageCheck CheckPasswordPage(std::u16string_view password, std::u16string_view confirmation)
{
  PasswordPageCheck check;
  if (password.empty()) {
    check.prompt = EnterPasswordPrompt();
  } else if (password != confirmation) {
    check.prompt = PasswordMismatchPrompt();
    check.emptyBoth = true;
  } else {
    check.accept = true;
  }
  return check;
}
