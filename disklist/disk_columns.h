// The mounted disk list's seven columns: their identity, titles, default widths, the
// frame's toggle commands, and the text each shows for a mounted disk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "devhost/device_host_api.h"
#include "settings/list_layout.h"

// A column's number is its bit in the visibility mask (`VisibleColumns`) and its entry in
// `ColumnPos`.
enum class DiskColumn : uint32_t {
  kMountPoint = 0,
  kCapacity = 1,
  kFreeSpace = 2,
  kImagePath = 3,
  kAlgorithm = 4,
  kCreated = 5,
  kMounted = 6,
};

// Every column's bit: 0x7F.
inline constexpr uint32_t kAllColumnsMask = (1u << kListColumnCount) - 1;

struct DiskColumnDefinition {
  uint32_t titleId;        // string table id of the header text
  uint16_t defaultWidth;   // pixels
  uint32_t toggleCommand;  // the frame's command that shows or hides the column
};

inline constexpr uint32_t ColumnMask(DiskColumn column)
{
  return 1u << static_cast<uint32_t>(column);
}

// The definition of a column.
const DiskColumnDefinition& ColumnDefinition(DiskColumn column);

// The column the frame's toggle command `commandId` shows or hides; none for other commands.
std::optional<DiskColumn> ColumnOfToggleCommand(uint32_t commandId);

// The column whose bit is the lowest set bit of `mask` among the seven; none when no column
// bit is set.
std::optional<DiskColumn> LowestColumnIn(uint32_t mask);

// The column a sort value names: its magnitude (the sign is the direction) when that is
// exactly one column's bit; none otherwise.
std::optional<DiskColumn> SortedColumn(int32_t sortColumn);

// The text of `column` for `disk`: the mount point and the image path as reported, the
// precise size texts of the capacity and of `freeBytes` (empty when unknown), the algorithm
// text, and the date-time texts of the creation and the mount time.
std::u16string ColumnCellText(DiskColumn column, const MountedDisk& disk,
                              std::optional<uint64_t> freeBytes);

// The root path whose free space the Free Space column shows: the mount point with a
// backslash appended unless it already ends with one.
std::u16string FreeSpaceRootPath(const std::u16string& mountPoint);
