#include "ui/controls/edit.h"

#include <string>

void CEditCtrl::WipeText() const
{
  // A text of the same length fits the buffer that holds the secret, so the control writes
  // the filler over it in place instead of moving to a new buffer and freeing the old one.
  const int length = GetWindowTextLengthW(hwnd_);
  if (length > 0) SetText(std::wstring(static_cast<size_t>(length), kWipeFiller));
  SetText(std::wstring());
  Send(EM_EMPTYUNDOBUFFER);
}
