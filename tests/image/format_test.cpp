// The image file format: layout sizes, volume naming, masking, unit encryption.
#include <gtest/gtest.h>

#include "image/bytes.h"
#include "image/image_handle.h"
#include "image/layout.h"
#include "image/progress.h"
#include "support/image_fixture.h"

TEST(VolumeFilePath, FurtherVolumesGetTheirNumberBeforeTheLastDot)
{
  EXPECT_EQ(VolumeFilePath(u"D:\\img\\a.qvi", 0), u"D:\\img\\a.qvi");
  EXPECT_EQ(VolumeFilePath(u"D:\\img\\a.qvi", 3), u"D:\\img\\a-3.qvi");
  EXPECT_EQ(VolumeFilePath(u"disk", 3), u"disk-3");
  EXPECT_EQ(VolumeFilePath(u"/home/u/x.y.qvi", 12), u"/home/u/x.y-12.qvi");
}

TEST(VolumeDirectory, IsThePathUpToTheLastSeparator)
{
  EXPECT_EQ(VolumeDirectory(u"D:\\img\\a.qvi"), u"D:\\img\\");
  EXPECT_EQ(VolumeDirectory(u"/home/u/a.qvi"), u"/home/u/");
  EXPECT_EQ(VolumeDirectory(u"a.qvi"), u"");
}

TEST(Progress, RangeIsOneStepPerMibButAtLeast100)
{
  EXPECT_EQ(Progress(nullptr, nullptr, 50ull << 20).Range(), 100u);
  EXPECT_EQ(Progress(nullptr, nullptr, 1ull << 30).Range(), 1024u);
  EXPECT_EQ(Progress(nullptr, nullptr, 2ull << 40).Range(), 2097152u);
}

TEST(Progress, ReportsFirstAndThenOnlyWhenThePositionChanges)
{
  struct Seen {
    std::vector<uint32_t> positions;
  } seen;
  auto record = [](uint32_t position, uint32_t range, void* context, uint64_t) -> uint32_t {
    EXPECT_EQ(range, 100u);
    static_cast<Seen*>(context)->positions.push_back(position);
    return 1;
  };
  Progress progress(record, &seen, 1000);
  for (int i = 0; i < 100; ++i) EXPECT_TRUE(progress.Advance(10));
  ASSERT_EQ(seen.positions.size(), 100u);
  EXPECT_EQ(seen.positions.front(), 1u);
  EXPECT_EQ(seen.positions.back(), 100u);

  Seen coarse;
  Progress slow(record, &coarse, 100000);
  for (int i = 0; i < 1000; ++i) slow.Advance(100);  // 10 calls per position
  ASSERT_EQ(coarse.positions.size(), 101u);          // the first report at position 0, then 1..100
  EXPECT_EQ(coarse.positions.front(), 0u);
  EXPECT_EQ(coarse.positions.back(), 100u);
}

TEST(ImageLayout, DynamicImageOfOneGibibyte)
{
  TempDir dir;
  const std::u16string path = dir.File(u"dynamic.qvi");
  ImageKeys keys;
  ASSERT_EQ(CreateImage(path, keys, CreateParams(1ull << 30)), kStatusSuccess);
  EXPECT_EQ(FileSize(path), 1069056u);

  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(path, keys, &handle), kStatusSuccess);
  EXPECT_EQ(handle->blockCount, 262144u);
  EXPECT_EQ(handle->dataOffset, 1060864u);
  EXPECT_EQ(handle->capacity, 1ull << 30);
  ASSERT_NE(handle->tableCache, nullptr);
  EXPECT_EQ(handle->tableCache->TableBlocks(), 257u);
  EXPECT_EQ(handle->set.StreamEnd(), 1064960u);
  EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
}

TEST(ImageLayout, FixedImageOfTenMebibytes)
{
  TempDir dir;
  const std::u16string path = dir.File(u"fixed.qvi");
  ImageKeys keys;
  ASSERT_EQ(CreateImage(path, keys, CreateParams(10ull << 20, kCreateFixed)), kStatusSuccess);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(path, keys, &handle), kStatusSuccess);
  EXPECT_EQ(handle->dataOffset, 8192u);
  EXPECT_EQ(handle->set.StreamEnd(), 8192u + 10485760u + 4096u);
  EXPECT_EQ(handle->tableCache, nullptr);
  EXPECT_EQ(handle->flags & kImageFixed, kImageFixed);
  EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
  EXPECT_EQ(FileSize(path), 4096u + 8192u + 10485760u + 4096u);
}

TEST(ImageLayout, PlainHeaderFieldsAreMaskedWithIdentityBytes)
{
  TempDir dir;
  const std::u16string path = dir.File(u"masked.qvi");
  ImageKeys keys(kCipherBlowfish, 56);
  ASSERT_EQ(CreateImage(path, keys, CreateParams(4ull << 20)), kStatusSuccess);
  const std::vector<uint8_t> h = ReadBytes(path);
  EXPECT_EQ(std::vector<uint8_t>(h.begin(), h.begin() + 64), keys.identity);
  EXPECT_EQ(h[74] ^ h[48], kCipherBlowfish);
  EXPECT_EQ(h[75] ^ h[51], 1);
  EXPECT_EQ(Load<uint16_t>(&h[76]) ^ h[50], 56);
  EXPECT_EQ(Load<uint32_t>(&h[64]) ^ h[52], header::kFlagEncrypted);
  EXPECT_EQ(Load<uint16_t>(&h[68]), 256);
  EXPECT_EQ(Load<uint32_t>(&h[70]), 128u);
}

