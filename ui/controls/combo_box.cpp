#include "ui/controls/combo_box.h"

int CComboBox::AddString(const std::wstring& text) const
{
  return static_cast<int>(Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())));
}

int CComboBox::InsertString(int index, const std::wstring& text) const
{
  return static_cast<int>(
      Send(CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.c_str())));
}

std::wstring CComboBox::ItemText(int index) const
{
  const LRESULT length = Send(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
  if (length == CB_ERR) return {};
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  const LRESULT copied =
      Send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
  text.resize(copied == CB_ERR ? 0 : static_cast<size_t>(copied));
  return text;
}

bool CComboBox::SetCurSel(int index) const
{
  const LRESULT selected = Send(CB_SETCURSEL, static_cast<WPARAM>(index));
  return index == -1 || selected != CB_ERR;
}

int CComboBox::FindStringExact(const std::wstring& text, int after) const
{
  return static_cast<int>(
      Send(CB_FINDSTRINGEXACT, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(text.c_str())));
}

int CComboBox::SelectString(const std::wstring& prefix) const
{
  return static_cast<int>(
      Send(CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(prefix.c_str())));
}
