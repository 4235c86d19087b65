// The header control above a report list view: its column count, the sort arrow of a
// column and the display order of the columns.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "ui/window.h"

class CHeaderCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  int ItemCount() const { return static_cast<int>(Send(HDM_GETITEMCOUNT)); }

  // The item's format flags (HDF_*); 0 when there is no such item.
  int Format(int index) const;
  // The sort arrow of the item: HDF_SORTUP, HDF_SORTDOWN or 0 (none). Setting it keeps the
  // item's other format flags.
  int SortArrow(int index) const { return Format(index) & (HDF_SORTUP | HDF_SORTDOWN); }
  bool SetSortArrow(int index, int arrow) const;

  // The item index shown at each display position, left to right.
  std::vector<int> OrderArray() const;
};
