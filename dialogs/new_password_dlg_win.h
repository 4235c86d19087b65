// The change-password dialog: the image path, its current password and a new one with its
// confirmation. OK checks the passwords; the command then re-keys the image.
#pragma once

#include <string>

#include "dialogs/change_password.h"
#include "dialogs/image_password_dlg_win.h"

class CNewPasswordDlg final : public CImagePasswordDlg, public CNewPasswordInput {
 public:
  CNewPasswordDlg();
  ~CNewPasswordDlg() override;

  const std::u16string& OldPassword() const { return oldPassword_; }
  const std::u16string& NewPassword() const { return newPassword_; }

  // Runs the dialog; after OK its fields move into `answers` and its own copies are wiped.
  bool Ask(WindowRef owner, NewPasswordAnswers& answers) override;

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  void OnOk() override;

 private:
  std::u16string oldPassword_;
  std::u16string newPassword_;
};
