#include "disklist/disk_sort.h"

#include "disklist/disk_columns.h"

namespace {

template <typename Number>
int CompareNumbers(Number first, Number second)
{
  if (first < second) return -1;
  return first > second ? 1 : 0;
}

int CompareAscending(const MountedDisk& first, const MountedDisk& second, uint32_t columnMask,
                     const FreeSpaceQuery& freeSpace)
{
  switch (columnMask) {
    case ColumnMask(DiskColumn::kMountPoint):
    case ColumnMask(DiskColumn::kImagePath):
      return CompareNumbers(first.mountPoint.compare(second.mountPoint), 0);
    case ColumnMask(DiskColumn::kCapacity):
      return CompareNumbers(first.info.capacity, second.info.capacity);
    case ColumnMask(DiskColumn::kFreeSpace): {
      // Asked in row order: the first row's volume, then the second's.
      const uint64_t firstFree = freeSpace(first.mountPoint).value_or(0);
      const uint64_t secondFree = freeSpace(second.mountPoint).value_or(0);
      return CompareNumbers(firstFree, secondFree);
    }
    case ColumnMask(DiskColumn::kAlgorithm): {
      const int byAlgorithm = CompareNumbers(static_cast<int32_t>(first.info.algorithm),
                                             static_cast<int32_t>(second.info.algorithm));
      if (byAlgorithm != 0) return byAlgorithm;
      return CompareNumbers(first.info.keyLength, second.info.keyLength);
    }
    case ColumnMask(DiskColumn::kCreated):
      return CompareNumbers(first.info.creationTime, second.info.creationTime);
    case ColumnMask(DiskColumn::kMounted):
      return CompareNumbers(first.info.mountTime, second.info.creationTime);
    default: return 0;
  }
}

}  // namespace

int CompareDiskRows(const MountedDisk& first, const MountedDisk& second, int32_t sortColumn,
                    const FreeSpaceQuery& freeSpace)
{
  // The magnitude taken without signed overflow, also for the most negative value.
  const uint32_t columnMask =
      sortColumn < 0 ? 0u - static_cast<uint32_t>(sortColumn) : static_cast<uint32_t>(sortColumn);
  const int ascending = CompareAscending(first, second, columnMask, freeSpace);
  return sortColumn < 0 ? -ascending : ascending;
}
