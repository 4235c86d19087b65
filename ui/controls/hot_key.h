// A hot-key control: the key combination the user pressed in it, as a virtual-key code
// and the control's modifier flags (HOTKEYF_SHIFT, HOTKEYF_CONTROL, HOTKEYF_ALT,
// HOTKEYF_EXT).
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/window.h"

struct HotKeyCombination {
  BYTE virtualKey = 0;  // 0: no key
  BYTE modifiers = 0;   // HOTKEYF_* flags
};

class CHotKeyCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  HotKeyCombination HotKey() const
  {
    const auto value = static_cast<WORD>(Send(HKM_GETHOTKEY));
    return {LOBYTE(value), HIBYTE(value)};
  }
  void SetHotKey(HotKeyCombination combination) const
  {
    Send(HKM_SETHOTKEY, MAKEWORD(combination.virtualKey, combination.modifiers));
  }

  // Combinations the control refuses: `invalid` holds HKCOMB_* flags (e.g. HKCOMB_NONE for
  // a key without modifiers); a refused combination gets `replacement` (HOTKEYF_* flags)
  // as its modifiers instead.
  void SetRules(WORD invalid, WORD replacement) const
  {
    Send(HKM_SETRULES, invalid, MAKELPARAM(replacement, 0));
  }
};
