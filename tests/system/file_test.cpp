#include "system/file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/temp_dir.h"
#include "system/memory.h"

namespace {

struct FileCloser {
  void operator()(SysFile* file) const { SysCloseFile(file); }
};
using FilePtr = std::unique_ptr<SysFile, FileCloser>;

struct BlockReleaser {
  void operator()(void* block) const { SysRelease(block); }
};
using BlockPtr = std::unique_ptr<uint8_t, BlockReleaser>;

constexpr uint32_t kReadWrite = kFileWritable;
constexpr uint32_t kCreate = kFileWritable | kFileCreate;

class SysFileTest : public ::testing::Test {
 protected:
  void TearDown() override { SysSetFileFaults(nullptr); }

  std::u16string PathOf(const char16_t* name) const { return dir_.File(name); }

  // Opens `path`; the status is checked by the caller through `status`.
  FilePtr Open(const std::u16string& path, uint32_t flags, StatusCode* status)
  {
    SysFile* file = reinterpret_cast<SysFile*>(this);  // must be overwritten
    *status = SysOpenFile(path.c_str(), flags, &file);
    if (IsFailure(*status)) {
      EXPECT_EQ(file, nullptr);
      return FilePtr();
    }
    return FilePtr(file);
  }

  // Opens `path` and expects it to succeed.
  FilePtr MustOpen(const std::u16string& path, uint32_t flags)
  {
    StatusCode status = kStatusSuccess;
    FilePtr file = Open(path, flags, &status);
    EXPECT_EQ(status, kStatusSuccess);
    return file;
  }

  // Creates `path` holding `content`.
  void MakeFile(const std::u16string& path, const std::string& content)
  {
    FilePtr file = MustOpen(path, kCreate);
    ASSERT_NE(file, nullptr);
    uint32_t done = 0;
    ASSERT_EQ(SysWriteFile(file.get(), 0, content.data(), Length(content), &done), kStatusSuccess);
    ASSERT_EQ(done, content.size());
  }

  static uint32_t Length(const std::string& text) { return static_cast<uint32_t>(text.size()); }

  static uint64_t SizeOf(SysFile* file)
  {
    uint64_t size = UINT64_MAX;
    EXPECT_EQ(SysGetFileSize(file, &size), kStatusSuccess);
    return size;
  }

  // The whole content of an open file.
  static std::string ContentOf(SysFile* file)
  {
    std::string content(SizeOf(file), '?');
    uint32_t done = 0;
    EXPECT_EQ(SysReadFile(file, 0, content.data(), Length(content), &done), kStatusSuccess);
    EXPECT_EQ(done, content.size());
    return content;
  }

  // The whole content of a closed file.
  std::string ContentOf(const std::u16string& path)
  {
    FilePtr file = MustOpen(path, 0);
    return file == nullptr ? std::string("<cannot open>") : ContentOf(file.get());
  }

  static StatusCode Write(SysFile* file, uint64_t offset, const std::string& text, uint32_t* done)
  {
    *done = UINT32_MAX;
    return SysWriteFile(file, offset, text.data(), Length(text), done);
  }

  TempDir dir_;
};

// Page-aligned memory for unbuffered transfers.
BlockPtr AllocateBlock(size_t size)
{
  return BlockPtr(static_cast<uint8_t*>(SysAllocate(size, kAllocZeroed | kAllocPageable)));
}

}  // namespace

TEST_F(SysFileTest, CreateWriteReadBackFlushCloseAndDelete)
{
  const std::u16string path = PathOf(u"volume.qvi");
  SysFile* file = nullptr;
  ASSERT_EQ(SysOpenFile(path.c_str(), kCreate, &file), kStatusSuccess);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(SizeOf(file), 0u);

  uint32_t done = 0;
  EXPECT_EQ(Write(file, 0, "hello, volume", &done), kStatusSuccess);
  EXPECT_EQ(done, 13u);
  // A write past the end leaves a gap of zeros.
  EXPECT_EQ(Write(file, 20, "tail", &done), kStatusSuccess);
  EXPECT_EQ(done, 4u);
  EXPECT_EQ(SizeOf(file), 24u);
  EXPECT_EQ(Write(file, 7, "VOLUME", &done), kStatusSuccess);
  EXPECT_EQ(ContentOf(file), std::string("hello, VOLUME") + std::string(7, '\0') + "tail");

  char part[6] = {};
  EXPECT_EQ(SysReadFile(file, 7, part, 6, &done), kStatusSuccess);
  EXPECT_EQ(done, 6u);
  EXPECT_EQ(std::string(part, 6), "VOLUME");

  EXPECT_EQ(SysFlushFile(file), kStatusSuccess);
  EXPECT_EQ(SysCloseFile(file), kStatusSuccess);

  EXPECT_EQ(ContentOf(path), std::string("hello, VOLUME") + std::string(7, '\0') + "tail");
  EXPECT_EQ(SysDeleteFile(path.c_str()), kStatusSuccess);
  EXPECT_FALSE(std::filesystem::exists(dir_.path() / "volume.qvi"));
  StatusCode status = kStatusSuccess;
  EXPECT_EQ(Open(path, 0, &status), nullptr);
  EXPECT_EQ(status, kSysNotFound);
}

