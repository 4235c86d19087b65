// The "Change virtual disk image password" command: the dialog asks for the image, its
// current password and a new one; the image's headers are then re-encrypted under the new
// password's key. The image's data is not touched.
#pragma once

#include <string>
#include <string_view>

#include "app/prompt.h"
#include "services/window_ref.h"
#include "system/status.h"

// What the dialog hands over when it closes with OK. The passwords are overwritten when
// the answers are destroyed.
struct NewPasswordAnswers {
  std::u16string path;
  std::u16string oldPassword;
  std::u16string newPassword;

  NewPasswordAnswers() = default;
  ~NewPasswordAnswers();
  NewPasswordAnswers(const NewPasswordAnswers&) = delete;
  NewPasswordAnswers& operator=(const NewPasswordAnswers&) = delete;
};

// The change-password dialog as the command sees it.
class CNewPasswordInput {
 public:
  // Shows the dialog owned by `owner`; true when it closed with OK, its fields then in
  // `answers`.
  virtual bool Ask(WindowRef owner, NewPasswordAnswers& answers) = 0;

 protected:
  ~CNewPasswordInput() = default;
};

// Re-keys the image at `path`, in this order: its key information, a key buffer of its key
// length, the old password's key, the open, the new password's key (same salt, same
// buffer), the change of key, and the close whenever the open succeeded, whatever the change
// gave. The first failing status is returned, the close's included.
StatusCode ChangeImagePassword(const std::u16string& path, std::u16string_view oldPassword,
                               std::u16string_view newPassword);

// The command: asks `input`; after OK re-keys the image and tells the user, owned by
// `owner`: "password has been successfuly changed" on success, otherwise the failure's
// message under "Cannot Change Password". A Retry shows the same message again; the steps
// are not repeated. Cancel in the dialog does nothing.
void ChangePasswordCommand(WindowRef owner, CNewPasswordInput& input);

// The completion: "Virtual disk image password has been successfuly changed." under
// "Operation Complete".
Prompt PasswordChangedPrompt();
