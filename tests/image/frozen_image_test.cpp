// The committed frozen images: every field read back by the format's rules (with the
// cipher engine alone, not the image code), opened through the image operations, and
// made again byte for byte.
#include <gtest/gtest.h>

#include <zlib.h>
#include <string>

#include "frozen_images.h"
#include "support/cipher_fixture.h"
#include "system/utf.h"

namespace {

const std::u16string kFrozenDirectory = Utf8ToUtf16(CRYPTELLE_FROZEN_IMAGES) + u"/";

template <typename T>
T At(const Bytes& bytes, size_t offset)
{
  T value = 0;
  for (size_t i = 0; i < sizeof(T); ++i)
    value |= static_cast<T>(T{bytes.at(offset + i)} << (8 * i));
  return value;
}

Bytes Slice(const Bytes& bytes, size_t offset, size_t length)
{
  return Bytes(bytes.begin() + static_cast<long>(offset),
               bytes.begin() + static_cast<long>(offset + length));
}

uint32_t Crc(const Bytes& bytes, size_t offset, size_t length)
{
  return static_cast<uint32_t>(crc32(0, bytes.data() + offset, static_cast<uInt>(length)));
}

Bytes GuidBytes(const Guid& id)
{
  const auto* raw = reinterpret_cast<const uint8_t*>(&id);
  return Bytes(raw, raw + sizeof id);
}

}  // namespace

// Names the image in test output.
inline void PrintTo(const FrozenImage& image, std::ostream* out)
{
  *out << Utf16ToUtf8(image.name);
}

namespace {

uint32_t BlockSize(const FrozenImage& image)
{
  return image.algorithm == kCipherAes ? 16 : 8;
}

// The facts of one frozen image that follow from its inputs and the format.
struct Expected {
  uint32_t flags;  // of the descriptor
  uint32_t blockCount;
  uint32_t tableBlocks;
  uint64_t dataOffset;
  uint64_t streamLength;
};

Expected ExpectedFacts(const FrozenImage& image)
{
  const bool fixed = (image.createFlags & kCreateFixed) != 0;
  const auto blockCount = static_cast<uint32_t>(image.capacity / 4096);
  const uint32_t tableBlocks = fixed ? 0 : (blockCount + 1022) / 1023;
  const uint64_t dataOffset = 8192 + uint64_t{tableBlocks} * 4096;
  const uint64_t written = fixed ? dataOffset + image.capacity : dataOffset;
  // One unit of zeros behind the content.
  return Expected{fixed ? 3u : 2u, blockCount, tableBlocks, dataOffset, written + 4096};
}

class FrozenImages : public testing::TestWithParam<FrozenImage> {
 protected:
  void SetUp() override { ASSERT_EQ(FrozenKeys(GetParam(), &keys_), 0u); }

  std::u16string Path(uint32_t index = 0) const
  {
    return VolumeFilePath(kFrozenDirectory + GetParam().name, index);
  }

  // A volume file's header with its protected part deciphered by the header key.
  Bytes DecipheredHeader(uint32_t index) const
  {
    Bytes header = Slice(ReadBytes(Path(index)), 0, 4096);
    const CipherPtr cipher = MakeCipher(GetParam().algorithm, keys_.headerKey);
    SetIv(cipher.get(), Slice(keys_.identity, 32, BlockSize(GetParam())));
    const Bytes plain = Decrypt(cipher.get(), Slice(header, 128, 3968));
    std::copy(plain.begin(), plain.end(), header.begin() + 128);
    return header;
  }

  // The stream unit at `offset`, deciphered by the data key.
  Bytes StreamUnit(const Bytes& stream, uint64_t offset) const
  {
    const CipherPtr cipher = MakeCipher(GetParam().algorithm, keys_.dataKey);
    SetIv(cipher.get(), UnitVector(keys_, offset, BlockSize(GetParam())));
    return Decrypt(cipher.get(), Slice(stream, offset, 4096));
  }

  ImageKeys keys_;
};

}  // namespace

