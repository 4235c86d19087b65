// The password fields of the change-password and clear dialogs.
#include "dialogs/password_checks.h"

#include <gtest/gtest.h>

namespace {

const Prompt kEnterPassword{40031, u"Please enter the password.", 40033, 0x10};
const Prompt kMismatch{40032, u"Passwords mismatch! Please re-type your password.", 40033, 0x10};

}  // namespace

TEST(NewPasswordCheck, EmptyOldPasswordFirst)
{
  const NewPasswordCheck check = CheckNewPassword(u"", u"", u"x");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, kEnterPassword);
  EXPECT_EQ(check.focus, NewPasswordField::kOldPassword);
  EXPECT_FALSE(check.emptyNewPassword);
}

TEST(NewPasswordCheck, EmptyNewPassword)
{
  const NewPasswordCheck check = CheckNewPassword(u"old", u"", u"");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, kEnterPassword);
  EXPECT_EQ(check.focus, NewPasswordField::kNewPassword);
  EXPECT_FALSE(check.emptyNewPassword);
}

TEST(NewPasswordCheck, MismatchEmptiesTheNewPasswordOnly)
{
  const NewPasswordCheck check = CheckNewPassword(u"old", u"new", u"neW");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, kMismatch);
  EXPECT_EQ(check.focus, NewPasswordField::kNewPassword);
  EXPECT_TRUE(check.emptyNewPassword);
}

TEST(NewPasswordCheck, AnyMatchingNewPasswordIsAccepted)
{
  for (const std::u16string_view password : {u"a", u"old", u"\u00e9t\u00e9 2026!"}) {
    const NewPasswordCheck check = CheckNewPassword(u"old", password, password);
    EXPECT_TRUE(check.accept);
    EXPECT_FALSE(check.prompt.has_value());
    EXPECT_FALSE(check.emptyNewPassword);
  }
}

TEST(ClearPasswordCheck, OnlyAnEmptyPasswordIsRefused)
{
  EXPECT_EQ(CheckClearPassword(u""), kEnterPassword);
  EXPECT_FALSE(CheckClearPassword(u"x").has_value());
}

TEST(ImagePathAccepted, OkNeedsAPath)
{
  EXPECT_FALSE(ImagePathAccepted(u""));
  EXPECT_TRUE(ImagePathAccepted(u"d.qvi"));
}
