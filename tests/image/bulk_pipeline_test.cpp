// Creating and clearing encipher the next chunks and write them on a writer thread while
// progress is reported: with a slow progress window the writer runs ahead of the reports.
// What the user and the disk see must still be what writing chunk after chunk leaves: the
// reports in order with their values, a cancel that ends the stream where the cancelled
// report said, a write failure that stops the writes at the failing chunk and reaches the
// status, and no hang. The written chunks are flushed behind the writes, and a failed flush
// is a failed write.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

#include "image/chunk_feeder.h"
#include "image/chunk_writer.h"
#include "image/image_handle.h"
#include "support/image_fixture.h"
#include "system/file.h"

namespace {

constexpr uint64_t kCapacity = 16ull << 20;        // sixteen 1 MiB chunks
constexpr uint64_t kContentStart = 2 * kUnitSize;  // behind the descriptor and information record

struct Report {
  uint32_t position;
  uint32_t range;
  uint64_t done;
};

// A progress window that takes its time over every report, so that the writer gets ahead,
// and answers Cancel at report `cancelAt` (0: never) after waiting a little longer still.
struct SlowWindow {
  int cancelAt = 0;
  std::vector<Report> reports;

  static uint32_t Callback(uint32_t position, uint32_t range, void* context, uint64_t done)
  {
    auto* window = static_cast<SlowWindow*>(context);
    window->reports.push_back(Report{position, range, done});
    const bool cancel = window->cancelAt == static_cast<int>(window->reports.size());
    std::this_thread::sleep_for(std::chrono::milliseconds(cancel ? 100 : 10));
    return cancel ? 0 : 1;
  }
};

class BulkPipeline : public testing::Test {
 protected:
  void TearDown() override { SysSetFileFaults(nullptr); }

  std::u16string Path() const { return dir_.File(u"image.qvi"); }

  // Opens the image made by SetUp's caller, counting file writes from here on.
  ImageHandle* OpenCounting()
  {
    ImageHandle* handle = nullptr;
    EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0u);
    faults_ = SysFileFaults{};
    SysSetFileFaults(&faults_);
    return handle;
  }

  TempDir dir_;
  ImageKeys keys_;
  SysFileFaults faults_;
};

}  // namespace

TEST_F(BulkPipeline, ReportsComeInOrderWithTheValuesOfOneChunkAfterTheOther)
{
  SlowWindow window;
  ASSERT_EQ(CreateImage(Path(), keys_,
                        CreateParams(kCapacity, kCreateFixed, 0, SlowWindow::Callback, &window)),
            0u);
  ASSERT_EQ(window.reports.size(), 16u);
  for (size_t i = 0; i < window.reports.size(); ++i) {
    const uint64_t done = (i + 1) << 20;
    EXPECT_EQ(window.reports[i].done, done) << i;
    EXPECT_EQ(window.reports[i].range, 100u) << i;
    EXPECT_EQ(window.reports[i].position, done * 100 / kCapacity) << i;
  }
  EXPECT_EQ(FileSize(Path()), kHeaderSize + kContentStart + kCapacity + kUnitSize);
}

TEST_F(BulkPipeline, TheWritesRunAtMostSixteenChunksAheadOfTheReports)
{
  // The first report takes half a second: the writes go on meanwhile, up to the limit.
  struct StalledWindow {
    std::u16string path;
    uint64_t sizeAfterFirstReport = 0;
    static uint32_t Callback(uint32_t, uint32_t, void* context, uint64_t done)
    {
      auto* window = static_cast<StalledWindow*>(context);
      if (done == kChunkSize) {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        window->sizeAfterFirstReport = FileSize(window->path);
      }
      return 1;
    }
  };
  static_assert(ChunkFeeder::kMostUnreported == 16);
  StalledWindow window{Path()};
  ASSERT_EQ(
      CreateImage(Path(), keys_,
                  CreateParams(4 * kCapacity, kCreateFixed, 0, StalledWindow::Callback, &window)),
      0u);
  // While chunk 0 was being reported, chunks 0 to 15 were written and no further one.
  EXPECT_EQ(window.sizeAfterFirstReport, kHeaderSize + kContentStart + (16ull << 20));
}

