// Next on the wizard's password page.
#include "wizard/password_page.h"

#include <gtest/gtest.h>

namespace {

const Prompt kEnterPassword{40031, u"Please enter the password.", 40033, 0x10};
const Prompt kMismatch{40032, u"Passwords mismatch! Please re-type your password.", 40033, 0x10};

}  // namespace

TEST(PasswordPage, OneCharacterIsEnough)
{
  const PasswordPageCheck check = CheckPasswordPage(u"x", u"x");
  EXPECT_TRUE(check.accept);
  EXPECT_FALSE(check.prompt.has_value());
  EXPECT_FALSE(check.emptyBoth);
}

TEST(PasswordPage, EmptyPasswordBeforeMismatch)
{
  for (const std::u16string_view confirmation : {u"", u"x"}) {
    const PasswordPageCheck check = CheckPasswordPage(u"", confirmation);
    EXPECT_FALSE(check.accept);
    EXPECT_EQ(check.prompt, kEnterPassword);
    EXPECT_FALSE(check.emptyBoth);
  }
}

TEST(PasswordPage, LetterCaseCountsAndAMismatchEmptiesBoth)
{
  const PasswordPageCheck check = CheckPasswordPage(u"Secret", u"secret");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, kMismatch);
  EXPECT_TRUE(check.emptyBoth);
}
