// A combo box, as the screens use it: a drop-down list of texts, each optionally carrying
// a value, with one current selection.
#pragma once

#include <windows.h>

#include <string>

#include "ui/window.h"

class CComboBox : public CWindow {
 public:
  using CWindow::CWindow;

  // Add and insert answer the new entry's index, or CB_ERR.
  int AddString(const std::wstring& text) const;
  int InsertString(int index, const std::wstring& text) const;
  int Count() const { return static_cast<int>(Send(CB_GETCOUNT)); }
  void ResetContent() const { Send(CB_RESETCONTENT); }

  // The entry's text; empty when there is no such entry.
  std::wstring ItemText(int index) const;
  LPARAM ItemData(int index) const { return Send(CB_GETITEMDATA, static_cast<WPARAM>(index)); }
  bool SetItemData(int index, LPARAM value) const
  {
    return Send(CB_SETITEMDATA, static_cast<WPARAM>(index), value) != CB_ERR;
  }

  // The selected entry's index, or CB_ERR when nothing is selected.
  int CurSel() const { return static_cast<int>(Send(CB_GETCURSEL)); }
  // Selects the entry; -1 clears the selection. False when there is no such entry.
  bool SetCurSel(int index) const;

  // The first entry after `after` (-1: from the start) whose whole text equals `text`
  // (case-insensitive, as the control compares), or CB_ERR.
  int FindStringExact(const std::wstring& text, int after = -1) const;
  // Selects the first entry whose text begins with `prefix`; answers its index or CB_ERR
  // (the selection is then unchanged).
  int SelectString(const std::wstring& prefix) const;

  // The longest text the edit part of an editable combo box accepts.
  void LimitText(int characters) const { Send(CB_LIMITTEXT, static_cast<WPARAM>(characters)); }
};