TEST_F(SysFileTest, CreateReplacesAnExistingFile)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "old content");
  FilePtr file = MustOpen(path, kCreate);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(SizeOf(file.get()), 0u);
  file.reset();
  EXPECT_EQ(ContentOf(path), "");
}

TEST_F(SysFileTest, CreateWithoutWriteAccessGivesAnEmptyReadOnlyFile)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "old content");
  FilePtr file = MustOpen(path, kFileCreate);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(SizeOf(file.get()), 0u);
  uint32_t done = 0;
  EXPECT_EQ(Write(file.get(), 0, "x", &done), kSysAccessDenied);
  EXPECT_EQ(done, 0u);
}

TEST_F(SysFileTest, OpeningKeepsTheContent)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "kept");
  FilePtr file = MustOpen(path, kReadWrite);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(ContentOf(file.get()), "kept");
}

TEST_F(SysFileTest, SetSizeCutsAndExtendsWithZeros)
{
  const std::u16string path = PathOf(u"volume.qvi");
  FilePtr file = MustOpen(path, kCreate);
  ASSERT_NE(file, nullptr);
  uint32_t done = 0;
  ASSERT_EQ(Write(file.get(), 0, "0123456789", &done), kStatusSuccess);

  EXPECT_EQ(SysSetFileSize(file.get(), 4), kStatusSuccess);
  EXPECT_EQ(SizeOf(file.get()), 4u);
  EXPECT_EQ(ContentOf(file.get()), "0123");

  EXPECT_EQ(SysSetFileSize(file.get(), 8192), kStatusSuccess);
  EXPECT_EQ(SizeOf(file.get()), 8192u);
  EXPECT_EQ(ContentOf(file.get()), "0123" + std::string(8188, '\0'));

  EXPECT_EQ(SysSetFileSize(file.get(), 0), kStatusSuccess);
  EXPECT_EQ(SizeOf(file.get()), 0u);
  EXPECT_EQ(SysFlushFile(file.get()), kStatusSuccess);
  file.reset();
  EXPECT_EQ(ContentOf(path), "");
}

TEST_F(SysFileTest, OffsetsBeyondFourGibibytes)
{
  constexpr uint64_t kFar = (uint64_t{1} << 32) + 4096;
  FilePtr file = MustOpen(PathOf(u"volume.qvi"), kCreate);
  ASSERT_NE(file, nullptr);
  uint32_t done = 0;
  ASSERT_EQ(Write(file.get(), kFar, "far", &done), kStatusSuccess);
  EXPECT_EQ(SizeOf(file.get()), kFar + 3);
  char text[8] = {};
  EXPECT_EQ(SysReadFile(file.get(), kFar - 1, text, sizeof text, &done), kStatusSuccess);
  EXPECT_EQ(done, 4u);
  EXPECT_EQ(std::string(text, 4), std::string("\0far", 4));
  // Nothing was written at the offset's low 32 bits.
  EXPECT_EQ(SysReadFile(file.get(), 4096, text, 3, &done), kStatusSuccess);
  EXPECT_EQ(std::string(text, 3), std::string(3, '\0'));
  EXPECT_EQ(SysSetFileSize(file.get(), 0), kStatusSuccess);
}

TEST_F(SysFileTest, ReadAtOrAfterTheEndIsShortOrEmpty)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "0123456789");
  FilePtr file = MustOpen(path, 0);
  ASSERT_NE(file, nullptr);
  char buffer[32];
  uint32_t done = UINT32_MAX;
  EXPECT_EQ(SysReadFile(file.get(), 6, buffer, sizeof buffer, &done), kStatusSuccess);
  EXPECT_EQ(done, 4u);
  EXPECT_EQ(std::string(buffer, 4), "6789");
  done = UINT32_MAX;
  EXPECT_EQ(SysReadFile(file.get(), 10, buffer, sizeof buffer, &done), kStatusSuccess);
  EXPECT_EQ(done, 0u);
  done = UINT32_MAX;
  EXPECT_EQ(SysReadFile(file.get(), 1000000, buffer, sizeof buffer, &done), kStatusSuccess);
  EXPECT_EQ(done, 0u);
  done = UINT32_MAX;
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 0, &done), kStatusSuccess);
  EXPECT_EQ(done, 0u);
}

