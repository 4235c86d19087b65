#include "wizard/completion_page_win.h"

#include "res/resource.h"
#include "system/wide_text_win.h"
#include "wizard/completion_summary.h"

CNewVirtualDiskImageWizard::CCompletionPage::CCompletionPage(CNewVirtualDiskImageWizard& wizard)
    : CPropertyPage(IDD_WIZARD_COMPLETION), wizard_(wizard)
{
  SetExterior();
}

bool CNewVirtualDiskImageWizard::CCompletionPage::OnInitDialog(HWND)
{
  const HWND sheet = SheetWindow();
  SendDlgItemMessageW(hwnd_, IDC_WIZARD_TITLE, WM_SETFONT,
                      reinterpret_cast<WPARAM>(ExteriorTitleFontOf(sheet)), TRUE);
  const auto bulletFont = reinterpret_cast<WPARAM>(BulletFontOf(sheet));
  for (int id = IDC_SUMMARY_BULLET_FIRST; id <= IDC_SUMMARY_BULLET_LAST; ++id) {
    SendDlgItemMessageW(hwnd_, id, WM_SETFONT, bulletFont, TRUE);
  }
  SetItemCheck(IDC_SUMMARY_MOUNT, BST_UNCHECKED);
  return true;
}

int CNewVirtualDiskImageWizard::CCompletionPage::OnSetActive()
{
  SetWizardButtons(PSWIZB_FINISH);
  const CompletionSummary summary = SummarizeRequest(wizard_.Request());
  SetItemText(IDC_SUMMARY_PATH, Wide(summary.path));
  SetItemText(IDC_SUMMARY_CAPACITY, Wide(summary.capacity));
  SetItemText(IDC_SUMMARY_ALGORITHM, Wide(summary.algorithm));
  SetItemText(IDC_SUMMARY_FIXED_SIZE, Wide(summary.fixedSize));
  SetItemText(IDC_SUMMARY_FAT_COMPATIBLE, Wide(summary.fatCompatible));
  return 0;
}

bool CNewVirtualDiskImageWizard::CCompletionPage::OnWizardFinish()
{
  wizard_.Request().mountAfter = ItemCheck(IDC_SUMMARY_MOUNT) == BST_CHECKED ? 1 : 0;
  return true;
}
