// The virtual disk inside an open image: byte-exact reads and writes at any offset and
// length, compared with a plain shadow copy, over fixed and dynamic images, every cipher
// and split images.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "image/bytes.h"
#include "image/disk_access.h"
#include "image/image_handle.h"
#include "support/disk_image_test.h"
#include "support/image_fixture.h"

namespace {

constexpr uint64_t kMiB = 1 << 20;
// Block 1023 is the first one of the second allocation table block.
constexpr uint64_t kSecondTableBlock = uint64_t{kTableEntriesPerBlock} * kUnitSize;

using DiskAccess = DiskImageTest;

std::vector<uint8_t> RandomBytes(std::mt19937_64& random, size_t length)
{
  std::vector<uint8_t> bytes(length);
  for (auto& b : bytes) b = static_cast<uint8_t>(random());
  return bytes;
}

void ExpectDiskEquals(ImageHandle* handle, const std::vector<uint8_t>& shadow)
{
  std::vector<uint8_t> disk(shadow.size());
  ASSERT_EQ(ImgReadDisk(handle, 0, disk.data(), disk.size()), kStatusSuccess);
  EXPECT_TRUE(disk == shadow);
}

TEST_P(DiskAccess, RandomUnalignedWritesAndReadsMatchAShadowCopy)
{
  const uint64_t capacity = 12 * kMiB;
  ImageHandle* handle = Make(capacity);
  ASSERT_NE(handle, nullptr);
  std::vector<uint8_t> shadow(capacity, 0);
  std::mt19937_64 random(0x51DE);

  // Ranges across a unit edge, the table-block edge, the capacity's end, and random ones
  // of up to 2.5 MiB, so that split images cross volume files.
  struct Range {
    uint64_t offset, length;
  };
  std::vector<Range> ranges = {{4095, 2},
                               {kSecondTableBlock - 100, 300},
                               {kSecondTableBlock - 3 * kUnitSize - 7, 9 * kUnitSize},
                               {capacity - 5000, 5000},
                               {0, 1},
                               {3 * kMiB + 1, kMiB + 4096}};
  for (int i = 0; i < 24; ++i) {
    const uint64_t offset = random() % capacity;
    const uint64_t length = 1 + random() % std::min<uint64_t>(capacity - offset, 5 * kMiB / 2);
    ranges.push_back({offset, length});
  }
  for (const Range& range : ranges) {
    const std::vector<uint8_t> data = RandomBytes(random, range.length);
    ASSERT_EQ(ImgWriteDisk(handle, range.offset, data.data(), data.size()), kStatusSuccess)
        << range.offset << "+" << range.length;
    std::copy(data.begin(), data.end(), shadow.begin() + static_cast<ptrdiff_t>(range.offset));
    const uint64_t readOffset = random() % capacity;
    const uint64_t readLength = random() % std::min<uint64_t>(capacity - readOffset, 3 * kMiB);
    std::vector<uint8_t> read(readLength);
    ASSERT_EQ(ImgReadDisk(handle, readOffset, read.data(), read.size()), kStatusSuccess);
    EXPECT_TRUE(
        std::equal(read.begin(), read.end(), shadow.begin() + static_cast<ptrdiff_t>(readOffset)))
        << readOffset << "+" << readLength;
  }
  ExpectDiskEquals(handle, shadow);
  if (GetParam().volumeLimit != 0) {
    EXPECT_GT(handle->set.volumes.size(), 2u);
  }
  ASSERT_EQ(ImgFlushDisk(handle), kStatusSuccess);
  ASSERT_EQ(ImgClose(handle, 0), kStatusSuccess);

  // What was written is what a later open reads.
  handle = Open(kOpenReadOnly);
  ASSERT_NE(handle, nullptr);
  ExpectDiskEquals(handle, shadow);
  EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
}

TEST_P(DiskAccess, ReadOnlyImageRefusesWritesAndStaysUnchanged)
{
  ImageHandle* handle = Make(4 * kMiB);
  ASSERT_NE(handle, nullptr);
  ASSERT_EQ(ImgClose(handle, 0), kStatusSuccess);
  const std::vector<uint8_t> before = ReadBytes(Path());
  handle = Open(kOpenReadOnly);
  ASSERT_NE(handle, nullptr);
  const uint8_t byte = 1;
  EXPECT_EQ(ImgWriteDisk(handle, 100, &byte, 1), kImgReadOnly);
  EXPECT_EQ(ImgFlushDisk(handle), kStatusSuccess);
  ASSERT_EQ(ImgClose(handle, 0), kStatusSuccess);
  EXPECT_TRUE(ReadBytes(Path()) == before);
}

TEST_P(DiskAccess, RangesOutsideTheCapacityAreRefused)
{
  const uint64_t capacity = 4 * kMiB;
  ImageHandle* handle = Make(capacity);
  ASSERT_NE(handle, nullptr);
  uint8_t bytes[2] = {};
  EXPECT_EQ(ImgReadDisk(handle, capacity - 1, bytes, 2), kImgBeyondEnd);
  EXPECT_EQ(ImgWriteDisk(handle, capacity - 1, bytes, 2), kImgBeyondEnd);
  EXPECT_EQ(ImgReadDisk(handle, capacity + 1, bytes, 0), kImgBeyondEnd);
  EXPECT_EQ(ImgReadDisk(handle, capacity, bytes, 0), kStatusSuccess);
  EXPECT_EQ(ImgWriteDisk(handle, capacity - 1, bytes, 1), kStatusSuccess);
  EXPECT_EQ(ImgReadDisk(nullptr, 0, bytes, 1), kImgInvalidParameter);
  EXPECT_EQ(ImgWriteDisk(handle, 0, nullptr, 1), kImgInvalidParameter);
  EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
}

const DiskCase kCases[] = {
    {"AesDynamic", kCipherAes, 32, 0, 0},
    {"AesFixed", kCipherAes, 16, kCreateFixed, 0},
    {"BlowfishDynamicSplit", kCipherBlowfish, 16, 0, kHeaderSize + 3 * kMiB},
    {"CastFixedSplit", kCipherCast, 16, kCreateFixed, kHeaderSize + 5 * kMiB},
};

INSTANTIATE_TEST_SUITE_P(Images, DiskAccess, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<DiskCase>& item) {
                           return std::string(item.param.name);
                         });

