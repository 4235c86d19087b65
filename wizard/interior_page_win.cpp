#include "wizard/interior_page_win.h"

#include "services/help.h"

CNewVirtualDiskImageWizard::CInteriorPage::CInteriorPage(CNewVirtualDiskImageWizard& wizard,
                                                         UINT templateId, UINT titleId,
                                                         UINT subtitleId)
    : CPropertyPage(templateId), wizard_(wizard)
{
  SetHeader(titleId, subtitleId);
  SetHasHelp(true);
}

int CNewVirtualDiskImageWizard::CInteriorPage::OnSetActive()
{
  SetWizardButtons(PSWIZB_BACK | PSWIZB_NEXT);
  return 0;
}

void CNewVirtualDiskImageWizard::CInteriorPage::OnHelp()
{
  ShowHelpTopic(hwnd_, TemplateId());
}

void CNewVirtualDiskImageWizard::CInteriorPage::SetExclamationIcon(int id) const
{
  SendDlgItemMessageW(hwnd_, id, STM_SETICON,
                      reinterpret_cast<WPARAM>(LoadIconW(nullptr, MAKEINTRESOURCEW(32515))),
                      0);  // IDI_EXCLAMATION
}
