// Failures injected into the file routines: full disks, file-size ceilings, write faults.
#include <gtest/gtest.h>

#include <algorithm>

#include "image/image_handle.h"
#include "support/image_fixture.h"
#include "system/file.h"

namespace {

class ImageFaults : public testing::Test {
 protected:
  void TearDown() override { SysSetFileFaults(nullptr); }

  std::u16string Path() const { return dir_.File(u"image.qvi"); }

  TempDir dir_;
  ImageKeys keys_;
  SysFileFaults faults_;
};

}  // namespace

TEST_F(ImageFaults, DiskFullAtEveryMebibyteOfAFixedCreationLeavesNoFile)
{
  constexpr uint64_t kCapacity = 8ull << 20;
  for (uint64_t full = 0; full <= kCapacity; full += 1 << 20) {
    faults_ = SysFileFaults{};
    faults_.bytesUntilDiskFull = full;
    SysSetFileFaults(&faults_);
    EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed)), 0x4000000Du)
        << "disk full after " << full << " bytes";
    SysSetFileFaults(nullptr);
    EXPECT_EQ(FileCount(dir_), 0u) << "disk full after " << full << " bytes";
  }
}

TEST_F(ImageFaults, FileSystemCeilingContinuesInANewVolumeFile)
{
  // The file system refuses files above 3 MiB + header, but the disk has room.
  faults_.maxFileSize = 4096 + (3 << 20) + 1000;
  faults_.freeSpace = 1ull << 40;
  SysSetFileFaults(&faults_);
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(8ull << 20, kCreateFixed, ~0ull)), 0u);
  SysSetFileFaults(nullptr);
  ASSERT_TRUE(Exists(VolumeFilePath(Path(), 2)));
  // The first file keeps the whole units it stored.
  EXPECT_EQ(FileSize(Path()), 4096u + (3 << 20));
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_EQ(handle->set.StreamEnd(), 8192u + (8 << 20) + 4096u);
  std::vector<uint8_t> all(handle->set.StreamEnd());
  EXPECT_EQ(ReadStream(handle->set, 0, all.data(), all.size()), 0u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageFaults, FileSystemCeilingWithoutFreeSpaceIsDiskFull)
{
  faults_.maxFileSize = 4096 + (3 << 20);
  faults_.freeSpace = 4096;
  SysSetFileFaults(&faults_);
  EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(8ull << 20, kCreateFixed, ~0ull)), 0x4000000Du);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(FileCount(dir_), 0u);
}

TEST_F(ImageFaults, CeilingWithLimitZeroIsReturnedAsItIs)
{
  faults_.maxFileSize = 4096 + (3 << 20);
  faults_.freeSpace = 1ull << 40;
  SysSetFileFaults(&faults_);
  EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(8ull << 20, kCreateFixed, 0)), 0x4000000Du);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(FileCount(dir_), 0u);
}

TEST_F(ImageFaults, FailingHeaderRewriteIsReportedWithItsCode)
{
  // Creating volume file 1 writes its header (write 1 of the plan), then rewrites volume
  // file 0's header to announce it (write 2).
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20, 0, 4096 + (1 << 20))), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  const size_t volumes = handle->set.volumes.size();
  std::vector<uint8_t> data(1 << 20, 0x11);
  faults_.failingWrite = 3;  // the data write, the new header, then the rewrite
  SysSetFileFaults(&faults_);
  const StatusCode status =
      WriteStream(handle->set, handle->set.StreamEnd(), data.data(), data.size());
  SysSetFileFaults(nullptr);
  EXPECT_EQ(status, 0x4000000Au);
  EXPECT_EQ(handle->set.volumes.size(), volumes);
  EXPECT_FALSE(Exists(VolumeFilePath(Path(), static_cast<uint32_t>(volumes))));
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageFaults, ReadFaultDuringOpenIsReported)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20)), 0u);
  faults_.failingRead = 2;  // the header reads fine, the descriptor does not
  SysSetFileFaults(&faults_);
  ImageHandle* handle = nullptr;
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x40000009u);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(handle, nullptr);
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageFaults, FailedContinuationLeavesASetThatStillOpens)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20, 0, ~0ull)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  const uint64_t end = handle->set.StreamEnd();
  // Volume file 0 is at the file system's ceiling; the disk has room. Write 1 meets the
  // ceiling, writes 2 and 3 make volume file 1 and announce it, write 4 puts the unit
  // into it and fails.
  faults_.maxFileSize = FileSize(Path());
  faults_.freeSpace = 1ull << 40;
  faults_.failingWrite = 4;
  SysSetFileFaults(&faults_);
  std::vector<uint8_t> unit(4096, 0x22);
  EXPECT_EQ(WriteStream(handle->set, end, unit.data(), unit.size()), 0x4000000Du);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(faults_.writesSeen, 5u) << "the announcement is taken back";
  EXPECT_FALSE(Exists(VolumeFilePath(Path(), 1)));
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  EXPECT_EQ(handle->set.volumes.size(), 1u);
  EXPECT_EQ(handle->set.StreamEnd(), end);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}

TEST_F(ImageFaults, DiskFullWhileOverwritingKeepsTheDataBehindTheWrite)
{
  // Overwriting stored data fails with a full disk (a file system that stores every write
  // anew) while the directory reports room: that is not the file's size ceiling, so the
  // file is not cut at the write and no volume file follows it.
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4ull << 20, kCreateFixed, ~0ull)), 0u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(Path(), keys_, &handle), 0u);
  const uint64_t end = handle->set.StreamEnd();
  const uint64_t fileSize = FileSize(Path());
  std::vector<uint8_t> before(end);
  ASSERT_EQ(ReadStream(handle->set, 0, before.data(), before.size()), 0u);
  faults_.bytesUntilDiskFull = 4096;
  faults_.freeSpace = 1ull << 40;
  SysSetFileFaults(&faults_);
  std::vector<uint8_t> data(1 << 20, 0x33);
  EXPECT_EQ(WriteStream(handle->set, 8192, data.data(), data.size()), 0x4000000Du);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(FileCount(dir_), 1u);
  EXPECT_EQ(FileSize(Path()), fileSize);
  EXPECT_EQ(handle->set.StreamEnd(), end);
  std::vector<uint8_t> after(end);
  ASSERT_EQ(ReadStream(handle->set, 0, after.data(), after.size()), 0u);
  // The unit the failed write stored is the new one; everything behind it is as it was.
  EXPECT_TRUE(std::equal(after.begin() + 8192 + 4096, after.end(), before.begin() + 8192 + 4096));
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}
