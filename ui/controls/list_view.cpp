#include "ui/controls/list_view.h"

int CListViewCtrl::InsertColumn(int index, const std::wstring& title, int width, int subItem,
                                int format) const
{
  std::wstring text = title;
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM | LVCF_FMT;
  column.fmt = format;
  column.cx = width;
  column.pszText = text.data();
  column.iSubItem = subItem;
  return static_cast<int>(
      Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column)));
}

std::optional<ListViewColumn> CListViewCtrl::Column(int index) const
{
  wchar_t title[256] = {};
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM | LVCF_FMT | LVCF_ORDER;
  column.pszText = title;
  column.cchTextMax = 256;
  if (Send(LVM_GETCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column)) == 0) {
    return std::nullopt;
  }
  return ListViewColumn{title, column.cx, column.fmt, column.iSubItem, column.iOrder};
}

std::vector<int> CListViewCtrl::ColumnOrderArray() const
{
  std::vector<int> order(static_cast<size_t>(ColumnCount()));
  if (order.empty()) return order;
  if (Send(LVM_GETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data())) == 0) {
    order.clear();
  }
  return order;
}

bool CListViewCtrl::SetColumnOrderArray(const std::vector<int>& order) const
{
  return Send(LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data())) != 0;
}

int CListViewCtrl::InsertItem(int index, const std::wstring& text, LPARAM param) const
{
  std::wstring copy = text;
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.iItem = index;
  item.pszText = copy.data();
  item.lParam = param;
  return static_cast<int>(Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

std::wstring CListViewCtrl::ItemText(int item, int subItem) const
{
  // The control copies at most the buffer less its terminator and answers the length it
  // copied; a full buffer may mean a cut text, so read again with a larger one.
  std::wstring text(128, L'\0');
  for (;;) {
    LVITEMW cell{};
    cell.iSubItem = subItem;
    cell.pszText = text.data();
    cell.cchTextMax = static_cast<int>(text.size());
    const auto length = static_cast<size_t>(
        Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&cell)));
    if (length + 1 < text.size()) {
      text.resize(length);
      return text;
    }
    text.resize(text.size() * 2);
  }
}

bool CListViewCtrl::SetItemText(int item, int subItem, const std::wstring& text) const
{
  std::wstring copy = text;
  LVITEMW cell{};
  cell.iSubItem = subItem;
  cell.pszText = copy.data();
  return Send(LVM_SETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&cell)) != 0;
}

LPARAM CListViewCtrl::ItemData(int item) const
{
  LVITEMW row{};
  row.mask = LVIF_PARAM;
  row.iItem = item;
  if (Send(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&row)) == 0) return 0;
  return row.lParam;
}

int CListViewCtrl::NextSelected(int after) const
{
  return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(after), LVNI_SELECTED));
}

bool CListViewCtrl::IsItemSelected(int item) const
{
  return Send(LVM_GETITEMSTATE, static_cast<WPARAM>(item), LVIS_SELECTED) != 0;
}

bool CListViewCtrl::SetItemSelected(int item, bool selected) const
{
  LVITEMW state{};
  state.stateMask = LVIS_SELECTED;
  state.state = selected ? LVIS_SELECTED : 0;
  return Send(LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&state)) != 0;
}

int CListViewCtrl::HitTest(POINT point) const
{
  LVHITTESTINFO hit{};
  hit.pt = point;
  return static_cast<int>(Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}