TEST_F(BulkPipeline, CancelledClearEndsWhereTheCancelledReportSaid)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed)), 0u);
  ImageHandle* handle = OpenCounting();
  ASSERT_NE(handle, nullptr);
  SlowWindow window;
  window.cancelAt = 3;
  EXPECT_EQ(ImgClear(handle, SlowWindow::Callback, &window), kImgCancelled);
  // Writing chunk after chunk makes the descriptor, the information record and three chunks;
  // the writer was further on when the cancel came.
  EXPECT_GT(faults_.writesSeen, 2u + 3u);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(window.reports.size(), 3u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  EXPECT_EQ(FileSize(Path()), kHeaderSize + kContentStart + (3ull << 20));
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x40050009u);  // creation never finished
}

TEST_F(BulkPipeline, CancelledClearOfASplitImageKeepsOnlyTheVolumeFilesItReached)
{
  // Volume files of 2 MiB of data each: the chunks written ahead of the reports made
  // further files, which the cancel must take away again.
  constexpr uint64_t kLimit = kHeaderSize + (2ull << 20);
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed, kLimit)), 0u);
  ASSERT_EQ(FileCount(dir_), 9u);
  ImageHandle* handle = OpenCounting();
  ASSERT_NE(handle, nullptr);
  SlowWindow window;
  window.cancelAt = 3;
  EXPECT_EQ(ImgClear(handle, SlowWindow::Callback, &window), kImgCancelled);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  // The stream holds 8 KiB and three chunks: a full first file and 1 MiB + 8 KiB behind it.
  EXPECT_EQ(FileCount(dir_), 2u);
  EXPECT_EQ(FileSize(VolumeFilePath(Path(), 0)), kLimit);
  EXPECT_EQ(FileSize(VolumeFilePath(Path(), 1)), kHeaderSize + kContentStart + (1ull << 20));
  // The headers still chain correctly (the second announces no follower): the open reaches
  // the descriptor and finds the creation unfinished.
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x40050009u);
}

TEST_F(BulkPipeline, WriteFailureMidwayStopsTheWritesAndReachesTheStatus)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed)), 0u);
  ImageHandle* handle = OpenCounting();
  ASSERT_NE(handle, nullptr);
  // Writes 1 and 2 are the descriptor and the information record; write 8 is chunk 5.
  faults_.failingWrite = 8;
  SlowWindow window;
  EXPECT_EQ(ImgClear(handle, SlowWindow::Callback, &window), kSysWriteFault);
  EXPECT_EQ(faults_.writesSeen, 8u);  // nothing was written behind the failing chunk
  SysSetFileFaults(nullptr);
  EXPECT_EQ(window.reports.size(), 5u);  // the chunks before it, each once
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  EXPECT_EQ(FileSize(Path()), kHeaderSize + kContentStart + (5ull << 20));
}

TEST_F(BulkPipeline, WriteFailureInEveryChunkOfACreationLeavesNoFile)
{
  // Volume file 0's header is write 1, then the descriptor, the information record and
  // the sixteen chunks.
  for (uint64_t failing = 4; failing <= 3 + 16; ++failing) {
    faults_ = SysFileFaults{};
    faults_.failingWrite = failing;
    SysSetFileFaults(&faults_);
    EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed)), kSysWriteFault)
        << failing;
    EXPECT_EQ(faults_.writesSeen, failing);
    SysSetFileFaults(nullptr);
    EXPECT_EQ(FileCount(dir_), 0u) << failing;
  }
}