TEST_P(FrozenImages, VolumeFilesHaveTheirSizes)
{
  const FrozenImage& image = GetParam();
  const uint64_t stream = ExpectedFacts(image).streamLength;
  const uint64_t perFile =
      image.volumeSizeLimit == kNoVolumeLimit || image.volumeSizeLimit == kFileSystemLimit
          ? stream
          : image.volumeSizeLimit - 4096;
  uint64_t left = stream;
  for (uint32_t index = 0; index < image.volumeFiles; ++index) {
    const uint64_t data = std::min(left, perFile);
    EXPECT_EQ(FileSize(Path(index)), 4096 + data) << "volume file " << index;
    left -= data;
  }
  EXPECT_EQ(left, 0u);
  EXPECT_FALSE(Exists(Path(image.volumeFiles)));
}

TEST_P(FrozenImages, PlainHeaderFieldsAreMaskedByTheIdentityBlock)
{
  const FrozenImage& image = GetParam();
  for (uint32_t index = 0; index < image.volumeFiles; ++index) {
    const Bytes h = ReadBytes(Path(index));
    const uint32_t flags = 1u | (index + 1 < image.volumeFiles ? 2u : 0u);
    EXPECT_EQ(Slice(h, 0, 64), keys_.identity) << index;
    EXPECT_EQ(At<uint32_t>(h, 64), flags ^ h[52]) << index;
    EXPECT_EQ(At<uint16_t>(h, 68), 256u) << index;
    EXPECT_EQ(At<uint32_t>(h, 70), 128u) << index;
    EXPECT_EQ(h[74], image.algorithm ^ h[48]) << index;
    EXPECT_EQ(h[75], 1u ^ h[51]) << index;
    EXPECT_EQ(At<uint16_t>(h, 76), image.keyLength ^ h[50]) << index;
  }
}

TEST_P(FrozenImages, ProtectedHeaderFieldsDecipherWithTheHeaderKey)
{
  const FrozenImage& image = GetParam();
  for (uint32_t index = 0; index < image.volumeFiles; ++index) {
    const Bytes h = DecipheredHeader(index);
    EXPECT_EQ(At<uint32_t>(h, 128), Crc(h, 132, 4096 - 132)) << index;
    EXPECT_EQ(At<uint32_t>(h, 132), 0x4D495650u) << index;  // "PVIM"
    EXPECT_EQ(At<uint16_t>(h, 136), 0x0100u) << index;
    EXPECT_EQ(Slice(h, 138, 16), GuidBytes(kFrozenFirstIdentifier)) << index;
    EXPECT_EQ(At<uint64_t>(h, 154), kFrozenTime) << index;
    EXPECT_EQ(At<uint32_t>(h, 162), 1u | (index + 1 < image.volumeFiles ? 2u : 0u)) << index;
    EXPECT_EQ(At<uint32_t>(h, 166), 4096u) << index;
    EXPECT_EQ(At<uint64_t>(h, 170), image.volumeSizeLimit) << index;
    EXPECT_EQ(At<uint32_t>(h, 178), index) << index;
    // Only the first volume file carries the data key.
    const Bytes key = Slice(h, 256, image.keyLength);
    EXPECT_EQ(key, index == 0 ? keys_.dataKey : Bytes(image.keyLength)) << index;
  }
}

