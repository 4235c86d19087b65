// Reading a dialog's controls back from the real window, for the template tests: every
// child in tab order with its id, class, text and style.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/ui_harness.h"

struct ControlSeen {
  int id;
  std::wstring className;
  std::wstring text;
  DWORD style;
};

inline std::wstring ClassOf(HWND window)
{
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

inline LONG_PTR StyleOf(HWND window)
{
  return GetWindowLongPtrW(window, GWL_STYLE);
}

inline std::vector<ControlSeen> DialogControls(HWND dialog)
{
  std::vector<ControlSeen> controls;
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(child)), L'\0');
    GetWindowTextW(child, text.data(), static_cast<int>(text.size()) + 1);
    controls.push_back(
        ControlSeen{GetDlgCtrlID(child), ClassOf(child), text, static_cast<DWORD>(StyleOf(child))});
  }
  return controls;
}

// A control a template is expected to hold, in tab order.
struct ExpectedControl {
  int id;
  const wchar_t* className;
  const wchar_t* text;
};

// Checks the controls read back against the expected ones: the same count, and each id,
// class name (in any case) and text.
inline void ExpectControls(const std::vector<ControlSeen>& controls,
                           std::initializer_list<ExpectedControl> expected)
{
  ASSERT_EQ(controls.size(), expected.size());
  size_t i = 0;
  for (const ExpectedControl& control : expected) {
    SCOPED_TRACE(i);
    EXPECT_EQ(controls[i].id, control.id);
    EXPECT_EQ(_wcsicmp(controls[i].className.c_str(), control.className), 0)
        << controls[i].className;
    EXPECT_EQ(controls[i].text, control.text);
    ++i;
  }
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

// Runs `dialog`'s Ask for `answers` modally with `script` driving it; Ask's answer.
template <class Dialog, class Answers>
bool AskModally(Dialog& dialog, Answers& answers, const std::function<void(HWND)>& script)
{
  bool ok = false;
  RunModal(
      [&] {
        ok = dialog.Ask(nullptr, answers);
        return INT_PTR{0};
      },
      script);
  return ok;
}
