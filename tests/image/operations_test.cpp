// The image operations: key information, create, open, properties, change key, clear, close.
#include <gtest/gtest.h>

#include "image/bytes.h"
#include "image/image_handle.h"
#include "image/volume_header.h"
#include "support/image_fixture.h"
#include "system/clock.h"
#include "system/file.h"

namespace {

class ImageOperations : public testing::Test {
 protected:
  std::u16string Path(const std::u16string& name = u"image.qvi") const { return dir_.File(name); }

  // Waits for the next second, so that two events get different times.
  static void NextSecond()
  {
    const uint64_t now = SysUnixTime();
    while (SysUnixTime() == now) {
    }
  }

  // A dynamic image split into volume files of 1 MiB of data, opened, with `data` written
  // at its data area so that it spans exactly three volume files; null on any failure.
  ImageHandle* OpenThreeVolumeImage(const std::vector<uint8_t>& data)
  {
    ImageHandle* handle = nullptr;
    if (CreateImage(Path(), keys_, CreateParams(16ull << 20, 0, 4096 + (1 << 20))) != 0 ||
        OpenImage(Path(), keys_, &handle) != 0) {
      return nullptr;
    }
    if (WriteStream(handle->set, handle->dataOffset, data.data(), data.size()) != 0 ||
        handle->set.volumes.size() != 3) {
      ImgClose(handle, kCloseForce);
      return nullptr;
    }
    return handle;
  }

  TempDir dir_;
  ImageKeys keys_;
};

uint32_t CancelAtReport(uint32_t, uint32_t, void* context, uint64_t)
{
  auto* remaining = static_cast<int*>(context);
  return --*remaining > 0 ? 1u : 0u;
}

uint32_t CountReports(uint32_t, uint32_t, void* context, uint64_t)
{
  ++*static_cast<int*>(context);
  return 1;
}

}  // namespace

TEST_F(ImageOperations, KeyInfoNeedsNoPassword)
{
  ImageKeys keys(kCipherCast, 16);
  ASSERT_EQ(CreateImage(Path(), keys, CreateParams(8ull << 20)), 0u);
  ImageKeyInfo info{sizeof info};
  ASSERT_EQ(ImgGetKeyInfo(Path().c_str(), &info), 0u);
  EXPECT_EQ(info.algorithm, kCipherCast);
  EXPECT_EQ(info.keyLength, 16u);
  EXPECT_EQ(info.mode, 1u);
  EXPECT_EQ(std::vector<uint8_t>(info.identityBlock, info.identityBlock + 64), keys.identity);
}

TEST_F(ImageOperations, KeyInfoArgumentsAndFailures)
{
  ImageKeyInfo small{79};
  EXPECT_EQ(ImgGetKeyInfo(Path().c_str(), &small), 0x40050002u);
  EXPECT_EQ(ImgGetKeyInfo(nullptr, &small), 0x40050002u);
  ImageKeyInfo info{sizeof info};
  EXPECT_EQ(ImgGetKeyInfo(Path(u"missing.qvi").c_str(), &info), 0x4000000Fu);
  WriteBytes(Path(u"short.qvi"), std::vector<uint8_t>(100, 0));
  EXPECT_EQ(ImgGetKeyInfo(Path(u"short.qvi").c_str(), &info), 0x4005000Bu);
  WriteBytes(Path(u"foreign.qvi"), std::vector<uint8_t>(8192, 0x41));
  EXPECT_EQ(ImgGetKeyInfo(Path(u"foreign.qvi").c_str(), &info), 0x4005000Bu);
}

TEST_F(ImageOperations, PlainImageIsRefused)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  MarkNotEncrypted(Path());
  ImageKeyInfo info{sizeof info};
  EXPECT_EQ(ImgGetKeyInfo(Path().c_str(), &info), 0x40050017u);
  ImageHandle* handle = nullptr;
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x40050017u);
}

TEST_F(ImageOperations, ShortKeyIsALengthMismatchWrongKeyIsAWrongPassword)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  EXPECT_EQ(ImgOpen(Path().c_str(), 0, keys_.headerKey.data(), 16, &handle), 0x40050007u);
  std::vector<uint8_t> wrong = keys_.headerKey;
  wrong[5] ^= 1;
  EXPECT_EQ(ImgOpen(Path().c_str(), 0, wrong.data(), 32, &handle), 0x4005000Bu);
  EXPECT_EQ(handle, nullptr);
}

