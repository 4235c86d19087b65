#include "disklist/disk_columns.h"

#include <gtest/gtest.h>

#include "app/display_text.h"
#include "res/texts.h"

namespace {

struct ExpectedColumn {
  DiskColumn column;
  uint32_t mask;
  uint32_t titleId;
  const char16_t* title;
  uint16_t width;
  uint32_t toggleCommand;
};

const ExpectedColumn kExpected[] = {
    {DiskColumn::kMountPoint, 1, 40086, u"Mount Point", 80, 40304},
    {DiskColumn::kCapacity, 2, 40087, u"Capacity", 60, 40305},
    {DiskColumn::kFreeSpace, 4, 40088, u"Free Space", 72, 40316},
    {DiskColumn::kImagePath, 8, 40089, u"Image Path", 200, 40306},
    {DiskColumn::kAlgorithm, 16, 40090, u"Encryption Algorithm", 60, 40315},
    {DiskColumn::kCreated, 32, 40091, u"Created", 80, 40307},
    {DiskColumn::kMounted, 64, 40092, u"Mounted", 80, 40308},
};

MountedDisk SampleDisk()
{
  MountedDisk disk;
  disk.imagePath = u"C:\\Images\\Archive.qvi";
  disk.mountPoint = u"P:";
  disk.info.capacity = 1610612736;  // 1.5 GiB
  disk.info.algorithm = 0;
  disk.info.keyLength = 32;
  disk.info.creationTime = 1000000000;  // 2001-09-09
  disk.info.mountTime = 1700000000;     // 2023-11-14
  return disk;
}

TEST(DiskColumnsTest, EveryColumnHasItsBitTitleDefaultWidthAndToggleCommand)
{
  for (const ExpectedColumn& expected : kExpected) {
    const DiskColumnDefinition& definition = ColumnDefinition(expected.column);
    EXPECT_EQ(ColumnMask(expected.column), expected.mask);
    EXPECT_EQ(definition.titleId, expected.titleId);
    EXPECT_EQ(LoadText(definition.titleId), expected.title);
    EXPECT_EQ(definition.defaultWidth, expected.width);
    EXPECT_EQ(definition.toggleCommand, expected.toggleCommand);
    EXPECT_EQ(ColumnOfToggleCommand(expected.toggleCommand), expected.column);
  }
  EXPECT_EQ(kAllColumnsMask, 0x7Fu);
}

TEST(DiskColumnsTest, DefaultWidthsAreTheFirstRunLayoutsWidths)
{
  const ListLayout firstRun;
  for (const ExpectedColumn& expected : kExpected) {
    EXPECT_EQ(firstRun.columns[static_cast<uint32_t>(expected.column)].width, expected.width);
  }
}

TEST(DiskColumnsTest, OtherCommandsToggleNoColumn)
{
  EXPECT_FALSE(ColumnOfToggleCommand(40002).has_value());  // Dismount Selected
  EXPECT_FALSE(ColumnOfToggleCommand(40317).has_value());  // Browse
  EXPECT_FALSE(ColumnOfToggleCommand(0).has_value());
}

TEST(DiskColumnsTest, LowestColumnInTakesTheLowestOfTheSevenBits)
{
  EXPECT_EQ(LowestColumnIn(0x0A), DiskColumn::kCapacity);
  EXPECT_EQ(LowestColumnIn(0x40), DiskColumn::kMounted);
  EXPECT_FALSE(LowestColumnIn(0).has_value());
  EXPECT_FALSE(LowestColumnIn(0x180).has_value());
}

TEST(DiskColumnsTest, ASortValueNamesTheColumnOfItsMagnitude)
{
  EXPECT_EQ(SortedColumn(1), DiskColumn::kMountPoint);
  EXPECT_EQ(SortedColumn(8), DiskColumn::kImagePath);
  EXPECT_EQ(SortedColumn(-8), DiskColumn::kImagePath);
  EXPECT_EQ(SortedColumn(-64), DiskColumn::kMounted);
  for (const int32_t noColumn : {0, 3, -3, 128, -128, INT32_MIN, INT32_MAX}) {
    EXPECT_FALSE(SortedColumn(noColumn).has_value()) << noColumn;
  }
}

TEST(DiskColumnsTest, MountPointAndImagePathAreShownAsReported)
{
  const MountedDisk disk = SampleDisk();
  EXPECT_EQ(ColumnCellText(DiskColumn::kMountPoint, disk, std::nullopt), u"P:");
  EXPECT_EQ(ColumnCellText(DiskColumn::kImagePath, disk, std::nullopt), u"C:\\Images\\Archive.qvi");
}

TEST(DiskColumnsTest, CapacityIsThePreciseSizeText)
{
  MountedDisk disk = SampleDisk();
  EXPECT_EQ(ColumnCellText(DiskColumn::kCapacity, disk, std::nullopt), u"1.5 GB");
  disk.info.capacity = 1572864;  // 1.5 MiB: whole megabytes
  EXPECT_EQ(ColumnCellText(DiskColumn::kCapacity, disk, std::nullopt), u"1.0 MB");
  disk.info.capacity = 1023;
  EXPECT_EQ(ColumnCellText(DiskColumn::kCapacity, disk, std::nullopt), u"1023");
}

TEST(DiskColumnsTest, FreeSpaceIsThePreciseSizeTextOfTheFreeBytesOrEmptyWhenUnknown)
{
  const MountedDisk disk = SampleDisk();
  EXPECT_EQ(ColumnCellText(DiskColumn::kFreeSpace, disk, uint64_t{1099511627776}), u"1.00 TB");
  EXPECT_EQ(ColumnCellText(DiskColumn::kFreeSpace, disk, uint64_t{1024}), u"1.0 KB");
  EXPECT_EQ(ColumnCellText(DiskColumn::kFreeSpace, disk, uint64_t{0}), u"0");
  EXPECT_EQ(ColumnCellText(DiskColumn::kFreeSpace, disk, std::nullopt), u"");
}

TEST(DiskColumnsTest, EncryptionAlgorithmIsTheNameAndTheKeyBits)
{
  MountedDisk disk = SampleDisk();
  EXPECT_EQ(ColumnCellText(DiskColumn::kAlgorithm, disk, std::nullopt), u"AES-256");
  disk.info.algorithm = 1;
  disk.info.keyLength = 16;
  EXPECT_EQ(ColumnCellText(DiskColumn::kAlgorithm, disk, std::nullopt), u"BLOWFISH-128");
  disk.info.algorithm = 2;
  EXPECT_EQ(ColumnCellText(DiskColumn::kAlgorithm, disk, std::nullopt), u"CAST-128");
  disk.info.algorithm = 3;
  disk.info.keyLength = 8;
  EXPECT_EQ(ColumnCellText(DiskColumn::kAlgorithm, disk, std::nullopt), u"Unknown-64");
}

TEST(DiskColumnsTest, CreatedAndMountedAreTheDateTimeTextsOfTheirOwnTimes)
{
  const MountedDisk disk = SampleDisk();
  const std::u16string created = FormatDateTimeText(disk.info.creationTime);
  const std::u16string mounted = FormatDateTimeText(disk.info.mountTime);
  ASSERT_FALSE(created.empty());
  ASSERT_NE(created, mounted);
  EXPECT_EQ(ColumnCellText(DiskColumn::kCreated, disk, std::nullopt), created);
  EXPECT_EQ(ColumnCellText(DiskColumn::kMounted, disk, std::nullopt), mounted);
}

TEST(DiskColumnsTest, FreeSpaceRootPathEndsInOneBackslash)
{
  EXPECT_EQ(FreeSpaceRootPath(u"P:"), u"P:\\");
  EXPECT_EQ(FreeSpaceRootPath(u"P:\\"), u"P:\\");
  EXPECT_EQ(FreeSpaceRootPath(u"C:\\Mounts\\Archive"), u"C:\\Mounts\\Archive\\");
  EXPECT_EQ(FreeSpaceRootPath(u""), u"\\");
}

}  // namespace
