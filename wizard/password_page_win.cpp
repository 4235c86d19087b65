#include "wizard/password_page_win.h"

#include "res/resource.h"
#include "system/wipe.h"
#include "ui/controls/edit.h"
#include "wizard/password_page.h"

CNewVirtualDiskImageWizard::CPasswordPage::CPasswordPage(CNewVirtualDiskImageWizard& wizard)
    : CInteriorPage(wizard, IDD_WIZARD_PASSWORD, IDS_PASSWORD_TITLE, IDS_PASSWORD_SUBTITLE)
{
}

CNewVirtualDiskImageWizard::CPasswordPage::~CPasswordPage()
{
  WipeText(password_);
  WipeText(confirmation_);
}

bool CNewVirtualDiskImageWizard::CPasswordPage::OnInitDialog(HWND)
{
  SetExclamationIcon(IDC_WARNING_ICON);
  return true;
}

int CNewVirtualDiskImageWizard::CPasswordPage::OnWizardNext()
{
  WipeText(password_);
  WipeText(confirmation_);
  password_ = ReadField(IDC_PASSWORD);
  confirmation_ = ReadField(IDC_CONFIRM_PASSWORD);
  const PasswordPageCheck check = CheckPasswordPage(password_, confirmation_);
  if (!check.accept) {
    if (check.prompt) ShowPrompt(hwnd_, *check.prompt);
    if (check.emptyBoth) {
      WipeText(password_);
      WipeText(confirmation_);
      for (int id : {IDC_PASSWORD, IDC_CONFIRM_PASSWORD}) {
        CEditCtrl(Item(id)).WipeText();
      }
    }
    FocusField(IDC_PASSWORD);
    return -1;
  }
  WipeText(Request().password);
  Request().password = password_;
  WipeText(confirmation_);
  return 0;
}

void CNewVirtualDiskImageWizard::CPasswordPage::OnDestroy()
{
  for (int id : {IDC_PASSWORD, IDC_CONFIRM_PASSWORD}) CEditCtrl(Item(id)).WipeText();
}
