#include "ui/dialog.h"

#include "system/wide_text_win.h"
#include "system/wipe.h"

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

bool CDialogBase::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  if (message == WM_INITDIALOG) {
    result = OnInitDialog(reinterpret_cast<HWND>(wParam)) ? TRUE : FALSE;
    return true;
  }
  return CMessageHandler::HandleMessage(message, wParam, lParam, result);
}

std::u16string CDialogBase::ReadField(int id) const
{
  std::wstring buffer = ItemText(id);
  std::u16string text(Utf16(buffer.c_str()), buffer.size());
  buffer.resize(buffer.capacity());
  WipeBytes(buffer.data(), buffer.size() * sizeof(wchar_t));
  return text;
}

bool CDialogBase::PutField(int id, const std::u16string& text)
{
  if (SetDlgItemTextW(hwnd_, id, Wide(text)) != 0) return true;
  MessageBeep(MB_OK);
  FocusField(id);
  return false;
}

void CDialogBase::FocusField(int id) const
{
  SendMessageW(hwnd_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(id)), TRUE);
}

INT_PTR CDialogBase::Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                           CDialogBase* starting)
{
  auto* self = static_cast<CDialogBase*>(FromHandle(window));
  if (self == nullptr) {
    // Messages before WM_INITDIALOG (the font, non-client creation) get the default answer.
    if (starting == nullptr) return FALSE;
    self = starting;
    self->Attach(window);
  }
  // A handler may destroy the dialog (and the object with it): only `window` is used after.
  LRESULT result = 0;
  if (!self->Deliver(message, wParam, lParam, result)) return FALSE;
  if (AnswersDirectly(message)) return static_cast<INT_PTR>(result);
  SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
  return TRUE;
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
  const HWND window = CreateDialogParamW(ResourceModule(), MAKEINTRESOURCEW(TemplateId()), owner,
                                         DialogProc, reinterpret_cast<LPARAM>(this));
  if (window != nullptr && FromHandle(window) == this) JoinMessageLoop(*this);
  return window;
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
  CDialog* const starting = message == WM_INITDIALOG ? reinterpret_cast<CDialog*>(lParam) : nullptr;
  return Route(window, message, wParam, lParam, starting);
}
