#include "dialogs/clear_image_dlg_win.h"

#include <utility>

#include "app/prompt.h"
#include "dialogs/password_checks.h"
#include "res/resource.h"
#include "services/window_ref_win.h"
#include "system/wipe.h"

CClearVirtualDiskImageDlg::CClearVirtualDiskImageDlg()
    : CImagePasswordDlg(IDD_CLEAR_IMAGE, {IDC_PASSWORD})
{
}

CClearVirtualDiskImageDlg::~CClearVirtualDiskImageDlg()
{
  WipeText(password_);
}

bool CClearVirtualDiskImageDlg::Ask(WindowRef owner, ClearImageAnswers& answers)
{
  if (DoModal(ToHwnd(owner)) != IDOK) return false;
  answers.path = path_;
  answers.password = std::move(password_);
  // A short text moved out leaves its characters in the member's own buffer.
  WipeText(password_);
  return true;
}

bool CClearVirtualDiskImageDlg::OnInitDialog(HWND defaultFocus)
{
  bool written = CImagePasswordDlg::OnInitDialog(defaultFocus);
  SendDlgItemMessageW(hwnd_, IDC_WARNING_ICON, STM_SETICON,
                      reinterpret_cast<WPARAM>(LoadIconW(nullptr, MAKEINTRESOURCEW(32515))),
                      0);  // IDI_WARNING
  written = PutField(IDC_PASSWORD, password_) && written;
  return written;
}

void CClearVirtualDiskImageDlg::OnOk()
{
  path_ = ReadField(IDC_IMAGE_PATH);
  password_ = ReadField(IDC_PASSWORD);
  const auto prompt = CheckClearPassword(password_);
  if (!prompt) {
    EndDialog(IDOK);
    return;
  }
  ShowPrompt(ToWindowRef(hwnd_), *prompt);
  FocusField(IDC_PASSWORD);
}
