// Reading a dialog's controls back from the real window, for the template tests: every
// child in tab order with its id, class, text and style.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

struct ControlSeen {
  int id;
  std::wstring className;
  std::wstring text;
  DWORD style;
};

inline std::vector<ControlSeen> DialogControls(HWND dialog)
{
  std::vector<ControlSeen> controls;
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    wchar_t className[64] = {};
    GetClassNameW(child, className, 64);
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(child)), L'\0');
    GetWindowTextW(child, text.data(), static_cast<int>(text.size()) + 1);
    controls.push_back(ControlSeen{GetDlgCtrlID(child), className, text,
                                   static_cast<DWORD>(GetWindowLongW(child, GWL_STYLE))});
  }
  return controls;
}

// The text a window had when it was destroyed, seen through a subclass; for the tests that a
// secret was wiped before its window went.
class CTextAtDestroy {
 public:
  explicit CTextAtDestroy(HWND window)
  {
    SetWindowSubclass(window, Proc, reinterpret_cast<UINT_PTR>(this), 0);
  }

  bool destroyed = false;
  std::wstring text;

 private:
  static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                               DWORD_PTR)
  {
    if (message == WM_DESTROY) {
      auto* self = reinterpret_cast<CTextAtDestroy*>(id);
      self->destroyed = true;
      self->text.resize(static_cast<size_t>(GetWindowTextLengthW(window)));
      GetWindowTextW(window, self->text.data(), static_cast<int>(self->text.size()) + 1);
      RemoveWindowSubclass(window, Proc, id);
    }
    return DefSubclassProc(window, message, wParam, lParam);
  }
};