TEST_F(BulkPipeline, DiskFullWhileTheWriterIsAheadIsReportedAfterTheChunksBeforeIt)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed)), 0u);
  ImageHandle* handle = OpenCounting();
  ASSERT_NE(handle, nullptr);
  // Room for the descriptor, the information record and 6.5 chunks.
  faults_.bytesUntilDiskFull = kContentStart + (6ull << 20) + (1 << 19);
  SlowWindow window;
  EXPECT_EQ(ImgClear(handle, SlowWindow::Callback, &window), kSysDiskFull);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(window.reports.size(), 6u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  // The failing chunk stored its first half, as the one write would have.
  EXPECT_EQ(FileSize(Path()), kHeaderSize + kContentStart + (6ull << 20) + (1 << 19));
}

TEST_F(BulkPipeline, TheWritesAreFlushedBehindAsTheyGo)
{
  // Sixty-four chunks: a flush behind the writes every sixteen (one may be let go while the
  // one before is still under way, never the first), then the flush that closes the bulk.
  faults_ = SysFileFaults{};
  SysSetFileFaults(&faults_);
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4 * kCapacity, kCreateFixed)), 0u);
  EXPECT_GE(faults_.flushesSeen, 2u);
  EXPECT_LE(faults_.flushesSeen, 1u + 64 / ChunkWriter::kFlushInterval);
}

TEST_F(BulkPipeline, AFailedFlushBehindTheWritesEndsTheCreationWithItsStatusAndLeavesNoFile)
{
  faults_ = SysFileFaults{};
  faults_.failingFlush = 1;
  SysSetFileFaults(&faults_);
  EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(4 * kCapacity, kCreateFixed)), kSysWriteFault);
  EXPECT_EQ(faults_.flushesSeen, 1u);  // the closing flush never came
  // The writes stopped at the chunk being written when the flush failed.
  EXPECT_LT(faults_.writesSeen, 3u + 64);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(FileCount(dir_), 0u);
}

TEST_F(BulkPipeline, AFailedFlushBehindTheWritesEndsTheClearWithItsStatus)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(4 * kCapacity, kCreateFixed)), 0u);
  ImageHandle* handle = OpenCounting();
  ASSERT_NE(handle, nullptr);
  faults_.failingFlush = 1;
  SlowWindow window;
  EXPECT_EQ(ImgClear(handle, SlowWindow::Callback, &window), kSysWriteFault);
  SysSetFileFaults(nullptr);
  // Reported: the chunks written before the writes stopped, fewer than all sixty-four.
  EXPECT_GE(window.reports.size(), ChunkWriter::kFlushInterval);
  EXPECT_LT(window.reports.size(), 64u);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
  EXPECT_EQ(OpenImage(Path(), keys_, &handle), 0x40050009u);  // the clear never finished
}

TEST_F(BulkPipeline, AChunkThatCouldNotBeMadeFailsWhereItsWriteWouldHaveAndStopsTheWrites)
{
  ASSERT_EQ(CreateImage(Path(), keys_, CreateParams(kCapacity, kCreateFixed)), 0u);
  ImageHandle* handle = OpenCounting();
  ASSERT_NE(handle, nullptr);
  const std::vector<uint8_t> bytes(kChunkSize);
  {
    ChunkWriter writer;
    ASSERT_EQ(writer.Start(handle->set), 0u);
    writer.Submit(kContentStart, bytes.data(), kChunkSize);
    writer.SubmitFailed(kImgOutOfMemory);
    writer.Submit(kContentStart + 2 * kChunkSize, bytes.data(), kChunkSize);
    EXPECT_EQ(writer.WaitFor(0), 0u);
    EXPECT_EQ(writer.WaitFor(1), kImgOutOfMemory);
    EXPECT_EQ(writer.WaitFor(2), kImgOutOfMemory);
  }
  EXPECT_EQ(faults_.writesSeen, 1u);  // the chunk behind the failed one was skipped
  SysSetFileFaults(nullptr);
  EXPECT_EQ(ImgClose(handle, 0), 0u);
}