TEST_F(SysFileTest, MissingFilesAreNotFound)
{
  StatusCode status = kStatusSuccess;
  EXPECT_EQ(Open(PathOf(u"missing.qvi"), 0, &status), nullptr);
  EXPECT_EQ(status, kSysNotFound);
  EXPECT_EQ(Open(PathOf(u"missing.qvi"), kReadWrite | kFileShareRead, &status), nullptr);
  EXPECT_EQ(status, kSysNotFound);
  EXPECT_EQ(Open(PathOf(u"missing/volume.qvi"), kCreate, &status), nullptr);
  EXPECT_EQ(status, kSysNotFound);
  EXPECT_EQ(SysDeleteFile(PathOf(u"missing.qvi").c_str()), kSysNotFound);
  EXPECT_EQ(SysDeleteFile(PathOf(u"missing/volume.qvi").c_str()), kSysNotFound);
  EXPECT_FALSE(std::filesystem::exists(dir_.path() / "missing.qvi"));
}

TEST_F(SysFileTest, MissingArgumentsAreRefused)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  FilePtr file = MustOpen(path, kReadWrite);
  ASSERT_NE(file, nullptr);
  char buffer[4] = {};
  uint32_t done = 0;
  uint64_t value = 0;

  SysFile* opened = reinterpret_cast<SysFile*>(buffer);
  EXPECT_EQ(SysOpenFile(nullptr, 0, &opened), kSysInvalidParameter);
  EXPECT_EQ(opened, nullptr);
  EXPECT_EQ(SysOpenFile(path.c_str(), 0, nullptr), kSysInvalidParameter);
  // Empty text names no file either.
  opened = reinterpret_cast<SysFile*>(buffer);
  EXPECT_EQ(SysOpenFile(u"", kCreate, &opened), kSysInvalidParameter);
  EXPECT_EQ(opened, nullptr);
  EXPECT_EQ(SysDeleteFile(u""), kSysInvalidParameter);

  EXPECT_EQ(SysReadFile(nullptr, 0, buffer, 4, &done), kSysInvalidParameter);
  EXPECT_EQ(SysReadFile(file.get(), 0, nullptr, 4, &done), kSysInvalidParameter);
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 4, nullptr), kSysInvalidParameter);
  EXPECT_EQ(SysWriteFile(nullptr, 0, buffer, 4, &done), kSysInvalidParameter);
  EXPECT_EQ(SysWriteFile(file.get(), 0, nullptr, 4, &done), kSysInvalidParameter);
  EXPECT_EQ(SysWriteFile(file.get(), 0, buffer, 4, nullptr), kSysInvalidParameter);
  EXPECT_EQ(SysGetFileSize(nullptr, &value), kSysInvalidParameter);
  EXPECT_EQ(SysGetFileSize(file.get(), nullptr), kSysInvalidParameter);
  EXPECT_EQ(SysSetFileSize(nullptr, 0), kSysInvalidParameter);
  EXPECT_EQ(SysFlushFile(nullptr), kSysInvalidParameter);
  EXPECT_EQ(SysDeleteFile(nullptr), kSysInvalidParameter);
  EXPECT_EQ(SysGetFreeSpace(nullptr, &value), kSysInvalidParameter);
  EXPECT_EQ(SysGetFreeSpace(dir_.Text().c_str(), nullptr), kSysInvalidParameter);

  // None of the refused calls touched the file.
  EXPECT_EQ(ContentOf(file.get()), "content");
}

TEST_F(SysFileTest, ClosingNothingIsIgnored)
{
  EXPECT_EQ(SysCloseFile(nullptr), kStatusSuccess);
}

TEST_F(SysFileTest, ReadOnlyFilesRefuseWritesAndSizeChanges)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  FilePtr file = MustOpen(path, 0);
  ASSERT_NE(file, nullptr);
  uint32_t done = UINT32_MAX;
  EXPECT_EQ(Write(file.get(), 0, "CHANGED", &done), kSysAccessDenied);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(SysSetFileSize(file.get(), 2), kSysAccessDenied);
  EXPECT_EQ(ContentOf(file.get()), "content");
}

TEST_F(SysFileTest, ExclusiveOpenFailsWhileAnyOtherOpenExists)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  for (uint32_t first : {0u, kReadWrite, kFileShareRead, kReadWrite | kFileShareRead}) {
    FilePtr held = MustOpen(path, first);
    ASSERT_NE(held, nullptr) << first;
    for (uint32_t second : {0u, kReadWrite, kReadWrite | kFileUnbuffered}) {
      StatusCode status = kStatusSuccess;
      EXPECT_EQ(Open(path, second, &status), nullptr) << first << " then " << second;
      EXPECT_EQ(status, kSysAccessDenied) << first << " then " << second;
    }
  }
  // Once the other open is closed, the exclusive open succeeds.
  EXPECT_NE(MustOpen(path, kReadWrite), nullptr);
}

