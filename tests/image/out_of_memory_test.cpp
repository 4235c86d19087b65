// The image operations when the allocation routine refuses, one allocation after the other:
// each refusal gives the out-of-memory code of the layer that asked (0x40050005 for the
// image container's handle, buffers and table cache, 0x40030005 passed on unchanged for a
// cipher context), releases every block, closes every file and leaves no half-made image.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "image/image_handle.h"
#include "support/image_fixture.h"
#include "system/memory.h"

namespace {

constexpr StatusCode kImageRefusal = 0x40050005;
constexpr StatusCode kCipherRefusal = 0x40030005;

// More allocations than any operation here makes, even with an enciphering thread per
// processor.
constexpr uint64_t kMostAllocations = 64;

class ImageOutOfMemory : public testing::Test {
 protected:
  void TearDown() override { SysSetAllocationFaults(nullptr); }

  std::u16string Path() const { return dir_.File(u"image.qvi"); }

  void FailAllocation(uint64_t number)
  {
    faults_ = SysAllocationFaults{};
    faults_.failingAllocation = number;
    SysSetAllocationFaults(&faults_);
  }

  // The codes an operation gives while allocation 1, 2, ... is refused, up to the first
  // success. `run` runs the operation; `check` looks at what a refusal left behind.
  template <typename Run, typename Check>
  std::vector<StatusCode> CodesUntilSuccess(Run run, Check check)
  {
    std::vector<StatusCode> codes;
    for (uint64_t number = 1; number <= kMostAllocations; ++number) {
      FailAllocation(number);
      const StatusCode status = run();
      if (status == 0) {
        SysSetAllocationFaults(nullptr);
        return codes;
      }
      codes.push_back(status);
      EXPECT_EQ(faults_.blocksLive, 0u) << "allocation " << number << " refused";
      SysSetAllocationFaults(nullptr);
      check(number);
    }
    ADD_FAILURE() << "no success within " << kMostAllocations << " allocations";
    return codes;
  }

  TempDir dir_;
  ImageKeys keys_;
  SysAllocationFaults faults_;
};

// The enciphering threads' cipher copies: a run of crypto codes of at least one, at most
// one per processor up to 16.
void ExpectCipherCopies(const std::vector<StatusCode>& codes, size_t from, size_t to)
{
  ASSERT_GE(to, from + 1);
  ASSERT_LE(to, from + 16);
  for (size_t i = from; i < to; ++i) EXPECT_EQ(codes[i], kCipherRefusal) << "at " << i;
}

}  // namespace

TEST_F(ImageOutOfMemory, KeyInfoNeedsItsUnitBuffer)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  FailAllocation(1);
  ImageKeyInfo info{sizeof info};
  EXPECT_EQ(ImgGetKeyInfo(Path().c_str(), &info), kImageRefusal);
  EXPECT_EQ(faults_.blocksLive, 0u);
}

TEST_F(ImageOutOfMemory, CreateLeavesNoFileAfterAnyRefusal)
{
  const std::vector<StatusCode> codes = CodesUntilSuccess(
      [&] { return CreateImage(Path(), keys_, CreateParams(4ull << 20, kCreateFixed)); },
      [&](uint64_t number) { EXPECT_EQ(FileCount(dir_), 0u) << "allocation " << number; });
  // Work buffer, header buffer, header and data cipher, the content buffer and the ring of
  // enciphered chunks waiting for the writer thread, then the enciphering threads' copies of
  // the data cipher.
  ASSERT_GE(codes.size(), 7u);
  EXPECT_EQ(codes[0], kImageRefusal);
  EXPECT_EQ(codes[1], kImageRefusal);
  EXPECT_EQ(codes[2], kCipherRefusal);
  EXPECT_EQ(codes[3], kCipherRefusal);
  EXPECT_EQ(codes[4], kImageRefusal);
  EXPECT_EQ(codes[5], kImageRefusal);
  ExpectCipherCopies(codes, 6, codes.size());
  EXPECT_TRUE(Exists(Path()));
}

TEST_F(ImageOutOfMemory, OpenReleasesEverythingAndLeavesTheFileClosed)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(8ull << 20)), 0u);
  const std::vector<uint8_t> before = ReadBytes(Path());
  ImageHandle* handle = nullptr;
  const std::vector<StatusCode> codes =
      CodesUntilSuccess([&] { return OpenImage(Path(), keys_, &handle, kOpenReadOnly); },
                        [&](uint64_t number) {
                          EXPECT_EQ(handle, nullptr);
                          EXPECT_EQ(ReadBytes(Path()), before) << "allocation " << number;
                        });
  // The handle, work buffer, header buffer, header and data cipher, the descriptor's unit
  // buffer, then the table cache and its four slots.
  const std::vector<StatusCode> expected = {
      kImageRefusal, kImageRefusal, kImageRefusal, kCipherRefusal, kCipherRefusal, kImageRefusal,
      kImageRefusal, kImageRefusal, kImageRefusal, kImageRefusal,  kImageRefusal};
  EXPECT_EQ(codes, expected);
  ASSERT_NE(handle, nullptr);
  FailAllocation(0);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  EXPECT_EQ(faults_.blocksLive, 0u);
}

TEST_F(ImageOutOfMemory, ChangeKeyLeavesTheImageAsItWas)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  const std::vector<uint8_t> before = ReadBytes(Path());
  const ImageKeys newKeys(kCipherAes, 32, 9);
  FailAllocation(1);
  EXPECT_EQ(ImgChangeKey(handle, newKeys.headerKey.data(), 32), kCipherRefusal);
  EXPECT_EQ(faults_.blocksLive, 0u);
  SysSetAllocationFaults(nullptr);
  EXPECT_EQ(ReadBytes(Path()), before);
  ASSERT_EQ(ImgClose(handle, 0), 0u);
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageOutOfMemory, ClearChangesNothingUntilItHasAllItNeeds)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(8ull << 20)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  const std::vector<uint8_t> before = ReadBytes(Path());
  const Guid identifier = handle->imageIdentifier;
  std::vector<bool> unchanged;
  const std::vector<StatusCode> codes =
      CodesUntilSuccess([&] { return ImgClear(handle, nullptr, nullptr); },
                        [&](uint64_t) { unchanged.push_back(ReadBytes(Path()) == before); });
  ASSERT_EQ(ImgClose(handle, 0), 0u);

  // The content buffer, the ring of enciphered chunks waiting for the writer thread and the
  // enciphering threads' cipher copies come before the first write: refusing any of them
  // leaves every byte as it was. The rest reload the
  // cleared image (the descriptor's unit buffer, the table cache and its four slots): the
  // clearing is complete by then and the image opens with the same password.
  ASSERT_GE(codes.size(), 9u);
  const size_t reloads = 6;
  EXPECT_EQ(codes[0], kImageRefusal);
  EXPECT_EQ(codes[1], kImageRefusal);
  ExpectCipherCopies(codes, 2, codes.size() - reloads);
  for (size_t i = codes.size() - reloads; i < codes.size(); ++i) {
    EXPECT_EQ(codes[i], kImageRefusal) << "at " << i;
  }
  for (size_t i = 0; i < codes.size() - reloads; ++i) EXPECT_TRUE(unchanged[i]) << "at " << i;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_NE(std::memcmp(&handle->imageIdentifier, &identifier, sizeof identifier), 0);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}
