#include "dialogs/image_password_dlg_win.h"

#include "dialogs/image_browse.h"
#include "dialogs/password_checks.h"
#include "dialogs/program_icon_win.h"
#include "res/resource.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"
#include "ui/controls/edit.h"

CImagePasswordDlg::CImagePasswordDlg(UINT templateId, std::initializer_list<int> passwordFields)
    : CDialog(templateId), passwordFields_(passwordFields)
{
}

bool CImagePasswordDlg::OnInitDialog(HWND)
{
  SetProgramIcons(hwnd_);
  const bool written = PutField(IDC_IMAGE_PATH, path_);
  EnableItem(IDOK, ImagePathAccepted(path_));
  CenterWindow();
  return written;
}

bool CImagePasswordDlg::OnCommand(UINT id, UINT code, HWND control)
{
  if (id == IDC_BROWSE && code == BN_CLICKED) {
    Browse();
    return true;
  }
  if (id == IDC_IMAGE_PATH && code == EN_CHANGE) {
    EnableItem(IDOK, ImagePathAccepted(ReadField(IDC_IMAGE_PATH)));
    return true;
  }
  return CDialog::OnCommand(id, code, control);
}

void CImagePasswordDlg::OnDestroy()
{
  for (const int id : passwordFields_) CEditCtrl(Item(id)).WipeText();
}

void CImagePasswordDlg::Browse()
{
  const std::u16string current = ReadField(IDC_IMAGE_PATH);
  const auto choice = ChooseFileToOpen(ImageBrowseRequest(ToWindowRef(hwnd_), current));
  if (choice) SetDlgItemTextW(hwnd_, IDC_IMAGE_PATH, Wide(choice->path));
}
