// The mounted disk list's column layout: which columns are shown (`VisibleColumns`), the
// sort column and direction (`SortColumn`), each column's width and display order
// (`ColumnPos`), and the decisions that change them. The list view applies the plans it
// gives; nothing here touches a window.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "devhost/device_host_api.h"
#include "disklist/disk_columns.h"
#include "settings/list_layout.h"
#include "system/status.h"

// The header control's format flags for the sort arrow, with the header's own values.
// Ascending order shows kHeaderSortDown and descending order kHeaderSortUp: the arrow
// points the other way round from the flags' names, as the list has always shown it.
inline constexpr uint32_t kHeaderSortDown = 0x0200;  // HDF_SORTDOWN
inline constexpr uint32_t kHeaderSortUp = 0x0400;    // HDF_SORTUP

// The header's number for the left mouse button in its click notification.
inline constexpr uint32_t kHeaderLeftButton = 0;

// One column to insert into the list.
struct ColumnInsertion {
  uint32_t index;  // column and sub-item index: the position among the visible columns
  DiskColumn column;
  uint32_t titleId;
  uint16_t width;
  uint16_t order;  // display order, set after every column is inserted
};

// How to rebuild the list's columns: delete the columns `deletions` in this order (from the
// last to the first), insert `insertions` in this order (bit order), then set each inserted
// column's display order, and mark the column at `sortArrowIndex` with `sortArrowFormat`.
struct ColumnRebuildPlan {
  std::vector<uint32_t> deletions;
  std::vector<ColumnInsertion> insertions;
  uint32_t sortArrowIndex = 0;
  uint32_t sortArrowFormat = kHeaderSortDown;
};

// The same display orders as a column order array: entry n is the column index shown at
// display position n.
std::vector<int32_t> ColumnOrderArray(const ColumnRebuildPlan& plan);

class ColumnModel {
 public:
  // The first-run layout: Mount Point, Capacity and Image Path at their default widths,
  // sorted by mount point ascending.
  ColumnModel() = default;
  // A given layout; its mask is kept as Load keeps a persisted one.
  explicit ColumnModel(const ListLayout& layout);

  // Reads the persisted layout over the current one with the settings' reading rules. A
  // mask is kept to the seven column bits; one without any column shows the first-run
  // columns. Store failures leave the layout as it was; returns the status of opening the
  // settings key, which the list ignores.
  StatusCode Load();
  // Writes the layout to the settings; returns the first failure.
  StatusCode Save() const;

  const ListLayout& Layout() const { return layout_; }
  uint32_t VisibleColumns() const { return layout_.visibleColumns; }
  int32_t SortColumn() const { return layout_.sortColumn; }
  uint32_t VisibleCount() const;

  // The column shown at list column `index` (the n-th visible column in bit order), and the
  // list column index of a visible column.
  std::optional<DiskColumn> ColumnAtIndex(uint32_t index) const;
  std::optional<uint32_t> IndexOfColumn(DiskColumn column) const;

  // Whether the column's toggle command may run: the only visible column cannot be hidden.
  bool CanToggleColumn(DiskColumn column) const;

  // Shows the columns of `mask` (bits above the seven columns are dropped) and plans the
  // rebuild; the list holds `headerItemCount` columns now. Only the lowest column whose bit
  // changes is adjusted: a removed column closes the gap in the stored display orders, an
  // added one goes to the right end. When the sort column is no longer shown, the sort
  // becomes Mount Point ascending, or the lowest visible column ascending when Mount Point
  // is hidden too. A mask without any column is refused: none, and nothing changes.
  std::optional<ColumnRebuildPlan> SetVisibleColumns(uint32_t mask, uint32_t headerItemCount);

  // Plans the rebuild with the same mask (after loading, and after a sort change); the list
  // holds `headerItemCount` columns now. A sort value whose column is hidden, or that names
  // no single column (0, for example), falls back as in SetVisibleColumns. The visible
  // columns' display orders are their stored orders ranked (equal ones in bit order), and
  // are stored back as such.
  ColumnRebuildPlan Rebuild(uint32_t headerItemCount);

  // A click on list column `index` with header button `button`: the left button on the sort
  // column reverses the direction, on another column sorts by it ascending, then the
  // columns are rebuilt. Other buttons and indexes outside the visible columns are ignored
  // (none).
  std::optional<ColumnRebuildPlan> ClickHeader(uint32_t index, uint32_t button,
                                               uint32_t headerItemCount);

  // Stores the width and display order the list reports for its column `index`.
  void StoreHeaderItem(uint32_t index, uint16_t width, uint16_t order);

  // The texts of the visible columns for `disk` in bit order: the item text first, then
  // the sub-items.
  std::vector<std::u16string> RowTexts(const MountedDisk& disk,
                                       std::optional<uint64_t> freeBytes) const;

  // The column index whose cells the free-space timer updates: none when the list has no
  // rows or the Free Space column is hidden (then the timer does nothing).
  std::optional<uint32_t> FreeSpaceUpdateIndex(size_t rowCount) const;

 private:
  bool IsShown(DiskColumn column) const;
  void KeepColumnsInMask();
  void KeepSortColumnShown();
  void AdjustLowestChangedColumn(uint32_t newMask, uint32_t headerItemCount);
  void RankDisplayOrders(ColumnRebuildPlan* plan);

  ListLayout layout_;
};