TEST_F(SysFileTest, SharedReadOpenFailsWhileAnExclusiveOpenExists)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  for (uint32_t first : {0u, kReadWrite}) {
    FilePtr held = MustOpen(path, first);
    ASSERT_NE(held, nullptr);
    StatusCode status = kStatusSuccess;
    EXPECT_EQ(Open(path, kFileShareRead, &status), nullptr) << first;
    EXPECT_EQ(status, kSysAccessDenied) << first;
  }
}

TEST_F(SysFileTest, SharedReadOpensCoexist)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  FilePtr first = MustOpen(path, kFileShareRead);
  FilePtr second = MustOpen(path, kFileShareRead);
  FilePtr third = MustOpen(path, kFileShareRead | kFileUnbuffered);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  ASSERT_NE(third, nullptr);
  EXPECT_EQ(ContentOf(first.get()), "content");
  EXPECT_EQ(ContentOf(second.get()), "content");
}

TEST_F(SysFileTest, WritableOpenSharingReadingAdmitsNoOtherOpen)
{
  // Reading is shared, but the other opens do not share writing, which this one does.
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  {
    FilePtr writer = MustOpen(path, kReadWrite | kFileShareRead);
    ASSERT_NE(writer, nullptr);
    StatusCode status = kStatusSuccess;
    EXPECT_EQ(Open(path, kFileShareRead, &status), nullptr);
    EXPECT_EQ(status, kSysAccessDenied);
  }
  FilePtr reader = MustOpen(path, kFileShareRead);
  ASSERT_NE(reader, nullptr);
  StatusCode status = kStatusSuccess;
  EXPECT_EQ(Open(path, kReadWrite | kFileShareRead, &status), nullptr);
  EXPECT_EQ(status, kSysAccessDenied);
}

TEST_F(SysFileTest, CreatingOverAnOpenFileFailsAndKeepsItsContent)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "precious content");
  for (uint32_t held : {kReadWrite, 0u, kFileShareRead}) {
    FilePtr file = MustOpen(path, held);
    ASSERT_NE(file, nullptr);
    for (uint32_t create : {kCreate, kCreate | kFileShareRead, kCreate | kFileUnbuffered}) {
      StatusCode status = kStatusSuccess;
      EXPECT_EQ(Open(path, create, &status), nullptr) << held << " " << create;
      EXPECT_EQ(status, kSysAccessDenied) << held << " " << create;
    }
    EXPECT_EQ(ContentOf(file.get()), "precious content") << held;
  }
  EXPECT_EQ(ContentOf(path), "precious content");
}

TEST_F(SysFileTest, DeletingAnOpenFileFails)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  for (uint32_t held : {kReadWrite, kFileShareRead}) {
    FilePtr file = MustOpen(path, held);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(SysDeleteFile(path.c_str()), kSysAccessDenied) << held;
    EXPECT_EQ(ContentOf(file.get()), "content");
  }
  EXPECT_EQ(SysDeleteFile(path.c_str()), kStatusSuccess);
  EXPECT_FALSE(std::filesystem::exists(dir_.path() / "volume.qvi"));
}

TEST_F(SysFileTest, DirectoriesAreNotFiles)
{
  std::filesystem::create_directory(dir_.path() / "folder");
  const std::u16string path = PathOf(u"folder");
  for (uint32_t flags : {0u, kFileShareRead, kReadWrite, kCreate}) {
    StatusCode status = kStatusSuccess;
    EXPECT_EQ(Open(path, flags, &status), nullptr) << flags;
    EXPECT_EQ(status, kSysAccessDenied) << flags;
  }
  EXPECT_EQ(SysDeleteFile(path.c_str()), kSysAccessDenied);
  EXPECT_TRUE(std::filesystem::is_directory(dir_.path() / "folder"));
}

TEST_F(SysFileTest, UnbufferedTransfersOfAlignedBlocks)
{
  constexpr uint32_t kBlock = 64 * 1024;
  BlockPtr out = AllocateBlock(kBlock);
  BlockPtr in = AllocateBlock(kBlock);
  ASSERT_NE(out, nullptr);
  ASSERT_NE(in, nullptr);
  for (uint32_t i = 0; i < kBlock; ++i) out.get()[i] = static_cast<uint8_t>(i * 7 + i / 4096);

  const std::u16string path = PathOf(u"volume.qvi");
  FilePtr file = MustOpen(path, kCreate | kFileUnbuffered);
  ASSERT_NE(file, nullptr);
  uint32_t done = 0;
  EXPECT_EQ(SysWriteFile(file.get(), 0, out.get(), kBlock, &done), kStatusSuccess);
  EXPECT_EQ(done, kBlock);
  EXPECT_EQ(SysWriteFile(file.get(), kBlock + 8192, out.get() + 4096, 8192, &done), kStatusSuccess);
  EXPECT_EQ(done, 8192u);
  EXPECT_EQ(SizeOf(file.get()), kBlock + 16384u);

  EXPECT_EQ(SysReadFile(file.get(), 0, in.get(), kBlock, &done), kStatusSuccess);
  EXPECT_EQ(done, kBlock);
  EXPECT_EQ(std::memcmp(in.get(), out.get(), kBlock), 0);
  EXPECT_EQ(SysReadFile(file.get(), kBlock, in.get(), kBlock, &done), kStatusSuccess);
  EXPECT_EQ(done, 16384u);
  EXPECT_EQ(std::memcmp(in.get(), std::string(8192, '\0').data(), 8192), 0);
  EXPECT_EQ(std::memcmp(in.get() + 8192, out.get() + 4096, 8192), 0);
  EXPECT_EQ(SysFlushFile(file.get()), kStatusSuccess);
  file.reset();

  // The same bytes through a buffered open.
  FilePtr reader = MustOpen(path, 0);
  ASSERT_NE(reader, nullptr);
  const std::string content = ContentOf(reader.get());
  ASSERT_EQ(content.size(), kBlock + 16384u);
  EXPECT_EQ(std::memcmp(content.data(), out.get(), kBlock), 0);
  EXPECT_EQ(std::memcmp(content.data() + kBlock + 8192, out.get() + 4096, 8192), 0);
}