TEST_P(FrozenImages, DescriptorInformationRecordAndTableDecipherWithTheDataKey)
{
  const FrozenImage& image = GetParam();
  const Expected facts = ExpectedFacts(image);
  const Bytes stream = StoredStream(Path());
  ASSERT_EQ(stream.size(), facts.streamLength);

  const Bytes d = StreamUnit(stream, 0);
  EXPECT_EQ(At<uint32_t>(d, 0), Crc(d, 4, 124));
  EXPECT_EQ(At<uint32_t>(d, 4), 128u);
  EXPECT_EQ(At<uint32_t>(d, 8), facts.flags);
  Guid imageIdentifier = kFrozenFirstIdentifier;
  ++imageIdentifier.data1;  // made right after the set's identifier
  EXPECT_EQ(Slice(d, 12, 16), GuidBytes(imageIdentifier));
  EXPECT_EQ(At<uint64_t>(d, 28), kFrozenTime);
  EXPECT_EQ(At<uint64_t>(d, 36), kFrozenTime);
  EXPECT_EQ(At<uint32_t>(d, 44), 4096u);
  EXPECT_EQ(At<uint32_t>(d, 48), facts.blockCount);
  EXPECT_EQ(At<uint64_t>(d, 52), facts.dataOffset);
  EXPECT_EQ(At<uint64_t>(d, 60), 4096u);
  EXPECT_EQ(At<uint64_t>(d, 68), 4096u);
  EXPECT_EQ(At<uint64_t>(d, 76), 0u);
  EXPECT_EQ(Slice(d, 128, 4096 - 128), Bytes(4096 - 128));

  const Bytes info = StreamUnit(stream, 4096);
  EXPECT_EQ(At<uint32_t>(info, 0), Crc(info, 4, 120));
  EXPECT_EQ(At<uint32_t>(info, 4), 124u);
  EXPECT_EQ(At<uint64_t>(info, 12), kFrozenTime);
  EXPECT_EQ(At<uint16_t>(info, 28), 0u);
  EXPECT_EQ(At<uint16_t>(info, 30), 0u);
  EXPECT_EQ(At<uint64_t>(info, 34), facts.tableBlocks == 0 ? 0u : 8192u);
  EXPECT_EQ(At<uint32_t>(info, 42), facts.tableBlocks);

  for (uint32_t block = 0; block < facts.tableBlocks; ++block) {
    const Bytes t = StreamUnit(stream, 8192 + uint64_t{block} * 4096);
    EXPECT_EQ(Slice(t, 0, 4092), Bytes(4092, 0xFF)) << "every entry free, block " << block;
    EXPECT_EQ(At<uint32_t>(t, 4092), static_cast<uint32_t>(adler32(1, t.data(), 4092))) << block;
  }
  // The data area (fixed) and the closing unit hold zeros.
  for (uint64_t offset = facts.dataOffset; offset < facts.streamLength; offset += 4096) {
    EXPECT_EQ(StreamUnit(stream, offset), Bytes(4096)) << "offset " << offset;
  }
}

TEST_P(FrozenImages, OpenReadOnlyReportsEveryProperty)
{
  const FrozenImage& image = GetParam();
  const Expected facts = ExpectedFacts(image);
  ImageKeyInfo keyInfo{};
  keyInfo.recordSize = sizeof keyInfo;
  ASSERT_EQ(ImgGetKeyInfo(Path().c_str(), &keyInfo), 0u);
  EXPECT_EQ(keyInfo.algorithm, image.algorithm);
  EXPECT_EQ(keyInfo.keyLength, image.keyLength);
  EXPECT_EQ(keyInfo.mode, 1u);
  EXPECT_EQ(Bytes(keyInfo.identityBlock, keyInfo.identityBlock + 64), keys_.identity);

  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle, kOpenReadOnly), 0u);
  ImageProperties p{};
  p.recordSize = sizeof p;
  EXPECT_EQ(ImgGetProperties(handle, &p), 0u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  EXPECT_EQ(p.flags, facts.flags | kPropertyReadOnly);
  Guid imageIdentifier = kFrozenFirstIdentifier;
  ++imageIdentifier.data1;
  EXPECT_EQ(GuidBytes(p.imageIdentifier), GuidBytes(imageIdentifier));
  EXPECT_EQ(p.creationTime, kFrozenTime);
  EXPECT_EQ(p.lastOpenTime, kFrozenTime);
  EXPECT_EQ(p.capacity, image.capacity);
  EXPECT_EQ(p.volumeSizeLimit, image.volumeSizeLimit);
  EXPECT_EQ(p.blockSize, 4096u);
  EXPECT_EQ(p.algorithm, image.algorithm);
  EXPECT_EQ(p.keyLength, image.keyLength);
  EXPECT_EQ(p.mode, 1u);
}

TEST_P(FrozenImages, AreMadeAgainByteForByte)
{
  const FrozenImage& image = GetParam();
  TempDir dir;
  const std::u16string path = dir.File(image.name);
  ASSERT_EQ(MakeFrozenImage(image, path), 0u);
  for (uint32_t index = 0; index <= image.volumeFiles; ++index) {
    ASSERT_EQ(Exists(VolumeFilePath(path, index)), Exists(Path(index))) << index;
    if (index < image.volumeFiles) {
      EXPECT_TRUE(ReadBytes(VolumeFilePath(path, index)) == ReadBytes(Path(index)))
          << "volume file " << index << " differs from the committed one";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Committed, FrozenImages, testing::ValuesIn(kFrozenImages),
                         [](const testing::TestParamInfo<FrozenImage>& param) {
                           std::string name;
                           for (const char c : Utf16ToUtf8(param.param.name)) {
                             if (c == '.') break;
                             if (c != '-') name += c;
                           }
                           return name;
                         });