class DiskPlacement : public testing::Test {
 protected:
  std::u16string Path() const { return dir_.File(u"place.qvi"); }
  TempDir dir_;
  ImageKeys keys_;
};

// The table entry of disk block `block`, read from the image stream as it is stored.
uint32_t StoredTableEntry(ImageHandle* handle, uint64_t block)
{
  uint8_t unit[kUnitSize];
  InfoRecord info;
  EXPECT_EQ(ReadStream(handle->set, handle->infoOffset, unit, kUnitSize), kStatusSuccess);
  EXPECT_EQ(DecodeInfoRecord(unit, &info), kStatusSuccess);
  const uint64_t tableBlock = block / kTableEntriesPerBlock;
  EXPECT_EQ(ReadStream(handle->set, info.tableOffset + tableBlock * kUnitSize, unit, kUnitSize),
            kStatusSuccess);
  EXPECT_EQ(CheckTableBlock(unit), kStatusSuccess);
  return Load<uint32_t>(unit + (block % kTableEntriesPerBlock) * 4);
}

TEST_F(DiskPlacement, DynamicImageAssignsStorageAtTheStreamEndOnFirstWriteOnly)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(8 * kMiB)), kStatusSuccess);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), kStatusSuccess);
  const uint64_t endAfterCreation = handle->set.StreamEnd();

  // Unwritten blocks read as zeros and take no storage.
  std::vector<uint8_t> read(3 * kUnitSize, 0xAA);
  ASSERT_EQ(ImgReadDisk(handle, 0, read.data(), read.size()), kStatusSuccess);
  EXPECT_EQ(std::count(read.begin(), read.end(), 0), static_cast<ptrdiff_t>(read.size()));
  EXPECT_EQ(handle->set.StreamEnd(), endAfterCreation);

  // One byte in block 1030 (second table block) and one in block 3, in that order.
  const uint8_t first = 0x11, second = 0x22;
  ASSERT_EQ(ImgWriteDisk(handle, 1030 * kUnitSize + 17, &first, 1), kStatusSuccess);
  ASSERT_EQ(ImgWriteDisk(handle, 3 * kUnitSize + 4095, &second, 1), kStatusSuccess);
  EXPECT_EQ(handle->set.StreamEnd(), endAfterCreation + 2 * kUnitSize);
  ASSERT_EQ(ImgWriteDisk(handle, 3 * kUnitSize, &first, 1), kStatusSuccess);
  EXPECT_EQ(handle->set.StreamEnd(), endAfterCreation + 2 * kUnitSize);
  ASSERT_EQ(ImgFlushDisk(handle), kStatusSuccess);

  // The table names each block's unit behind the padding unit, and the unit holds the data.
  const uint32_t firstIndex =
      static_cast<uint32_t>((endAfterCreation - handle->dataOffset) / kUnitSize);
  EXPECT_EQ(StoredTableEntry(handle, 1030), firstIndex);
  EXPECT_EQ(StoredTableEntry(handle, 3), firstIndex + 1);
  EXPECT_EQ(StoredTableEntry(handle, 4), kTableEntryFree);
  uint8_t unit[kUnitSize];
  ASSERT_EQ(ReadStream(handle->set, endAfterCreation, unit, kUnitSize), kStatusSuccess);
  EXPECT_EQ(unit[17], first);
  EXPECT_EQ(std::count(unit, unit + kUnitSize, 0), static_cast<ptrdiff_t>(kUnitSize - 1));
  ASSERT_EQ(ReadStream(handle->set, endAfterCreation + kUnitSize, unit, kUnitSize), kStatusSuccess);
  EXPECT_EQ(unit[0], first);
  EXPECT_EQ(unit[4095], second);
  EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
}

TEST_F(DiskPlacement, FixedImageHoldsEachBlockAtItsPlaceInTheDataArea)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4 * kMiB, kCreateFixed)), kStatusSuccess);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), kStatusSuccess);
  const uint64_t end = handle->set.StreamEnd();
  const uint8_t data[3] = {7, 8, 9};
  ASSERT_EQ(ImgWriteDisk(handle, 5 * kUnitSize + 4094, data, 3), kStatusSuccess);
  EXPECT_EQ(handle->set.StreamEnd(), end);
  uint8_t units[2 * kUnitSize];
  ASSERT_EQ(ReadStream(handle->set, handle->dataOffset + 5 * kUnitSize, units, sizeof units),
            kStatusSuccess);
  EXPECT_EQ(units[4094], 7);
  EXPECT_EQ(units[4095], 8);
  EXPECT_EQ(units[4096], 9);
  EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
}

}  // namespace