// Writes behind: the same bytes, rules and seam as plain writes, on buffered and unbuffered
// files alike; a flush then makes them stable.
TEST_F(SysFileTest, WritesBehindStoreTheSameBytesUnderTheSameRules)
{
  constexpr uint32_t kBlock = 64 * 1024;
  BlockPtr out = AllocateBlock(kBlock);
  ASSERT_NE(out, nullptr);
  for (uint32_t i = 0; i < kBlock; ++i) out.get()[i] = static_cast<uint8_t>(i * 13 + i / 4096);
  for (const uint32_t flags : {kCreate, kCreate | kFileUnbuffered}) {
    const std::u16string path = PathOf(u"behind.qvi");
    FilePtr file = MustOpen(path, flags);
    ASSERT_NE(file, nullptr);
    uint32_t done = 0;
    EXPECT_EQ(SysWriteFileBehind(file.get(), 4096, out.get(), kBlock, &done), kStatusSuccess);
    EXPECT_EQ(done, kBlock);
    EXPECT_EQ(SysFlushFile(file.get()), kStatusSuccess);
    EXPECT_EQ(SizeOf(file.get()), kBlock + 4096u);
    file.reset();
    const std::string content = ContentOf(path);
    ASSERT_EQ(content.size(), kBlock + 4096u) << flags;
    EXPECT_EQ(content.substr(0, 4096), std::string(4096, '\0')) << flags;
    EXPECT_EQ(std::memcmp(content.data() + 4096, out.get(), kBlock), 0) << flags;
  }

  // A buffered file takes any transfer behind as well: past its cache when whole units
  // allow it, else through it.
  FilePtr cached = MustOpen(PathOf(u"cached.qvi"), kCreate);
  ASSERT_NE(cached, nullptr);
  uint32_t stored = 0;
  EXPECT_EQ(SysWriteFileBehind(cached.get(), 0, out.get(), 8192, &stored), kStatusSuccess);
  EXPECT_EQ(SysWriteFileBehind(cached.get(), 3, "abc", 3, &stored), kStatusSuccess);
  EXPECT_EQ(stored, 3u);
  EXPECT_EQ(Write(cached.get(), 8192, "tail", &stored), kStatusSuccess);
  EXPECT_EQ(SysFlushFile(cached.get()), kStatusSuccess);
  std::string expected(reinterpret_cast<const char*>(out.get()), 8192);
  expected.replace(3, 3, "abc");
  EXPECT_EQ(ContentOf(cached.get()), expected + "tail");

  FilePtr unbuffered = MustOpen(PathOf(u"aligned.qvi"), kCreate | kFileUnbuffered);
  FilePtr readOnly = MustOpen(PathOf(u"behind.qvi"), 0);
  ASSERT_NE(unbuffered, nullptr);
  ASSERT_NE(readOnly, nullptr);
  uint32_t done = UINT32_MAX;
  EXPECT_EQ(SysWriteFileBehind(unbuffered.get(), 512, out.get(), 4096, &done),
            kSysInvalidParameter);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(SysWriteFileBehind(readOnly.get(), 0, out.get(), 4096, &done), kSysAccessDenied);
  EXPECT_EQ(SysWriteFileBehind(nullptr, 0, out.get(), 4096, &done), kSysInvalidParameter);
  EXPECT_EQ(SysWriteFileBehind(unbuffered.get(), 0, out.get(), 4096, nullptr),
            kSysInvalidParameter);

  SysFileFaults faults;
  faults.failingWrite = 2;
  faults.bytesUntilDiskFull = 3 * 4096 + 100;
  SysSetFileFaults(&faults);
  EXPECT_EQ(SysWriteFileBehind(unbuffered.get(), 0, out.get(), 8192, &done), kStatusSuccess);
  EXPECT_EQ(SysWriteFileBehind(unbuffered.get(), 8192, out.get(), 4096, &done), kSysWriteFault);
  EXPECT_EQ(SysWriteFileBehind(unbuffered.get(), 8192, out.get(), 8192, &done), kSysDiskFull);
  EXPECT_EQ(done, 4096u);  // whole units only
  EXPECT_EQ(faults.writesSeen, 3u);
}

