#include "dialogs/new_password_dlg_win.h"

#include <utility>

#include "app/prompt.h"
#include "dialogs/password_checks.h"
#include "res/resource.h"
#include "services/window_ref_win.h"
#include "system/wipe.h"
#include "ui/controls/edit.h"

CNewPasswordDlg::CNewPasswordDlg()
    : CImagePasswordDlg(IDD_SET_PASSWORD, {IDC_PASSWORD, IDC_NEW_PASSWORD, IDC_CONFIRM_PASSWORD})
{
}

CNewPasswordDlg::~CNewPasswordDlg()
{
  WipeText(oldPassword_);
  WipeText(newPassword_);
}

bool CNewPasswordDlg::Ask(WindowRef owner, NewPasswordAnswers& answers)
{
  if (DoModal(ToHwnd(owner)) != IDOK) return false;
  answers.path = path_;
  answers.oldPassword = std::move(oldPassword_);
  answers.newPassword = std::move(newPassword_);
  // A short text moved out leaves its characters in the member's own buffer.
  WipeText(oldPassword_);
  WipeText(newPassword_);
  return true;
}

bool CNewPasswordDlg::OnInitDialog(HWND defaultFocus)
{
  bool written = CImagePasswordDlg::OnInitDialog(defaultFocus);
  written = PutField(IDC_PASSWORD, oldPassword_) && written;
  written = PutField(IDC_NEW_PASSWORD, newPassword_) && written;
  return written;
}

void CNewPasswordDlg::OnOk()
{
  path_ = ReadField(IDC_IMAGE_PATH);
  oldPassword_ = ReadField(IDC_PASSWORD);
  newPassword_ = ReadField(IDC_NEW_PASSWORD);
  std::u16string confirmation = ReadField(IDC_CONFIRM_PASSWORD);
  const NewPasswordCheck check = CheckNewPassword(oldPassword_, newPassword_, confirmation);
  WipeText(confirmation);
  if (check.accept) {
    EndDialog(IDOK);
    return;
  }
  if (check.prompt) ShowPrompt(ToWindowRef(hwnd_), *check.prompt);
  if (check.emptyNewPassword) {
    WipeText(newPassword_);
    PutField(IDC_IMAGE_PATH, path_);
    PutField(IDC_PASSWORD, oldPassword_);
    CEditCtrl(Item(IDC_NEW_PASSWORD)).WipeText();
    CEditCtrl(Item(IDC_CONFIRM_PASSWORD)).WipeText();
  }
  if (check.focus == NewPasswordField::kOldPassword) FocusField(IDC_PASSWORD);
  if (check.focus == NewPasswordField::kNewPassword) FocusField(IDC_NEW_PASSWORD);
}
