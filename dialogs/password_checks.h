// What OK does with the password fields of the change-password and clear dialogs. Any
// non-empty password is accepted: there is no rule on length or content, and a new password
// may equal the old one. Passwords are compared exactly, code unit by code unit.
#pragma once

#include <optional>
#include <string_view>

#include "app/prompt.h"

// The change-password dialog's password fields.
enum class NewPasswordField { kNone, kOldPassword, kNewPassword };

struct NewPasswordCheck {
  // Close the dialog with OK; otherwise `prompt` is shown and the dialog stays open.
  bool accept = false;
  std::optional<Prompt> prompt;
  // The field that gets the focus after the prompt.
  NewPasswordField focus = NewPasswordField::kNone;
  // A mismatch: the new password and the confirmation are emptied; the path and the old
  // password stay.
  bool emptyNewPassword = false;
};

// In this order: an empty old password, then an empty new password ("Please enter the
// password."), then a confirmation that differs from the new password ("Passwords
// mismatch!").
NewPasswordCheck CheckNewPassword(std::u16string_view oldPassword, std::u16string_view newPassword,
                                  std::u16string_view confirmation);

// The clear dialog has one password field and no confirmation: none when the password is
// given, "Please enter the password." when it is empty (the field gets the focus).
std::optional<Prompt> CheckClearPassword(std::u16string_view password);

// Both dialogs enable OK only while the image path field is not empty.
constexpr bool ImagePathAccepted(std::u16string_view path)
{
  return !path.empty();
}
