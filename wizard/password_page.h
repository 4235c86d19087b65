// What Next does on the wizard's password page. Any non-empty password that equals its
// confirmation exactly (code unit by code unit, so letter case counts) is accepted: the
// advice of 8 or more symbols is text only.
#pragma once

#include <optional>
#include <string_view>

#include "app/prompt.h"

struct PasswordPageCheck {
  // Go on to the next page; otherwise `prompt` is shown, the page stays and the password
  // box gets the focus.
  bool accept = false;
  std::optional<Prompt> prompt;
  // A mismatch: both boxes are emptied, so the user types both again.
  bool emptyBoth = false;
};

// An empty password gives "Please enter the password." (even when the confirmation is empty
// too); a differing confirmation gives "Passwords mismatch!".
PasswordPageCheck CheckPasswordPage(std::u16string_view password, std::u16string_view confirmation);