TEST_F(ImageOperations, OpenArgumentsAreChecked)
{
  ImageHandle* handle = nullptr;
  const uint8_t key[32] = {};
  EXPECT_EQ(ImgOpen(nullptr, 0, key, 32, &handle), 0x40050002u);
  EXPECT_EQ(ImgOpen(Path().c_str(), 0, nullptr, 32, &handle), 0x40050002u);
  EXPECT_EQ(ImgOpen(Path().c_str(), 0, key, 0, &handle), 0x40050002u);
  EXPECT_EQ(ImgOpen(Path().c_str(), 0, key, 32, nullptr), 0x40050002u);
  EXPECT_EQ(ImgOpen(Path().c_str(), 0, key, 32, &handle), 0x4000000Fu);
}

TEST_F(ImageOperations, CreateArgumentsAreChecked)
{
  ImageCreateParams params = CreateParams(4ull << 20);
  params.recordSize = 39;
  EXPECT_EQ(CreateImage(Path(), keys_, params), 0x40050002u);
  EXPECT_EQ(ImgCreate(Path().c_str(), &params, 0, 1, keys_.headerKey.data(), keys_.dataKey.data(),
                      32, keys_.identity.data(), 63),
            0x40050002u);
  // Limits from 4096 to 8191 bytes leave no room for one unit behind the header.
  EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20, 0, 4096)), 0x40050002u);
  EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20, 0, 8191)), 0x40050002u);
  EXPECT_FALSE(Exists(Path()));
  EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20, 0, 8192)), 0u);
}

TEST_F(ImageOperations, UnfinishedCreationIsRefused)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  std::vector<uint8_t> unit(4096);
  ASSERT_EQ(ReadStream(handle->set, 0, unit.data(), 4096), 0u);
  Descriptor d;
  ASSERT_EQ(DecodeDescriptor(unit.data(), &d), 0u);
  d.flags |= kImageBeingCreated;
  EncodeDescriptor(d, unit.data());
  ASSERT_EQ(WriteStream(handle->set, 0, unit.data(), 4096), 0u);
  ASSERT_EQ(ImgClose(handle, 0), 0u);
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x40050009u);
}

TEST_F(ImageOperations, SecondOpenIsAccessDenied)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* first = nullptr;
  ImageHandle* second = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &first), 0u);
  EXPECT_EQ(OpenImage(Path(), keys_, &second), 0x40000008u);
  ImageKeyInfo info{sizeof info};
  EXPECT_EQ(ImgGetKeyInfo(Path().c_str(), &info), 0x40000008u);
  EXPECT_EQ(ImgClose(first, 0), 0u);
  EXPECT_EQ(OpenImage(Path(), keys_, &second), 0u);
  EXPECT_EQ(ImgClose(second, 0), 0u);
}

TEST_F(ImageOperations, InUseMarkIsSetWhileOpenAndClearedByClose)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_EQ(handle->flags & kImageInUse, kImageInUse);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  ASSERT_EQ(OpenImage(Path(), keys_, &handle, kOpenReadOnly), 0u);
  EXPECT_EQ(handle->flags & kImageInUse, 0u);
  ImageProperties properties{sizeof properties};
  ASSERT_EQ(ImgGetProperties(handle, &properties), 0u);
  EXPECT_EQ(properties.flags & kPropertyReadOnly, kPropertyReadOnly);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

// Accepting an informational result of loading: no loading step reports one, so the open
// behaves exactly like an open with flags 0 and adds nothing to the reported flags.
TEST_F(ImageOperations, AcceptingInformationOpensLikeAPlainOpen)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle, kOpenAcceptInformation), 0u);
  EXPECT_EQ(handle->information, 0u);
  ImageProperties p{sizeof p};
  ASSERT_EQ(ImgGetProperties(handle, &p), 0u);
  EXPECT_EQ(p.flags, kImageInUse | kImageCreatedFlag);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

