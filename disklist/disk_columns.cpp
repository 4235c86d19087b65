#include "disklist/disk_columns.h"

#include "app/display_text.h"
#include "res/resource.h"

namespace {

constexpr DiskColumnDefinition kDefinitions[kListColumnCount] = {
    {IDS_COLUMN_MOUNT_POINT, 80, ID_VIEW_COLUMN_MOUNT_POINT},
    {IDS_COLUMN_CAPACITY, 60, ID_VIEW_COLUMN_CAPACITY},
    {IDS_COLUMN_FREE_SPACE, 72, ID_VIEW_COLUMN_FREE_SPACE},
    {IDS_COLUMN_IMAGE_PATH, 200, ID_VIEW_COLUMN_IMAGE_PATH},
    {IDS_COLUMN_ALGORITHM, 60, ID_VIEW_COLUMN_ALGORITHM},
    {IDS_COLUMN_CREATED, 80, ID_VIEW_COLUMN_CREATED},
    {IDS_COLUMN_MOUNTED, 80, ID_VIEW_COLUMN_MOUNTED},
};

}  // namespace

const DiskColumnDefinition& ColumnDefinition(DiskColumn column)
{
  return kDefinitions[static_cast<uint32_t>(column)];
}

std::optional<DiskColumn> ColumnOfToggleCommand(uint32_t commandId)
{
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    if (kDefinitions[column].toggleCommand == commandId) return static_cast<DiskColumn>(column);
  }
  return std::nullopt;
}

std::optional<DiskColumn> LowestColumnIn(uint32_t mask)
{
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    if (mask & (1u << column)) return static_cast<DiskColumn>(column);
  }
  return std::nullopt;
}

std::optional<DiskColumn> SortedColumn(int32_t sortColumn)
{
  // The magnitude taken without signed overflow, also for the most negative value.
  const uint32_t magnitude =
      sortColumn < 0 ? 0u - static_cast<uint32_t>(sortColumn) : static_cast<uint32_t>(sortColumn);
  const std::optional<DiskColumn> lowest = LowestColumnIn(magnitude);
  if (!lowest || ColumnMask(*lowest) != magnitude) return std::nullopt;
  return lowest;
}

std::u16string ColumnCellText(DiskColumn column, const MountedDisk& disk,
                              std::optional<uint64_t> freeBytes)
{
  switch (column) {
    case DiskColumn::kMountPoint: return disk.mountPoint;
    case DiskColumn::kCapacity: return FormatSizeText(disk.info.capacity, true);
    case DiskColumn::kFreeSpace:
      return freeBytes ? FormatSizeText(*freeBytes, true) : std::u16string();
    case DiskColumn::kImagePath: return disk.imagePath;
    case DiskColumn::kAlgorithm:
      return FormatAlgorithmText(disk.info.algorithm, disk.info.keyLength);
    case DiskColumn::kCreated: return FormatDateTimeText(disk.info.creationTime);
    case DiskColumn::kMounted: return FormatDateTimeText(disk.info.mountTime);
  }
  return std::u16string();
}

std::u16string FreeSpaceRootPath(const std::u16string& mountPoint)
{
  if (!mountPoint.empty() && mountPoint.back() == u'\\') return mountPoint;
  return mountPoint + u'\\';
}
