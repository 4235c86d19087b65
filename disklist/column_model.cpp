#include "disklist/column_model.h"

#include <algorithm>

std::vector<int32_t> ColumnOrderArray(const ColumnRebuildPlan& plan)
{
  std::vector<int32_t> order(plan.insertions.size());
  for (const ColumnInsertion& insertion : plan.insertions) {
    order[insertion.order] = static_cast<int32_t>(insertion.index);
  }
  return order;
}

ColumnModel::ColumnModel(const ListLayout& layout) : layout_(layout)
{
  KeepColumnsInMask();
}

StatusCode ColumnModel::Load()
{
  const StatusCode status = ReadListLayout(&layout_);
  KeepColumnsInMask();
  return status;
}

StatusCode ColumnModel::Save() const
{
  return WriteListLayout(layout_);
}

uint32_t ColumnModel::VisibleCount() const
{
  uint32_t count = 0;
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    if (IsShown(static_cast<DiskColumn>(column))) ++count;
  }
  return count;
}

std::optional<DiskColumn> ColumnModel::ColumnAtIndex(uint32_t index) const
{
  uint32_t visibleIndex = 0;
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    if (!IsShown(static_cast<DiskColumn>(column))) continue;
    if (visibleIndex == index) return static_cast<DiskColumn>(column);
    ++visibleIndex;
  }
  return std::nullopt;
}

std::optional<uint32_t> ColumnModel::IndexOfColumn(DiskColumn column) const
{
  if (!IsShown(column)) return std::nullopt;
  uint32_t index = 0;
  for (uint32_t before = 0; before < static_cast<uint32_t>(column); ++before) {
    if (IsShown(static_cast<DiskColumn>(before))) ++index;
  }
  return index;
}

bool ColumnModel::CanToggleColumn(DiskColumn column) const
{
  return (layout_.visibleColumns & ~ColumnMask(column)) != 0;
}

std::optional<ColumnRebuildPlan> ColumnModel::SetVisibleColumns(uint32_t mask,
                                                                uint32_t headerItemCount)
{
  const uint32_t newMask = mask & kAllColumnsMask;
  if (newMask == 0) return std::nullopt;
  AdjustLowestChangedColumn(newMask, headerItemCount);
  layout_.visibleColumns = newMask;
  return Rebuild(headerItemCount);
}

ColumnRebuildPlan ColumnModel::Rebuild(uint32_t headerItemCount)
{
  KeepSortColumnShown();
  ColumnRebuildPlan plan;
  for (uint32_t index = headerItemCount; index > 0; --index) plan.deletions.push_back(index - 1);
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    const DiskColumn shown = static_cast<DiskColumn>(column);
    if (!IsShown(shown)) continue;
    const uint32_t index = static_cast<uint32_t>(plan.insertions.size());
    plan.insertions.push_back(
        {index, shown, ColumnDefinition(shown).titleId, layout_.columns[column].width, 0});
  }
  RankDisplayOrders(&plan);
  plan.sortArrowIndex = *IndexOfColumn(*SortedColumn(layout_.sortColumn));
  plan.sortArrowFormat = layout_.sortColumn > 0 ? kHeaderSortDown : kHeaderSortUp;
  return plan;
}

std::optional<ColumnRebuildPlan> ColumnModel::ClickHeader(uint32_t index, uint32_t button,
                                                          uint32_t headerItemCount)
{
  if (button != kHeaderLeftButton) return std::nullopt;
  const std::optional<DiskColumn> clicked = ColumnAtIndex(index);
  if (!clicked) return std::nullopt;
  if (SortedColumn(layout_.sortColumn) == clicked) {
    layout_.sortColumn = -layout_.sortColumn;
  } else {
    layout_.sortColumn = static_cast<int32_t>(ColumnMask(*clicked));
  }
  return Rebuild(headerItemCount);
}

void ColumnModel::StoreHeaderItem(uint32_t index, uint16_t width, uint16_t order)
{
  const std::optional<DiskColumn> column = ColumnAtIndex(index);
  if (!column) return;
  layout_.columns[static_cast<uint32_t>(*column)] = {width, order};
}

std::vector<std::u16string> ColumnModel::RowTexts(const MountedDisk& disk,
                                                  std::optional<uint64_t> freeBytes) const
{
  std::vector<std::u16string> texts;
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    const DiskColumn shown = static_cast<DiskColumn>(column);
    if (IsShown(shown)) texts.push_back(ColumnCellText(shown, disk, freeBytes));
  }
  return texts;
}

std::optional<uint32_t> ColumnModel::FreeSpaceUpdateIndex(size_t rowCount) const
{
  if (rowCount == 0) return std::nullopt;
  return IndexOfColumn(DiskColumn::kFreeSpace);
}

bool ColumnModel::IsShown(DiskColumn column) const
{
  return (layout_.visibleColumns & ColumnMask(column)) != 0;
}

void ColumnModel::RankDisplayOrders(ColumnRebuildPlan* plan)
{
  // The display orders are the stored ones ranked among the visible columns (equal ones in
  // bit order), so that every display position is given once even when the stored orders
  // have gaps (hidden columns keep theirs) or repeats. The ranks are stored back, as the
  // list would report them, so that a column added later goes to the right end.
  std::vector<ColumnInsertion*> byOrder;
  for (ColumnInsertion& insertion : plan->insertions) byOrder.push_back(&insertion);
  std::stable_sort(byOrder.begin(), byOrder.end(),
                   [this](const ColumnInsertion* left, const ColumnInsertion* right) {
                     return layout_.columns[static_cast<uint32_t>(left->column)].order <
                            layout_.columns[static_cast<uint32_t>(right->column)].order;
                   });
  for (size_t rank = 0; rank < byOrder.size(); ++rank) {
    byOrder[rank]->order = static_cast<uint16_t>(rank);
    layout_.columns[static_cast<uint32_t>(byOrder[rank]->column)].order =
        static_cast<uint16_t>(rank);
  }
}

void ColumnModel::KeepColumnsInMask()
{
  layout_.visibleColumns &= kAllColumnsMask;
  if (layout_.visibleColumns == 0) layout_.visibleColumns = ListLayout{}.visibleColumns;
}

void ColumnModel::KeepSortColumnShown()
{
  const std::optional<DiskColumn> sorted = SortedColumn(layout_.sortColumn);
  if (sorted && IsShown(*sorted)) return;
  const uint32_t mountPoint = ColumnMask(DiskColumn::kMountPoint);
  layout_.sortColumn = static_cast<int32_t>(
      IsShown(DiskColumn::kMountPoint) ? mountPoint
                                       : ColumnMask(*LowestColumnIn(layout_.visibleColumns)));
}

void ColumnModel::AdjustLowestChangedColumn(uint32_t newMask, uint32_t headerItemCount)
{
  const std::optional<DiskColumn> changed = LowestColumnIn(layout_.visibleColumns ^ newMask);
  if (!changed) return;
  ColumnPlacement& placement = layout_.columns[static_cast<uint32_t>(*changed)];
  if (newMask & ColumnMask(*changed)) {
    placement.order = static_cast<uint16_t>(headerItemCount);
    return;
  }
  const uint16_t removedOrder = placement.order;
  for (ColumnPlacement& other : layout_.columns) {
    if (other.order > removedOrder) --other.order;
  }
}
