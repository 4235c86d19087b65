#include "wizard/encryption_page_win.h"

#include <algorithm>

#include "res/resource.h"
#include "system/wide_text_win.h"
#include "ui/controls/combo_box.h"
#include "ui/controls/trackbar.h"
#include "ui/strings.h"

CNewVirtualDiskImageWizard::CEncryptionPage::CEncryptionPage(CNewVirtualDiskImageWizard& wizard)
    : CInteriorPage(wizard, IDD_WIZARD_ENCRYPTION, IDS_ENCRYPTION_TITLE, IDS_ENCRYPTION_SUBTITLE)
{
}

bool CNewVirtualDiskImageWizard::CEncryptionPage::OnInitDialog(HWND)
{
  const CTrackBarCtrl trackbar(Item(IDC_KEY_LENGTH_TRACKBAR));
  trackbar.SetBuddy(Item(IDC_KEY_LENGTH), false);
  SetExclamationIcon(IDC_WARNING_ICON);
  const CComboBox algorithms(Item(IDC_ALGORITHM));
  for (int name : {IDS_ALGORITHM_AES, IDS_ALGORITHM_BLOWFISH, IDS_ALGORITHM_CAST}) {
    algorithms.AddString(LoadResourceString(static_cast<UINT>(name)));
  }
  for (int id : {IDC_KEY_LENGTH_LABEL, IDC_KEY_LENGTH_TRACKBAR, IDC_KEY_LENGTH_MINIMUM,
                 IDC_KEY_LENGTH_MAXIMUM, IDC_KEY_LENGTH}) {
    ShowWindow(Item(id), SW_SHOW);
  }
  algorithms.SetCurSel(0);
  trackbar.SetPosition(0, true);
  ApplyAlgorithm();
  return true;
}

bool CNewVirtualDiskImageWizard::CEncryptionPage::OnCommand(UINT id, UINT code, HWND)
{
  if (id != IDC_ALGORITHM || code != CBN_SELCHANGE) return false;
  ApplyAlgorithm();
  return true;
}

bool CNewVirtualDiskImageWizard::CEncryptionPage::HandleMessage(UINT message, WPARAM wParam,
                                                                LPARAM lParam, LRESULT& result)
{
  if (message == WM_HSCROLL && reinterpret_cast<HWND>(lParam) == Item(IDC_KEY_LENGTH_TRACKBAR)) {
    choice_.Move(static_cast<uint32_t>(CTrackBarCtrl(Item(IDC_KEY_LENGTH_TRACKBAR)).Position()));
    ShowKeyLength();
    const int show = KeyLengthTooSmall(choice_.Bits()) ? SW_SHOW : SW_HIDE;
    ShowWindow(Item(IDC_WARNING_ICON), show);
    ShowWindow(Item(IDC_WARNING_TEXT), show);
    result = 0;
    return true;
  }
  return CInteriorPage::HandleMessage(message, wParam, lParam, result);
}

int CNewVirtualDiskImageWizard::CEncryptionPage::OnWizardNext()
{
  Request().algorithm = static_cast<uint32_t>(CComboBox(Item(IDC_ALGORITHM)).CurSel());
  Request().keyBits = choice_.Bits();
  return 0;
}

void CNewVirtualDiskImageWizard::CEncryptionPage::ApplyAlgorithm()
{
  const CTrackBarCtrl trackbar(Item(IDC_KEY_LENGTH_TRACKBAR));
  choice_.Move(static_cast<uint32_t>(trackbar.Position()));
  const auto algorithm =
      static_cast<uint32_t>(std::max(0, CComboBox(Item(IDC_ALGORITHM)).CurSel()));
  const KeyLengthTrackbar range = choice_.Apply(algorithm);
  trackbar.SetRange(0, static_cast<int>(range.lastPosition), true);
  trackbar.SetPosition(static_cast<int>(range.position), true);
  SetItemText(IDC_KEY_LENGTH_MINIMUM, Wide(KeyLengthText(choice_.Minimum())));
  SetItemText(IDC_KEY_LENGTH_MAXIMUM, Wide(KeyLengthText(choice_.Maximum())));
  ShowKeyLength();
}

void CNewVirtualDiskImageWizard::CEncryptionPage::ShowKeyLength() const
{
  SetItemText(IDC_KEY_LENGTH, Wide(KeyLengthText(choice_.Bits())));
}
