#include "wizard/interior_page_win.h"

#include "services/help.h"
#include "system/wide_text_win.h"
#include "system/wipe.h"

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

std::u16string CNewVirtualDiskImageWizard::CInteriorPage::ReadField(int id) const
{
  std::wstring buffer = ItemText(id);
  std::u16string text(Utf16(buffer.c_str()), buffer.size());
  buffer.resize(buffer.capacity());
  WipeBytes(buffer.data(), buffer.size() * sizeof(wchar_t));
  return text;
}

bool CNewVirtualDiskImageWizard::CInteriorPage::PutField(int id, const std::u16string& text)
{
  if (SetDlgItemTextW(hwnd_, id, Wide(text)) != 0) return true;
  MessageBeep(MB_OK);
  FocusField(id);
  return false;
}

void CNewVirtualDiskImageWizard::CInteriorPage::FocusField(int id) const
{
  SendMessageW(hwnd_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(id)), TRUE);
}

void CNewVirtualDiskImageWizard::CInteriorPage::SetExclamationIcon(int id) const
{
  SendDlgItemMessageW(hwnd_, id, STM_SETICON,
                      reinterpret_cast<WPARAM>(LoadIconW(nullptr, MAKEINTRESOURCEW(32515))),
                      0);  // IDI_EXCLAMATION
}
