// The prompts of the password fields.
#include "app/password_prompts.h"

#include <gtest/gtest.h>

#include "res/resource.h"

TEST(PasswordPrompts, EnterPassword)
{
  EXPECT_EQ(EnterPasswordPrompt(),
            (Prompt{40031, u"Please enter the password.", 40033, kMbOk | kMbIconError}));
  EXPECT_EQ(IDS_INVALID_PASSWORD_CAPTION, 40033u);
}

TEST(PasswordPrompts, Mismatch)
{
  EXPECT_EQ(PasswordMismatchPrompt(),
            (Prompt{40032, u"Passwords mismatch! Please re-type your password.", 40033, 0x10}));
}
