#include "disklist/disk_sort.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>

#include "disklist/disk_columns.h"

namespace {

MountedDisk Disk(const std::u16string& mountPoint, const std::u16string& imagePath = u"")
{
  MountedDisk disk;
  disk.mountPoint = mountPoint;
  disk.imagePath = imagePath;
  return disk;
}

const FreeSpaceQuery kNoFreeSpace = [](const std::u16string&) -> std::optional<uint64_t> {
  ADD_FAILURE() << "free space asked for a column that does not use it";
  return std::nullopt;
};

int Ascending(const MountedDisk& first, const MountedDisk& second, DiskColumn column)
{
  return CompareDiskRows(first, second, static_cast<int32_t>(ColumnMask(column)), kNoFreeSpace);
}

int Descending(const MountedDisk& first, const MountedDisk& second, DiskColumn column)
{
  return CompareDiskRows(first, second, -static_cast<int32_t>(ColumnMask(column)), kNoFreeSpace);
}

TEST(DiskSortTest, MountPointsCompareByUtf16CodeUnitsCaseSensitively)
{
  EXPECT_LT(Ascending(Disk(u"P:"), Disk(u"Q:"), DiskColumn::kMountPoint), 0);
  EXPECT_GT(Ascending(Disk(u"Q:"), Disk(u"P:"), DiskColumn::kMountPoint), 0);
  // Upper case (0x50) before lower case (0x70).
  EXPECT_LT(Ascending(Disk(u"P:"), Disk(u"p:"), DiskColumn::kMountPoint), 0);
  // A proper prefix comes first.
  EXPECT_LT(Ascending(Disk(u"C:\\M"), Disk(u"C:\\Mounts"), DiskColumn::kMountPoint), 0);
  // Code units, not code points: a surrogate (0xD83D) comes before U+FF21.
  EXPECT_LT(Ascending(Disk(u"\U0001F600"), Disk(u"\uFF21"), DiskColumn::kMountPoint), 0);
  EXPECT_LT(Ascending(Disk(u"z"), Disk(u"\u00E9"), DiskColumn::kMountPoint), 0);
  EXPECT_EQ(Ascending(Disk(u"P:"), Disk(u"P:"), DiskColumn::kMountPoint), 0);
}

TEST(DiskSortTest, ImagePathSortsByTheMountPoints)
{
  const MountedDisk first = Disk(u"P:", u"Z:\\last.qvi");
  const MountedDisk second = Disk(u"Q:", u"A:\\first.qvi");
  EXPECT_LT(Ascending(first, second, DiskColumn::kImagePath), 0);
  EXPECT_GT(Descending(first, second, DiskColumn::kImagePath), 0);
  EXPECT_EQ(Ascending(Disk(u"P:", u"a"), Disk(u"P:", u"b"), DiskColumn::kImagePath), 0);
}

TEST(DiskSortTest, CapacityComparesUnsigned64Bit)
{
  MountedDisk small = Disk(u"P:");
  MountedDisk huge = Disk(u"A:");
  small.info.capacity = 1;
  huge.info.capacity = uint64_t{1} << 63;
  EXPECT_LT(Ascending(small, huge, DiskColumn::kCapacity), 0);
  EXPECT_GT(Descending(small, huge, DiskColumn::kCapacity), 0);
}

TEST(DiskSortTest, FreeSpaceAsksBothVolumesAnewForEachComparisonAndCountsUnknownAsZero)
{
  std::map<std::u16string, std::optional<uint64_t>> freeBytes = {
      {u"P:", 5000}, {u"Q:", 7000}, {u"R:", std::nullopt}};
  std::vector<std::u16string> asked;
  const FreeSpaceQuery query = [&](const std::u16string& mountPoint) {
    asked.push_back(mountPoint);
    return freeBytes.at(mountPoint);
  };
  const int32_t byFreeSpace = static_cast<int32_t>(ColumnMask(DiskColumn::kFreeSpace));
  EXPECT_LT(CompareDiskRows(Disk(u"P:"), Disk(u"Q:"), byFreeSpace, query), 0);
  freeBytes[u"P:"] = 9000;  // the volume filled up and emptied between two comparisons
  EXPECT_GT(CompareDiskRows(Disk(u"P:"), Disk(u"Q:"), byFreeSpace, query), 0);
  EXPECT_LT(CompareDiskRows(Disk(u"R:"), Disk(u"P:"), byFreeSpace, query), 0);
  freeBytes[u"P:"] = 0;
  EXPECT_EQ(CompareDiskRows(Disk(u"R:"), Disk(u"P:"), byFreeSpace, query), 0);
  const std::vector<std::u16string> expected = {u"P:", u"Q:", u"P:", u"Q:",
                                                u"R:", u"P:", u"R:", u"P:"};
  EXPECT_EQ(asked, expected);
}

TEST(DiskSortTest, AlgorithmComparesSignedThenKeyLengthUnsigned)
{
  MountedDisk aes = Disk(u"P:");
  MountedDisk odd = Disk(u"Q:");
  aes.info.algorithm = 0;
  odd.info.algorithm = 0xFFFFFFFF;  // -1 as a signed number
  EXPECT_GT(Ascending(aes, odd, DiskColumn::kAlgorithm), 0);
  odd.info.algorithm = 0;
  aes.info.keyLength = 32;
  odd.info.keyLength = 16;
  EXPECT_GT(Ascending(aes, odd, DiskColumn::kAlgorithm), 0);
  odd.info.keyLength = 0x80000000;  // unsigned: larger than 32
  EXPECT_LT(Ascending(aes, odd, DiskColumn::kAlgorithm), 0);
  odd.info.keyLength = 32;
  EXPECT_EQ(Ascending(aes, odd, DiskColumn::kAlgorithm), 0);
}

TEST(DiskSortTest, CreatedComparesTheCreationTimes)
{
  MountedDisk older = Disk(u"Q:");
  MountedDisk newer = Disk(u"P:");
  older.info.creationTime = 100;
  older.info.mountTime = 900;
  newer.info.creationTime = uint64_t{1} << 63;
  newer.info.mountTime = 0;
  EXPECT_LT(Ascending(older, newer, DiskColumn::kCreated), 0);
  EXPECT_GT(Descending(older, newer, DiskColumn::kCreated), 0);
}

TEST(DiskSortTest, MountedComparesTheFirstRowsMountTimeWithTheSecondRowsCreationTime)
{
  MountedDisk first = Disk(u"P:");
  MountedDisk second = Disk(u"Q:");
  first.info.creationTime = 0;
  first.info.mountTime = 100;
  second.info.creationTime = 50;
  second.info.mountTime = 0;
  // 100 against 50: the first comes later, although its mount time is the later one only
  // by this mixed key.
  EXPECT_GT(Ascending(first, second, DiskColumn::kMounted), 0);
  // The other way round: 0 against 0.
  EXPECT_EQ(Ascending(second, first, DiskColumn::kMounted), 0);
  // Descending reverses the same comparison, it does not swap the rows.
  EXPECT_LT(Descending(first, second, DiskColumn::kMounted), 0);
  EXPECT_EQ(Descending(second, first, DiskColumn::kMounted), 0);
}

TEST(DiskSortTest, DescendingReversesEveryColumnsResult)
{
  MountedDisk first = Disk(u"P:", u"b");
  MountedDisk second = Disk(u"Q:", u"a");
  first.info.capacity = 10;
  second.info.capacity = 20;
  first.info.algorithm = 1;
  second.info.algorithm = 2;
  first.info.creationTime = 5;
  second.info.creationTime = 6;
  for (const DiskColumn column :
       {DiskColumn::kMountPoint, DiskColumn::kCapacity, DiskColumn::kImagePath,
        DiskColumn::kAlgorithm, DiskColumn::kCreated, DiskColumn::kMounted}) {
    const int ascending = Ascending(first, second, column);
    EXPECT_NE(ascending, 0) << static_cast<uint32_t>(column);
    EXPECT_EQ(Descending(first, second, column), -ascending) << static_cast<uint32_t>(column);
  }
}

TEST(DiskSortTest, ASortValueNamingNoColumnComparesEveryPairEqual)
{
  MountedDisk first = Disk(u"P:");
  MountedDisk second = Disk(u"Q:");
  for (const int32_t sortColumn : {0, 3, 128, -3, INT_MIN}) {
    EXPECT_EQ(CompareDiskRows(first, second, sortColumn, kNoFreeSpace), 0) << sortColumn;
  }
}

}  // namespace
