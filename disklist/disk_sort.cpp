#include "disklist/disk_sort.h"

#include "disklist/disk_columns.h"

namespace {

template <typename Number>
int CompareNumbers(Number first, Number second)
{
  if (first < second) return -1;
  return first > second ? 1 : 0;
}

int CompareAscending(const MountedDisk& first, const MountedDisk& second, DiskColumn column,
                     const FreeSpaceQuery& freeSpace)
{
  switch (column) {
    case DiskColumn::kMountPoint:
    case DiskColumn::kImagePath:
      return CompareNumbers(first.mountPoint.compare(second.mountPoint), 0);
    case DiskColumn::kCapacity: return CompareNumbers(first.info.capacity, second.info.capacity);
    case DiskColumn::kFreeSpace: {
      // Asked in row order: the first row's volume, then the second's.
      const uint64_t firstFree = freeSpace(first.mountPoint).value_or(0);
      const uint64_t secondFree = freeSpace(second.mountPoint).value_or(0);
      return CompareNumbers(firstFree, secondFree);
    }
    case DiskColumn::kAlgorithm: {
      const int byAlgorithm = CompareNumbers(static_cast<int32_t>(first.info.algorithm),
                                             static_cast<int32_t>(second.info.algorithm));
      if (byAlgorithm != 0) return byAlgorithm;
      return CompareNumbers(first.info.keyLength, second.info.keyLength);
    }
    case DiskColumn::kCreated:
      return CompareNumbers(first.info.creationTime, second.info.creationTime);
    case DiskColumn::kMounted:
      return CompareNumbers(first.info.mountTime, second.info.creationTime);
  }
  return 0;
}

}  // namespace

int CompareDiskRows(const MountedDisk& first, const MountedDisk& second, int32_t sortColumn,
                    const FreeSpaceQuery& freeSpace)
{
  const std::optional<DiskColumn> column = SortedColumn(sortColumn);
  if (!column) return 0;
  const int ascending = CompareAscending(first, second, *column, freeSpace);
  return sortColumn < 0 ? -ascending : ascending;
}
