// A report-style list view: its columns (title, width, format, sub-item, display order),
// its rows (cell texts and the parameter each row carries), selection, sorting and redraw.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "ui/controls/header.h"
#include "ui/window.h"

// One column as the list view reports it.
struct ListViewColumn {
  std::wstring title;  // up to 255 characters are read back
  int width = 0;
  int format = LVCFMT_LEFT;
  int subItem = 0;
  int order = 0;  // display position, 0 = leftmost
};

class CListViewCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  DWORD ExtendedStyle() const { return static_cast<DWORD>(Send(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
  // Sets the LVS_EX_* flags of `mask` to their values in `style`; the others stay.
  void SetExtendedStyle(DWORD mask, DWORD style) const
  {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, mask, style);
  }

  CHeaderCtrl Header() const { return CHeaderCtrl(reinterpret_cast<HWND>(Send(LVM_GETHEADER))); }

  // Columns. InsertColumn answers the new column's index, or -1.
  int InsertColumn(int index, const std::wstring& title, int width, int subItem,
                   int format = LVCFMT_LEFT) const;
  bool DeleteColumn(int index) const
  {
    return Send(LVM_DELETECOLUMN, static_cast<WPARAM>(index)) != 0;
  }
  int ColumnCount() const { return Header().ItemCount(); }
  std::optional<ListViewColumn> Column(int index) const;
  // The column index shown at each display position, left to right.
  std::vector<int> ColumnOrderArray() const;
  bool SetColumnOrderArray(const std::vector<int>& order) const;

  // Rows. InsertItem answers the new row's index, or -1.
  int ItemCount() const { return static_cast<int>(Send(LVM_GETITEMCOUNT)); }
  int InsertItem(int index, const std::wstring& text, LPARAM param) const;
  bool DeleteItem(int index) const { return Send(LVM_DELETEITEM, static_cast<WPARAM>(index)) != 0; }
  bool DeleteAllItems() const { return Send(LVM_DELETEALLITEMS) != 0; }
  // Cell texts: sub-item 0 is the row's own text.
  std::wstring ItemText(int item, int subItem) const;
  bool SetItemText(int item, int subItem, const std::wstring& text) const;
  // The parameter the row carries (0 when there is no such row).
  LPARAM ItemData(int item) const;

  // Selection. NextSelected answers the first selected row after `after` (-1: from the
  // start), or -1 when there is none.
  int NextSelected(int after = -1) const;
  int SelectedCount() const { return static_cast<int>(Send(LVM_GETSELECTEDCOUNT)); }
  bool IsItemSelected(int item) const;
  bool SetItemSelected(int item, bool selected) const;
  bool SelectAll() const { return SetItemSelected(-1, true); }

  bool EnsureVisible(int item) const
  {
    return Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(item), FALSE) != 0;
  }
  // The row under a point in client coordinates, or -1.
  int HitTest(POINT point) const;

  // Sorts the rows with `compare(first, second)`, which answers <0, 0 or >0: SortItems
  // hands it the rows' parameters, SortItemsByIndex the rows' current indexes. The
  // comparison runs inside the control's own code and must not throw (it would end the
  // program).
  template <typename Compare>
  bool SortItems(const Compare& compare) const
  {
    return Send(LVM_SORTITEMS, reinterpret_cast<WPARAM>(&compare),
                reinterpret_cast<LPARAM>(&CompareThrough<Compare>)) != 0;
  }
  template <typename Compare>
  bool SortItemsByIndex(const Compare& compare) const
  {
    return Send(LVM_SORTITEMSEX, reinterpret_cast<WPARAM>(&compare),
                reinterpret_cast<LPARAM>(&CompareThrough<Compare>)) != 0;
  }

  // Switches repainting off around bulk changes, and on again.
  void SetRedraw(bool redraw) const { Send(WM_SETREDRAW, redraw ? TRUE : FALSE); }

 private:
  template <typename Compare>
  static int CALLBACK CompareThrough(LPARAM first, LPARAM second, LPARAM compare) noexcept
  {
    return (*reinterpret_cast<const Compare*>(compare))(first, second);
  }
};