// An image whose descriptor says "never mark in use" (the same bit as the information
// flag) keeps that bit through a writable open and a clearing, and is never marked.
TEST_F(ImageOperations, NeverInUseImageIsNotMarkedAndClearingKeepsTheMark)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle, kOpenReadOnly), 0u);
  std::vector<uint8_t> unit(4096);
  ASSERT_EQ(ReadStream(handle->set, 0, unit.data(), 4096), 0u);
  ASSERT_EQ(ImgClose(handle, 0), 0u);
  Descriptor d;
  ASSERT_EQ(DecodeDescriptor(unit.data(), &d), 0u);
  d.flags |= kImageNeverInUse;
  EncodeDescriptor(d, unit.data());
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  ASSERT_EQ(WriteStream(handle->set, 0, unit.data(), 4096), 0u);
  ASSERT_EQ(ImgClose(handle, 0), 0u);

  ASSERT_EQ(OpenImage(Path(), keys_, &handle, kOpenAcceptInformation), 0u);
  EXPECT_EQ(handle->flags, kImageNeverInUse | kImageCreatedFlag);
  EXPECT_EQ(handle->information, 0u);
  ASSERT_EQ(ImgClear(handle, nullptr, nullptr), 0u);
  EXPECT_EQ(handle->flags, kImageNeverInUse | kImageCreatedFlag);
  ImageProperties p{sizeof p};
  ASSERT_EQ(ImgGetProperties(handle, &p), 0u);
  EXPECT_EQ(p.flags, kImageNeverInUse | kImageCreatedFlag);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

// An accepted informational result is reported with the properties, but clearing writes
// only the descriptor's own flags: the mark never turns into "never mark in use" on disk.
TEST_F(ImageOperations, AcceptedInformationIsReportedButNeverWrittenToTheDescriptor)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle, kOpenAcceptInformation), 0u);
  handle->information = kStatusInformation;  // as an open that accepted one leaves it
  ImageProperties p{sizeof p};
  ASSERT_EQ(ImgGetProperties(handle, &p), 0u);
  EXPECT_EQ(p.flags, kStatusInformation | kImageInUse | kImageCreatedFlag);
  ASSERT_EQ(ImgClear(handle, nullptr, nullptr), 0u);
  EXPECT_EQ(handle->flags, kImageInUse | kImageCreatedFlag);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_EQ(handle->flags, kImageInUse | kImageCreatedFlag);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageOperations, PropertiesReportTheImage)
{
  ImageKeys keys(kCipherBlowfish, 56);
  ASSERT_EQ(CreateImage(Path(), keys, CreateParams(20ull << 20, kCreateFixed, ~0ull)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys, &handle), 0u);
  ImageProperties small{71};
  EXPECT_EQ(ImgGetProperties(handle, &small), 0x40050006u);
  EXPECT_EQ(ImgGetProperties(handle, nullptr), 0x40050002u);
  ImageProperties p{sizeof p};
  ASSERT_EQ(ImgGetProperties(handle, &p), 0u);
  EXPECT_EQ(p.flags & ~kImageInUse, kImageFixed | kImageCreatedFlag);
  EXPECT_EQ(p.capacity, 20ull << 20);
  EXPECT_EQ(p.volumeSizeLimit, ~0ull);
  EXPECT_EQ(p.blockSize, 4096u);
  EXPECT_EQ(p.algorithm, kCipherBlowfish);
  EXPECT_EQ(p.keyLength, 56u);
  EXPECT_EQ(p.mode, 1u);
  EXPECT_GE(p.lastOpenTime, p.creationTime);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageOperations, CancelAtFirstMiddleOrLastReportLeavesNoFile)
{
  // A fixed 8 MiB image reports eight times.
  for (int cancelAt : {1, 4, 8}) {
    int remaining = cancelAt;
    ImageCreateParams params =
        CreateParams(8ull << 20, kCreateFixed, 0, CancelAtReport, &remaining);
    EXPECT_EQ(CreateImage(Path(), keys_, params), 0x40050008u) << cancelAt;
    EXPECT_EQ(FileCount(dir_), 0u) << cancelAt;
  }
  int reports = 0;
  ASSERT_EQ(
      CreateImage(Path(), keys_, CreateParams(8ull << 20, kCreateFixed, 0, CountReports, &reports)),
      0u);
  EXPECT_EQ(reports, 8);  // one report per MiB written
}

