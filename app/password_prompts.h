// The two prompts of every password field pair (the change-password dialog, the clear
// dialog, the wizard's password page), under the caption "Invalid Password".
#pragma once

#include "app/prompt.h"

// "Please enter the password." for an empty password.
Prompt EnterPasswordPrompt();

// "Passwords mismatch! Please re-type your password." when the confirmation differs.
Prompt PasswordMismatchPrompt();