TEST_F(SysFileTest, UnbufferedTransfersMustBeAligned)
{
  BlockPtr block = AllocateBlock(16384);
  ASSERT_NE(block, nullptr);
  FilePtr file = MustOpen(PathOf(u"volume.qvi"), kCreate | kFileUnbuffered);
  ASSERT_NE(file, nullptr);
  uint32_t done = UINT32_MAX;
  EXPECT_EQ(SysWriteFile(file.get(), 512, block.get(), 4096, &done), kSysInvalidParameter);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(SysWriteFile(file.get(), 0, block.get(), 4000, &done), kSysInvalidParameter);
  EXPECT_EQ(SysWriteFile(file.get(), 0, block.get() + 16, 4096, &done), kSysInvalidParameter);
  EXPECT_EQ(SysReadFile(file.get(), 100, block.get(), 4096, &done), kSysInvalidParameter);
  EXPECT_EQ(SysReadFile(file.get(), 0, block.get(), 100, &done), kSysInvalidParameter);
  EXPECT_EQ(SysReadFile(file.get(), 0, block.get() + 512, 4096, &done), kSysInvalidParameter);
  EXPECT_EQ(SizeOf(file.get()), 0u);
  // Reading a whole unit at the end of a shorter file gives what there is.
  EXPECT_EQ(SysWriteFile(file.get(), 0, block.get(), 8192, &done), kStatusSuccess);
  EXPECT_EQ(SysSetFileSize(file.get(), 5000), kStatusSuccess);
  EXPECT_EQ(SysReadFile(file.get(), 4096, block.get(), 8192, &done), kStatusSuccess);
  EXPECT_EQ(done, 904u);
}

TEST_F(SysFileTest, NonAsciiNamesWork)
{
  // "é日本" followed by U+1F600 (a surrogate pair) and ".qvi".
  const char16_t name[] = {0x00E9, 0x65E5, 0x672C, 0xD83D, 0xDE00, u'.', u'q', u'v', u'i', 0};
  const std::u16string path = PathOf(name);
  MakeFile(path, "unicode");
  EXPECT_TRUE(std::filesystem::exists(dir_.path() / std::u16string(name)));
  EXPECT_EQ(ContentOf(path), "unicode");
  uint64_t free = 0;
  std::filesystem::create_directory(dir_.path() / std::u16string(name + 1, 2));
  EXPECT_EQ(SysGetFreeSpace(PathOf(std::u16string(name + 1, 2).c_str()).c_str(), &free),
            kStatusSuccess);
  EXPECT_GT(free, 0u);
  EXPECT_EQ(SysDeleteFile(path.c_str()), kStatusSuccess);
  EXPECT_FALSE(std::filesystem::exists(dir_.path() / std::u16string(name)));
}

TEST_F(SysFileTest, FreeSpaceOfARealDirectory)
{
  uint64_t bytes = 0;
  EXPECT_EQ(SysGetFreeSpace(dir_.Text().c_str(), &bytes), kStatusSuccess);
  EXPECT_GT(bytes, 0u);
  bytes = 0;
  EXPECT_EQ(SysGetFreeSpace(u"", &bytes), kStatusSuccess);  // the current directory
  EXPECT_GT(bytes, 0u);
  EXPECT_EQ(SysGetFreeSpace(PathOf(u"missing").c_str(), &bytes), kSysNotFound);
}

TEST_F(SysFileTest, DiskFillsUpAfterTheGivenBytesAcrossFiles)
{
  FilePtr first = MustOpen(PathOf(u"first.qvi"), kCreate);
  FilePtr second = MustOpen(PathOf(u"second.qvi"), kCreate);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 100;
  SysSetFileFaults(&faults);

  uint32_t done = 0;
  EXPECT_EQ(Write(first.get(), 0, std::string(60, 'a'), &done), kStatusSuccess);
  EXPECT_EQ(done, 60u);
  EXPECT_EQ(faults.bytesUntilDiskFull, 40u);
  EXPECT_EQ(Write(second.get(), 10, std::string(60, 'b'), &done), kSysDiskFull);
  EXPECT_EQ(done, 40u);
  EXPECT_EQ(faults.bytesUntilDiskFull, 0u);
  EXPECT_EQ(Write(first.get(), 60, "c", &done), kSysDiskFull);
  EXPECT_EQ(done, 0u);
  // A write of nothing needs no space.
  EXPECT_EQ(SysWriteFile(first.get(), 0, "", 0, &done), kStatusSuccess);
  EXPECT_EQ(faults.writesSeen, 4u);

  EXPECT_EQ(ContentOf(first.get()), std::string(60, 'a'));
  EXPECT_EQ(ContentOf(second.get()), std::string(10, '\0') + std::string(40, 'b'));
}

