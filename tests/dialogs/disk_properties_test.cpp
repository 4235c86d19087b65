// The texts of the properties dialog's value fields for one mounted disk.
#include "dialogs/disk_properties.h"

#include <gtest/gtest.h>

#include "app/display_text.h"

namespace {

// A fixed-size AES-256 image of 1.5 GiB, FAT-compatible, mounted read-only.
MountedDisk SampleDisk()
{
  MountedDisk disk;
  disk.imagePath = u"C:\\Users\\Anna\\Documents\\Work disk.qvi";
  disk.mountPoint = u"E:\\";
  disk.mountFlags = 0x1;
  disk.info.imageFlags = 0x1;
  disk.info.creationTime = 1'600'000'000;
  disk.info.mountTime = 1'700'000'000;
  disk.info.capacity = 1'610'612'736;
  disk.info.volumeSizeLimit = 0xFFFFFFFFFFFFFFFFull;
  disk.info.algorithm = 0;
  disk.info.keyLength = 32;
  return disk;
}

// The text of the field with `controlId`; fails the test when there is no such field.
std::u16string FieldText(const MountedDisk& disk, int controlId)
{
  for (const DiskPropertyField& field : DiskPropertyFields(disk)) {
    if (field.controlId == controlId) return field.text;
  }
  ADD_FAILURE() << "no field " << controlId;
  return {};
}

}  // namespace

TEST(DiskProperties, EveryFieldInTheFillingOrder)
{
  const MountedDisk disk = SampleDisk();
  const std::u16string created = FormatDateTimeText(disk.info.creationTime);
  const std::u16string mounted = FormatDateTimeText(disk.info.mountTime);
  ASSERT_FALSE(created.empty());
  ASSERT_NE(created, mounted);

  const std::vector<DiskPropertyField> fields = DiskPropertyFields(disk);
  const std::vector<std::pair<int, std::u16string>> expected = {
      {1010, u"C:\\Users\\Anna\\Documents\\Work disk.qvi"},
      {1000, u"E:\\"},
      {1001, u"1.5 GB"},
      {1012, created},
      {1015, mounted},
      {1013, u"Yes"},
      {1014, u"Yes"},
      {1009, u"Yes"},
      {1011, u"No"},
      {1005, u"AES"},
      {1006, u"256 bits"},
  };
  ASSERT_EQ(fields.size(), expected.size());
  for (size_t i = 0; i < fields.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(fields[i].controlId, expected[i].first);
    EXPECT_EQ(fields[i].text, expected[i].second);
  }
}

TEST(DiskProperties, PathAndMountPointAsTheyStand)
{
  MountedDisk disk = SampleDisk();
  disk.imagePath = u"\\\\server\\share\\a  b.qvi";
  disk.mountPoint = u"C:\\Mounts\\Work";
  EXPECT_EQ(FieldText(disk, 1010), u"\\\\server\\share\\a  b.qvi");
  EXPECT_EQ(FieldText(disk, 1000), u"C:\\Mounts\\Work");
}

TEST(DiskProperties, CapacityInThePreciseForm)
{
  MountedDisk disk = SampleDisk();
  disk.info.capacity = 1'572'864;
  EXPECT_EQ(FieldText(disk, 1001), u"1.0 MB");
  disk.info.capacity = 1023;
  EXPECT_EQ(FieldText(disk, 1001), u"1023");
  disk.info.capacity = 1ull << 40;
  EXPECT_EQ(FieldText(disk, 1001), u"1.00 TB");
}

TEST(DiskProperties, TimeZeroIsStillADate)
{
  MountedDisk disk = SampleDisk();
  disk.info.creationTime = 0;
  EXPECT_EQ(FieldText(disk, 1012), FormatDateTimeText(0));
  EXPECT_FALSE(FieldText(disk, 1012).empty());
}

TEST(DiskProperties, FixedSizeByBitZeroOfTheImageFlags)
{
  MountedDisk disk = SampleDisk();
  disk.info.imageFlags = 0xFFFFFFFE;
  EXPECT_EQ(FieldText(disk, 1013), u"No");
  disk.info.imageFlags = 0x3;
  EXPECT_EQ(FieldText(disk, 1013), u"Yes");
  disk.info.imageFlags = 0;
  EXPECT_EQ(FieldText(disk, 1013), u"No");
}

TEST(DiskProperties, FatCompatibleOnlyForAllOnes)
{
  MountedDisk disk = SampleDisk();
  disk.info.volumeSizeLimit = 0xFFFFFFFFFFFFFFFEull;
  EXPECT_EQ(FieldText(disk, 1014), u"No");
  disk.info.volumeSizeLimit = 0xFFFFFFFF;
  EXPECT_EQ(FieldText(disk, 1014), u"No");
  disk.info.volumeSizeLimit = 0;
  EXPECT_EQ(FieldText(disk, 1014), u"No");
}

TEST(DiskProperties, ReadOnlyAndRemovableByTheMountFlags)
{
  MountedDisk disk = SampleDisk();
  disk.mountFlags = 0x3;
  EXPECT_EQ(FieldText(disk, 1009), u"Yes");
  EXPECT_EQ(FieldText(disk, 1011), u"Yes");
  disk.mountFlags = 0x2;
  EXPECT_EQ(FieldText(disk, 1009), u"No");
  EXPECT_EQ(FieldText(disk, 1011), u"Yes");
  disk.mountFlags = 0x4;
  EXPECT_EQ(FieldText(disk, 1009), u"No");
  EXPECT_EQ(FieldText(disk, 1011), u"No");
}

TEST(DiskProperties, AlgorithmIsTheBareName)
{
  MountedDisk disk = SampleDisk();
  disk.info.algorithm = 1;
  EXPECT_EQ(FieldText(disk, 1005), u"BLOWFISH");
  disk.info.algorithm = 2;
  EXPECT_EQ(FieldText(disk, 1005), u"CAST");
}

TEST(DiskProperties, UnknownAlgorithmIsEmptyAndTheKeyLengthStays)
{
  MountedDisk disk = SampleDisk();
  disk.info.algorithm = 3;
  disk.info.keyLength = 16;
  EXPECT_EQ(FieldText(disk, 1005), u"");
  EXPECT_EQ(FieldText(disk, 1006), u"128 bits");
}
