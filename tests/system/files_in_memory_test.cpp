// The in-memory file backend behind the file routines: files placed in memory are read,
// written, grown, cut and deleted through SysOpenFile and its kin, with the sharing rules
// a disk has.
#include "system/files_in_memory.h"

#include <gtest/gtest.h>

#include <vector>

#include "image/image_handle.h"
#include "support/image_fixture.h"
#include "system/file.h"

namespace {

class FilesInMemory : public testing::Test {
 protected:
  void TearDown() override { ClearFilesInMemory(); }
};

}  // namespace

TEST_F(FilesInMemory, PlacedBytesAreReadBackAndWritesAreKept)
{
  const uint8_t bytes[] = {1, 2, 3, 4, 5};
  PutFileInMemory(u"/m/a.bin", bytes, sizeof bytes);
  SysFile* file = nullptr;
  ASSERT_EQ(SysOpenFile(u"/m/a.bin", kFileWritable, &file), 0u);
  uint8_t read[8] = {};
  uint32_t done = 0;
  ASSERT_EQ(SysReadFile(file, 3, read, sizeof read, &done), 0u);
  EXPECT_EQ(done, 2u);
  EXPECT_EQ(read[0], 4);
  const uint8_t more[] = {9, 9};
  ASSERT_EQ(SysWriteFile(file, 6, more, sizeof more, &done), 0u);
  uint64_t size = 0;
  ASSERT_EQ(SysGetFileSize(file, &size), 0u);
  EXPECT_EQ(size, 8u);
  ASSERT_EQ(SysSetFileSize(file, 2), 0u);
  ASSERT_EQ(SysCloseFile(file), 0u);
  std::vector<uint8_t> stored;
  ASSERT_TRUE(GetFileInMemory(u"/m/a.bin", &stored));
  EXPECT_EQ(stored, (std::vector<uint8_t>{1, 2}));
}

TEST_F(FilesInMemory, MissingFileIsNotFoundUntilCreated)
{
  SysFile* file = nullptr;
  EXPECT_EQ(SysOpenFile(u"/m/none", 0, &file), 0x4000000Fu);
  ASSERT_EQ(SysOpenFile(u"/m/none", kFileWritable | kFileCreate, &file), 0u);
  ASSERT_EQ(SysCloseFile(file), 0u);
  std::vector<uint8_t> stored{7};
  ASSERT_TRUE(GetFileInMemory(u"/m/none", &stored));
  EXPECT_TRUE(stored.empty());
  EXPECT_EQ(SysDeleteFile(u"/m/none"), 0u);
  EXPECT_FALSE(GetFileInMemory(u"/m/none", &stored));
  EXPECT_EQ(SysDeleteFile(u"/m/none"), 0x4000000Fu);
}

TEST_F(FilesInMemory, OnlySharedReadersCoexist)
{
  const uint8_t byte = 0;
  PutFileInMemory(u"/m/s", &byte, 1);
  SysFile* first = nullptr;
  SysFile* second = nullptr;
  SysFile* third = nullptr;
  ASSERT_EQ(SysOpenFile(u"/m/s", kFileShareRead, &first), 0u);
  ASSERT_EQ(SysOpenFile(u"/m/s", kFileShareRead, &second), 0u);
  EXPECT_EQ(SysOpenFile(u"/m/s", 0, &third), 0x40000008u);
  EXPECT_EQ(SysDeleteFile(u"/m/s"), 0x40000008u);
  ASSERT_EQ(SysCloseFile(first), 0u);
  ASSERT_EQ(SysCloseFile(second), 0u);
  ASSERT_EQ(SysOpenFile(u"/m/s", kFileWritable, &first), 0u);
  EXPECT_EQ(SysOpenFile(u"/m/s", kFileShareRead, &second), 0x40000008u);
  ASSERT_EQ(SysCloseFile(first), 0u);
}

// The whole image container runs on files in memory, as the fuzz targets use it.
TEST_F(FilesInMemory, AnImageIsMadeOpenedAndClosedInMemory)
{
  const std::u16string path = u"/m/image.qvi";
  const ImageKeys keys;
  ASSERT_EQ(CreateImage(path, keys, CreateParams(4ull << 20)), 0u);
  std::vector<uint8_t> stored;
  ASSERT_TRUE(GetFileInMemory(path, &stored));
  EXPECT_GT(stored.size(), 4096u);
  ImageKeyInfo info{sizeof info};
  ASSERT_EQ(ImgGetKeyInfo(path.c_str(), &info), 0u);
  EXPECT_EQ(info.keyLength, 32u);
  ImageHandle* handle = nullptr;
  ASSERT_EQ(OpenImage(path, keys, &handle, kOpenReadOnly), 0u);
  EXPECT_EQ(handle->capacity, 4ull << 20);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}
