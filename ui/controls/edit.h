// An edit control: its text (from CWindow), the longest text it accepts, the selection,
// the password mask, and wiping a secret it holds.
#pragma once

#include <windows.h>

#include "ui/window.h"

class CEditCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  // The longest text the user can type (0: the control's maximum).
  void LimitText(int characters) const { Send(EM_SETLIMITTEXT, static_cast<WPARAM>(characters)); }
  int TextLimit() const { return static_cast<int>(Send(EM_GETLIMITTEXT)); }

  void SelectAll() const { Send(EM_SETSEL, 0, -1); }

  // The character shown in place of each typed one (0: the text is shown as typed).
  wchar_t PasswordChar() const { return static_cast<wchar_t>(Send(EM_GETPASSWORDCHAR)); }
  void SetPasswordChar(wchar_t mask) const { Send(EM_SETPASSWORDCHAR, mask); }

  // Empties the control so that its text does not outlive its use: the text is first
  // overwritten in the control's own buffer by a text of the same length made of one
  // filler character, then removed, and the undo history is dropped.
  void WipeText() const;

  static constexpr wchar_t kWipeFiller = L'*';
};
