#include "ui/dialog.h"

#include <utility>

namespace {

// Messages whose answer a dialog procedure returns itself instead of through DWLP_MSGRESULT.
bool AnswersDirectly(UINT message)
{
  return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) ||
         message == WM_COMPAREITEM || message == WM_VKEYTOITEM || message == WM_CHARTOITEM ||
         message == WM_QUERYDRAGICON || message == WM_INITDIALOG;
}

}  // namespace

bool CDialogBase::OnInitDialog(HWND)
{
  return true;
}

INT_PTR CDialogBase::Dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
  const HWND window = hwnd_;
  if (message == WM_INITDIALOG) return OnInitDialog(reinterpret_cast<HWND>(wParam)) ? TRUE : FALSE;
  if (message == WM_NCDESTROY) {
    DetachFrom(window);
    hwnd_ = nullptr;
    OnFinalMessage();
    return FALSE;
  }
  // A handler may destroy the dialog (and the object with it): only `window` is used after.
  LRESULT result = 0;
  if (!HandleMessage(message, wParam, lParam, result)) return FALSE;
  if (AnswersDirectly(message)) return static_cast<INT_PTR>(result);
  SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
  return TRUE;
}

CDialog::~CDialog()
{
  if (hwnd_ == nullptr) return;
  DetachFrom(hwnd_);
  DestroyWindow(std::exchange(hwnd_, nullptr));
}

INT_PTR CDialog::DoModal(HWND owner)
{
  modal_ = true;
  return DialogBoxParamW(ResourceModule(), MAKEINTRESOURCEW(TemplateId()), owner, DialogProc,
                         reinterpret_cast<LPARAM>(this));
}

HWND CDialog::Create(HWND owner)
{
  modal_ = false;
  return CreateDialogParamW(ResourceModule(), MAKEINTRESOURCEW(TemplateId()), owner, DialogProc,
                            reinterpret_cast<LPARAM>(this));
}

void CDialog::EndDialog(INT_PTR result)
{
  if (modal_) {
    ::EndDialog(hwnd_, result);
  } else {
    DestroyWindow(hwnd_);
  }
}

bool CDialog::PreTranslateMessage(MSG& message)
{
  return hwnd_ != nullptr && IsDialogMessageW(hwnd_, &message) != FALSE;
}

bool CDialog::OnCommand(UINT id, UINT, HWND)
{
  if (id == IDOK) {
    OnOk();
    return true;
  }
  if (id == IDCANCEL) {
    OnCancel();
    return true;
  }
  return false;
}

INT_PTR CALLBACK CDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  auto* self = static_cast<CDialog*>(FromHandle(window));
  if (self == nullptr) {
    // Messages before WM_INITDIALOG (the font, non-client creation) get the default answer.
    if (message != WM_INITDIALOG) return FALSE;
    self = reinterpret_cast<CDialog*>(lParam);
    self->hwnd_ = window;
    self->AttachTo(window);
  }
  return self->Dispatch(message, wParam, lParam);
}