TEST_F(SysFileTest, UnbufferedDiskFullStoresWholeUnits)
{
  BlockPtr block = AllocateBlock(16384);
  ASSERT_NE(block, nullptr);
  std::memset(block.get(), 0x5A, 16384);
  FilePtr file = MustOpen(PathOf(u"volume.qvi"), kCreate | kFileUnbuffered);
  ASSERT_NE(file, nullptr);
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 4096 + 100;
  SysSetFileFaults(&faults);
  uint32_t done = 0;
  EXPECT_EQ(SysWriteFile(file.get(), 0, block.get(), 16384, &done), kSysDiskFull);
  EXPECT_EQ(done, 4096u);
  EXPECT_EQ(faults.bytesUntilDiskFull, 100u);
  EXPECT_EQ(SizeOf(file.get()), 4096u);
}

TEST_F(SysFileTest, FileSizeCeiling)
{
  const std::u16string path = PathOf(u"volume.qvi");
  FilePtr file = MustOpen(path, kCreate);
  ASSERT_NE(file, nullptr);
  SysFileFaults faults;
  faults.maxFileSize = 50;
  SysSetFileFaults(&faults);

  uint32_t done = 0;
  EXPECT_EQ(Write(file.get(), 0, std::string(40, 'a'), &done), kStatusSuccess);
  EXPECT_EQ(done, 40u);
  EXPECT_EQ(Write(file.get(), 40, std::string(20, 'b'), &done), kSysDiskFull);
  EXPECT_EQ(done, 10u);
  EXPECT_EQ(SizeOf(file.get()), 50u);
  EXPECT_EQ(Write(file.get(), 60, "c", &done), kSysDiskFull);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(Write(file.get(), 50, "c", &done), kSysDiskFull);
  EXPECT_EQ(done, 0u);
  // Below the ceiling, writes still work.
  EXPECT_EQ(Write(file.get(), 0, "AB", &done), kStatusSuccess);
  EXPECT_EQ(done, 2u);
  // The size cannot pass the ceiling either.
  EXPECT_EQ(SysSetFileSize(file.get(), 51), kSysDiskFull);
  EXPECT_EQ(SysSetFileSize(file.get(), 50), kStatusSuccess);
  EXPECT_EQ(ContentOf(file.get()), "AB" + std::string(38, 'a') + std::string(10, 'b'));
  // The ceiling holds for every file; the space left is not consumed by it.
  EXPECT_EQ(faults.bytesUntilDiskFull, UINT64_MAX - 52);
}

TEST_F(SysFileTest, TheChosenWriteFails)
{
  FilePtr first = MustOpen(PathOf(u"first.qvi"), kCreate);
  FilePtr second = MustOpen(PathOf(u"second.qvi"), kCreate);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  SysFileFaults faults;
  faults.failingWrite = 3;
  SysSetFileFaults(&faults);

  uint32_t done = 0;
  EXPECT_EQ(Write(first.get(), 0, "one", &done), kStatusSuccess);
  EXPECT_EQ(Write(second.get(), 0, "two", &done), kStatusSuccess);
  EXPECT_EQ(Write(first.get(), 3, "three", &done), kSysWriteFault);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(faults.writesSeen, 3u);
  EXPECT_EQ(Write(first.get(), 3, "four", &done), kStatusSuccess);
  EXPECT_EQ(done, 4u);
  EXPECT_EQ(faults.writesSeen, 4u);
  EXPECT_EQ(ContentOf(first.get()), "onefour");
  EXPECT_EQ(ContentOf(second.get()), "two");
}

TEST_F(SysFileTest, TheChosenReadFails)
{
  const std::u16string path = PathOf(u"volume.qvi");
  MakeFile(path, "content");
  FilePtr file = MustOpen(path, 0);
  ASSERT_NE(file, nullptr);
  SysFileFaults faults;
  faults.failingRead = 2;
  SysSetFileFaults(&faults);

  char buffer[7] = {};
  uint32_t done = UINT32_MAX;
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 7, &done), kStatusSuccess);
  EXPECT_EQ(done, 7u);
  std::memset(buffer, 0, sizeof buffer);
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 7, &done), kSysReadFault);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(std::string(buffer, 7), std::string(7, '\0'));
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 7, &done), kStatusSuccess);
  EXPECT_EQ(std::string(buffer, 7), "content");
  EXPECT_EQ(faults.readsSeen, 3u);
  EXPECT_EQ(faults.writesSeen, 0u);
}