TEST(ImageLayout, AlgorithmOfFourOrMoreIsRefusedBeforeDecryption)
{
  TempDir dir;
  const std::u16string path = dir.File(u"alg.qvi");
  ImageKeys keys;
  ASSERT_EQ(CreateImage(path, keys, CreateParams(4ull << 20)), kStatusSuccess);
  std::vector<uint8_t> bytes = ReadBytes(path);
  bytes[74] = static_cast<uint8_t>(4 ^ bytes[48]);
  WriteBytes(path, bytes);
  ImageKeyInfo info{sizeof info};
  EXPECT_EQ(ImgGetKeyInfo(path.c_str(), &info), 0x4005000Bu);
  ImageHandle* handle = nullptr;
  EXPECT_EQ(OpenImage(path, keys, &handle), 0x4005000Bu);
  EXPECT_EQ(handle, nullptr);
}

namespace {

// The stored (enciphered) bytes of the first data unit of a fixed image, and of the next.
std::vector<uint8_t> StoredUnit(const std::u16string& path, uint64_t streamOffset)
{
  const std::vector<uint8_t> bytes = ReadBytes(path);
  const auto begin = bytes.begin() + static_cast<long>(4096 + streamOffset);
  return std::vector<uint8_t>(begin, begin + 4096);
}

}  // namespace

TEST(UnitEncryption, SameUnitAtTwoOffsetsDiffers)
{
  TempDir dir;
  const std::u16string path = dir.File(u"units.qvi");
  ASSERT_EQ(CreateImage(path, ImageKeys(), CreateParams(4ull << 20, kCreateFixed)), 0u);
  // Both units hold zeros in plain.
  EXPECT_NE(StoredUnit(path, 8192), StoredUnit(path, 12288));
}

TEST(UnitEncryption, IdentityBlockEntersTheVectorForAesOnly)
{
  for (uint32_t algorithm : {kCipherAes, kCipherBlowfish, kCipherCast}) {
    TempDir dir;
    ImageKeys first(algorithm, 16, 1);
    ImageKeys second(algorithm, 16, 1);
    for (uint8_t& b : second.identity) b ^= 0x5A;  // same data key, another identity block
    ASSERT_EQ(CreateImage(dir.File(u"a.qvi"), first, CreateParams(4ull << 20, kCreateFixed)), 0u);
    ASSERT_EQ(CreateImage(dir.File(u"b.qvi"), second, CreateParams(4ull << 20, kCreateFixed)), 0u);
    const bool same = StoredUnit(dir.File(u"a.qvi"), 8192) == StoredUnit(dir.File(u"b.qvi"), 8192);
    EXPECT_EQ(same, algorithm != kCipherAes) << "algorithm " << algorithm;
  }
}

TEST(ImageStream, MisalignedRequestsAreRefused)
{
  TempDir dir;
  const std::u16string path = dir.File(u"align.qvi");
  ImageKeys keys;
  ASSERT_EQ(CreateImage(path, keys, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(path, keys, &handle), 0u);
  std::vector<uint8_t> unit(8192);
  EXPECT_EQ(WriteStream(handle->set, 4095, unit.data(), 4096), 0x4005000Fu);
  EXPECT_EQ(WriteStream(handle->set, 4096, unit.data(), 100), 0x4005000Fu);
  EXPECT_EQ(ReadStream(handle->set, 1, unit.data(), 4096), 0x4005000Fu);
  const uint64_t end = handle->set.StreamEnd();
  EXPECT_EQ(ReadStream(handle->set, end - 4096, unit.data(), 8192), 0x40050015u);
  EXPECT_EQ(ReadStream(handle->set, end + 4096, unit.data(), 4096), 0x40050014u);
  EXPECT_EQ(WriteStream(handle->set, end + 4096, unit.data(), 4096), 0x40050014u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST(ImageStream, WritesAndReadsBackAcrossVolumeFiles)
{
  TempDir dir;
  const std::u16string path = dir.File(u"split.qvi");
  ImageKeys keys;
  // Volume files of at most 1 MiB + header: the 4 MiB dynamic image spans several.
  ASSERT_EQ(CreateImage(path, keys, CreateParams(64ull << 20, 0, 4096 + (1 << 20))), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(path, keys, &handle), 0u);
  std::vector<uint8_t> data(3 << 20);
  for (size_t i = 0; i < data.size(); ++i) data[i] = static_cast<uint8_t>(i * 7 + i / 4096);
  const uint64_t at = handle->dataOffset;
  ASSERT_EQ(WriteStream(handle->set, at, data.data(), data.size()), 0u);
  EXPECT_GE(handle->set.volumes.size(), 4u);
  std::vector<uint8_t> back(data.size());
  ASSERT_EQ(ReadStream(handle->set, at, back.data(), back.size()), 0u);
  EXPECT_EQ(back, data);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  for (uint32_t k = 0; k < 4; ++k) EXPECT_LE(FileSize(VolumeFilePath(path, k)), 4096u + (1 << 20));

  ASSERT_EQ(OpenImage(path, keys, &handle), 0u);
  std::vector<uint8_t> reopened(data.size());
  ASSERT_EQ(ReadStream(handle->set, at, reopened.data(), reopened.size()), 0u);
  EXPECT_EQ(reopened, data);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}
