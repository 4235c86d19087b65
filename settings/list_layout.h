// The mounted-disk list's persisted layout, in the application key: "ColumnPos" (the seven
// columns' widths and display positions), "VisibleColumns" and "SortColumn".
#pragma once

#include <cstdint>

#include "system/status.h"

inline constexpr uint32_t kListColumnCount = 7;

// One column, in the column order Mount Point, Capacity, Free Space, Image Path,
// Encryption Algorithm, Created, Mounted. Stored as two little-endian 16-bit numbers.
struct ColumnPlacement {
  uint16_t width;
  uint16_t order;  // position in the list's display order
};

inline constexpr uint32_t kColumnPosSize = 4 * kListColumnCount;  // 28 bytes

struct ListLayout {
  ColumnPlacement columns[kListColumnCount] = {{80, 0}, {60, 1}, {72, 2}, {200, 3},
                                               {60, 4}, {80, 5}, {80, 6}};
  // Bit n shows column n; 11 shows Mount Point, Capacity and Image Path.
  uint32_t visibleColumns = 11;
  // The sort column's bit, negated for the other direction; 0 unsorted, 1 Mount Point.
  int32_t sortColumn = 1;
};

// Reads the three values over `layout`: "ColumnPos" with a 28-byte query and
// "VisibleColumns" with a 4-byte query, neither type checked (a shorter value replaces only
// its first bytes); "SortColumn" only when the query succeeds and its type is REG_DWORD.
// Missing values leave their fields. Returns the status of opening the application key.
StatusCode ReadListLayout(ListLayout* layout);

// Writes "ColumnPos" (REG_BINARY, 28 bytes), "VisibleColumns" and "SortColumn" (REG_DWORD)
// in this order; returns the first failure.
StatusCode WriteListLayout(const ListLayout& layout);