TEST_F(SysFileTest, FreeSpaceCanBeDictated)
{
  SysFileFaults faults;
  faults.freeSpace = 12345;
  SysSetFileFaults(&faults);
  uint64_t bytes = 0;
  EXPECT_EQ(SysGetFreeSpace(dir_.Text().c_str(), &bytes), kStatusSuccess);
  EXPECT_EQ(bytes, 12345u);
  faults.freeSpace = 0;
  EXPECT_EQ(SysGetFreeSpace(u"", &bytes), kStatusSuccess);
  EXPECT_EQ(bytes, 0u);
  // UINT64_MAX asks for the real figure.
  faults.freeSpace = UINT64_MAX;
  bytes = 0;
  EXPECT_EQ(SysGetFreeSpace(dir_.Text().c_str(), &bytes), kStatusSuccess);
  EXPECT_GT(bytes, 0u);
  EXPECT_NE(bytes, UINT64_MAX);
}

TEST_F(SysFileTest, CountersSeeEveryTransfer)
{
  const std::u16string path = PathOf(u"volume.qvi");
  FilePtr file = MustOpen(path, kCreate);
  ASSERT_NE(file, nullptr);
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 2;
  SysSetFileFaults(&faults);
  char buffer[4];
  uint32_t done = 0;
  EXPECT_EQ(Write(file.get(), 0, "ab", &done), kStatusSuccess);
  EXPECT_EQ(Write(file.get(), 2, "cd", &done), kSysDiskFull);  // failed writes count too
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 4, &done), kStatusSuccess);
  EXPECT_EQ(done, 2u);
  EXPECT_EQ(SysReadFile(file.get(), 8, buffer, 4, &done), kStatusSuccess);
  EXPECT_EQ(SizeOf(file.get()), 2u);  // size queries are not transfers
  EXPECT_EQ(faults.writesSeen, 2u);
  EXPECT_EQ(faults.readsSeen, 2u);
}

TEST_F(SysFileTest, ThreadsShareTheSpaceLeft)
{
  constexpr int kThreads = 4;
  constexpr int kWrites = 100;
  FilePtr files[kThreads];
  for (int t = 0; t < kThreads; ++t) {
    files[t] =
        MustOpen(PathOf((u"volume" + std::u16string(1, char16_t(u'0' + t))).c_str()), kCreate);
    ASSERT_NE(files[t], nullptr);
  }
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 1505;
  SysSetFileFaults(&faults);
  uint64_t stored[kThreads] = {};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kWrites; ++i) {
        uint32_t done = 0;
        SysWriteFile(files[t].get(), stored[t], "0123456789", 10, &done);
        stored[t] += done;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  uint64_t total = 0;
  for (int t = 0; t < kThreads; ++t) {
    EXPECT_EQ(SizeOf(files[t].get()), stored[t]);
    total += stored[t];
  }
  EXPECT_EQ(total, 1505u);
  EXPECT_EQ(faults.bytesUntilDiskFull, 0u);
  EXPECT_EQ(faults.writesSeen, uint64_t{kThreads} * kWrites);
}

TEST_F(SysFileTest, RemovingThePlanRestoresNormalBehaviour)
{
  const std::u16string path = PathOf(u"volume.qvi");
  FilePtr file = MustOpen(path, kCreate);
  ASSERT_NE(file, nullptr);
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 0;
  faults.maxFileSize = 0;
  faults.failingWrite = 2;
  faults.failingRead = 1;
  faults.freeSpace = 7;
  SysSetFileFaults(&faults);
  uint32_t done = 0;
  char buffer[8];
  EXPECT_EQ(Write(file.get(), 0, "data", &done), kSysDiskFull);
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 4, &done), kSysReadFault);
  uint64_t bytes = 0;
  EXPECT_EQ(SysGetFreeSpace(dir_.Text().c_str(), &bytes), kStatusSuccess);
  EXPECT_EQ(bytes, 7u);
  EXPECT_EQ(SysSetFileSize(file.get(), 1), kSysDiskFull);

  SysSetFileFaults(nullptr);
  EXPECT_EQ(Write(file.get(), 0, "data", &done), kStatusSuccess);
  EXPECT_EQ(done, 4u);
  EXPECT_EQ(Write(file.get(), 4, "more", &done), kStatusSuccess);
  EXPECT_EQ(SysReadFile(file.get(), 0, buffer, 8, &done), kStatusSuccess);
  EXPECT_EQ(std::string(buffer, done), "datamore");
  EXPECT_EQ(SysSetFileSize(file.get(), 16), kStatusSuccess);
  EXPECT_EQ(SysGetFreeSpace(dir_.Text().c_str(), &bytes), kStatusSuccess);
  EXPECT_NE(bytes, 7u);
  // The removed plan is no longer counted into.
  EXPECT_EQ(faults.writesSeen, 1u);
  EXPECT_EQ(faults.readsSeen, 1u);
  EXPECT_EQ(faults.bytesUntilDiskFull, 0u);
}