TEST_F(ImageOperations, ChangeKeyKeepsTheDataAndNeedsTheNewKey)
{
  const std::vector<uint8_t> data(2 << 20, 0xC3);
  ImageHandle* handle = OpenThreeVolumeImage(data);
  ASSERT_NE(handle, nullptr);
  ImageKeys next(kCipherAes, 32, 9);
  EXPECT_EQ(ImgChangeKey(handle, next.headerKey.data(), 16), 0x40050002u);
  ASSERT_EQ(ImgChangeKey(handle, next.headerKey.data(), 32), 0u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);

  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x4005000Bu);
  ImageKeys reopened = keys_;
  reopened.headerKey = next.headerKey;
  ASSERT_EQ(OpenImage(Path(), reopened, &handle), 0u);
  std::vector<uint8_t> back(data.size());
  ASSERT_EQ(ReadStream(handle->set, handle->dataOffset, back.data(), back.size()), 0u);
  EXPECT_EQ(back, data);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageOperations, ChangeKeyRewritesTheLastVolumeFileFirst)
{
  ImageHandle* handle = OpenThreeVolumeImage(std::vector<uint8_t>(2 << 20, 0x3C));
  ASSERT_NE(handle, nullptr);

  // Let the first header write succeed and the second fail: only the last volume file
  // may then carry the new key.
  SysFileFaults faults;
  faults.failingWrite = 2;
  SysSetFileFaults(&faults);
  ImageKeys next(kCipherAes, 32, 9);
  EXPECT_EQ(ImgChangeKey(handle, next.headerKey.data(), 32), 0x4000000Au);
  SysSetFileFaults(nullptr);

  uint8_t* header = handle->set.headerBuffer;
  EXPECT_EQ(ReadVolumeHeader(handle->set, handle->set.volumes[0].file, header), 0u);
  EXPECT_EQ(ReadVolumeHeader(handle->set, handle->set.volumes[1].file, header), 0u);
  EXPECT_EQ(ReadVolumeHeader(handle->set, handle->set.volumes[2].file, header), 0x4005000Bu);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageOperations, ClearMakesANewImageWithTheSamePassword)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(1ull << 30, 0, 4096 + (1 << 20))), 0u);
  const uint64_t createdSize = FileSize(Path());
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  std::vector<uint8_t> data(3 << 20, 0x77);
  ASSERT_EQ(WriteStream(handle->set, handle->dataOffset, data.data(), data.size()), 0u);
  ASSERT_GE(handle->set.volumes.size(), 3u);
  const Guid identifier = handle->imageIdentifier;
  const uint64_t created = handle->creationTime;
  NextSecond();
  int reports = 0;
  ASSERT_EQ(ImgClear(handle, CountReports, &reports), 0u);
  EXPECT_GT(reports, 0);
  EXPECT_NE(std::memcmp(&identifier, &handle->imageIdentifier, sizeof identifier), 0);
  EXPECT_NE(handle->creationTime, created);
  EXPECT_EQ(handle->set.volumes.size(), 2u);  // the table itself spans past the first file
  EXPECT_EQ(ImgClose(handle, 0), 0u);

  EXPECT_EQ(FileSize(Path()), createdSize);
  EXPECT_FALSE(Exists(VolumeFilePath(Path(), 2)));
  ImageKeyInfo info{sizeof info};
  ASSERT_EQ(ImgGetKeyInfo(Path().c_str(), &info), 0u);
  EXPECT_EQ(std::vector<uint8_t>(info.identityBlock, info.identityBlock + 64), keys_.identity);
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);  // the set still opens after the cut
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageOperations, MissingFurtherVolumeFile)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(16ull << 20, kCreateFixed, 4096 + (4 << 20))),
            0u);
  ASSERT_TRUE(Exists(VolumeFilePath(Path(), 3)));
  std::filesystem::remove(std::filesystem::path(VolumeFilePath(Path(), 2)));
  ImageHandle* handle = nullptr;
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x4005000Cu);
}

TEST_F(ImageOperations, EveryCorruptionGivesItsCode)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(16ull << 20)), 0u);
  const std::vector<uint8_t> pristine = ReadBytes(Path());
  struct Case {
    uint64_t offset;
    StatusCode expected;
  };
  // A protected header byte, the descriptor, the information record, table block 0.
  for (const Case& c : {Case{200, 0x4005000B}, Case{4096 + 50, 0x40050013},
                        Case{8192 + 50, 0x40050013}, Case{12288 + 50, 0x40050013}}) {
    WriteBytes(Path(), pristine);
    FlipBit(Path(), c.offset);
    ImageHandle* handle = nullptr;
    EXPECT_EQ(OpenImage(Path(), keys_, &handle), c.expected) << "offset " << c.offset;
    EXPECT_EQ(handle, nullptr);
  }
}
