#include "app/frame_commands.h"

#include "disklist/disk_columns.h"
#include "res/resource.h"

std::vector<FrameCommandState> FrameCommandStates(size_t selectedRows, uint32_t visibleColumns)
{
  std::vector<FrameCommandState> states = {
      {ID_FILE_DISMOUNT, selectedRows >= 1, false},
      {ID_DISK_BROWSE, selectedRows >= 1, false},
      {ID_EDIT_PROPERTIES, selectedRows == 1, false},
  };
  const uint32_t shown = visibleColumns & kAllColumnsMask;
  for (uint32_t bit = 0; bit < kListColumnCount; ++bit) {
    const auto column = static_cast<DiskColumn>(bit);
    const bool visible = (shown & ColumnMask(column)) != 0;
    const bool onlyColumn = shown == ColumnMask(column);
    states.push_back({ColumnDefinition(column).toggleCommand, !onlyColumn, visible});
  }
  return states;
}
