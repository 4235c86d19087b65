#include "wizard/welcome_page_win.h"

#include "res/resource.h"

CNewVirtualDiskImageWizard::CWelcomePage::CWelcomePage(CNewVirtualDiskImageWizard&)
    : CPropertyPage(IDD_WIZARD_WELCOME)
{
  SetExterior();
}

bool CNewVirtualDiskImageWizard::CWelcomePage::OnInitDialog(HWND)
{
  SendDlgItemMessageW(hwnd_, IDC_WIZARD_TITLE, WM_SETFONT,
                      reinterpret_cast<WPARAM>(ExteriorTitleFontOf(SheetWindow())), TRUE);
  return true;
}

int CNewVirtualDiskImageWizard::CWelcomePage::OnSetActive()
{
  SetWizardButtons(PSWIZB_NEXT);
  return 0;
}
