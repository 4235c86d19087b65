#include <algorithm>
#include <cstring>
#include <thread>

#include "image/bytes.h"
#include "image/chunk_feeder.h"
#include "image/chunk_writer.h"
#include "image/image_handle.h"
#include "image/progress.h"
#include "system/clock.h"
#include "system/memory.h"

namespace {

uint64_t RoundUp(uint64_t value, uint64_t multiple)
{
  return (value + multiple - 1) / multiple * multiple;
}

// A buffer for the content's bulk writes, released on every path.
struct ContentBuffer {
  uint8_t* data;
  explicit ContentBuffer(size_t size)
      : data(static_cast<uint8_t*>(SysAllocate(size, kAllocZeroed | kAllocPageable)))
  {
  }
  ContentBuffer(const ContentBuffer&) = delete;
  ContentBuffer& operator=(const ContentBuffer&) = delete;
  ~ContentBuffer() { SysRelease(data); }
};

// Helpers for the thread that enciphers the chunks: one for each processor beyond that
// thread's own and the writer's.
unsigned EncipheringHelpers()
{
  const unsigned processors = std::max(std::thread::hardware_concurrency(), 2u);
  return std::min(processors - 2, 15u);
}

// Fills a buffer with empty table blocks: every entry free, every block sealed.
void FillEmptyTableBlocks(uint8_t* buffer)
{
  std::memset(buffer, 0xFF, kChunkSize);
  for (uint32_t unit = 0; unit < kChunkSize; unit += kUnitSize) SealTableBlock(buffer + unit);
}

// Everything the bulk writes need, made before the first change on disk. The feeder, which
// hands chunks to the writer, stops first.
struct BulkWriters {
  ChunkWriter writer;
  ChunkFeeder feeder;
};

// Writes `total` bytes of the buffer's content, repeated, at the stream end in chunks of
// at most 1 MiB, and reports each chunk once it is written, in order, as writing chunk
// after chunk would. The chunks are made (enciphered, on the feeder's thread) and written
// (on the writer's) while this thread reports, so the disk always has the next chunk at
// hand. A cancel stops at the chunk it was reported for: the chunks already written behind
// it are cut off again. The writes go behind and are flushed behind as they go
// (ChunkWriter); a success ends with the flush that makes the rest stable.
StatusCode WriteBulk(ImageSet& set, const uint8_t* content, uint64_t total, BulkWriters& bulk,
                     Progress& progress)
{
  const uint64_t start = set.StreamEnd();
  const uint64_t chunks = BulkChunkCount(total);
  bulk.feeder.Feed(start, content, total);
  StatusCode status = kStatusSuccess;
  uint64_t reported = 0;
  while (reported < chunks) {
    status = bulk.writer.WaitFor(reported);
    if (IsFailure(status)) break;
    if (!progress.Advance(BulkChunkLength(total, reported++))) {
      status = kImgCancelled;
      break;
    }
    bulk.feeder.Reported(reported);
  }
  bulk.feeder.Stop();
  bulk.writer.Stop();
  if (status == kImgCancelled) {
    TruncateStream(set, start + std::min(reported * kChunkSize, total));
    return status;
  }
  if (IsFailure(status)) return status;
  return FlushVolumes(set);
}

}  // namespace

StatusCode CreateStreamContent(ImageSet& set, uint64_t capacity, uint32_t imageFlags,
                               ProgressCallback callback, void* context)
{
  // Everything the content needs is allocated and started before the first change on disk,
  // so that a lack of memory leaves the image as it was.
  ContentBuffer buffer(kChunkSize);
  if (buffer.data == nullptr) return kImgOutOfMemory;
  BulkWriters bulk;
  StatusCode status = bulk.writer.Start(set);
  if (!IsFailure(status)) status = bulk.feeder.Start(set, EncipheringHelpers(), bulk.writer);
  if (IsFailure(status)) return status;
  status = TruncateStream(set, 0);
  if (IsFailure(status)) return status;

  const bool fixed = (imageFlags & kImageFixed) != 0;
  Descriptor descriptor;
  descriptor.flags = imageFlags | kImageBeingCreated;
  status = SysCreateUuid(&descriptor.imageIdentifier);
  if (IsFailure(status)) return status;
  descriptor.creationTime = descriptor.lastOpenTime = SysUnixTime();
  descriptor.blockSize = set.unitSize;
  descriptor.blockCount = static_cast<uint32_t>((capacity + set.unitSize - 1) / set.unitSize);
  descriptor.afterDescriptorOffset = descriptor.infoOffset = set.unitSize;
  const uint32_t tableBlocks =
      fixed ? 0 : (descriptor.blockCount + kTableEntriesPerBlock - 1) / kTableEntriesPerBlock;
  const uint64_t tableBytes = RoundUp(uint64_t{tableBlocks} * set.unitSize, descriptor.blockSize);
  descriptor.dataOffset = 2ull * set.unitSize + tableBytes;

  Progress progress(callback, context, fixed ? capacity : tableBytes);

  EncodeDescriptor(descriptor, buffer.data);
  status = WriteStream(set, 0, buffer.data, set.unitSize);
  if (IsFailure(status)) return status;

  InfoRecord info;
  info.writeTime = SysUnixTime();
  if (!fixed) {
    info.tableOffset = set.StreamEnd() + set.unitSize;
    info.tableBlocks = tableBlocks;
  }
  EncodeInfoRecord(info, buffer.data);
  status = WriteStream(set, set.StreamEnd(), buffer.data, set.unitSize);
  if (IsFailure(status)) return status;

  if (fixed) {
    std::memset(buffer.data, 0, kChunkSize);
    status = WriteBulk(set, buffer.data, RoundUp(capacity, set.unitSize), bulk, progress);
  } else {
    FillEmptyTableBlocks(buffer.data);
    status = WriteBulk(set, buffer.data, uint64_t{tableBlocks} * set.unitSize, bulk, progress);
  }
  if (IsFailure(status)) return status;

  // One unit of padding: the end is rounded to the next block boundary strictly above it.
  const uint64_t end = set.StreamEnd();
  const uint64_t padded =
      (end + descriptor.blockSize) / descriptor.blockSize * descriptor.blockSize;
  std::memset(buffer.data, 0, kChunkSize);
  status = WriteStream(set, end, buffer.data, padded - end);
  if (IsFailure(status)) return status;

  descriptor.flags &= ~kImageBeingCreated;
  EncodeDescriptor(descriptor, buffer.data);
  return WriteStream(set, 0, buffer.data, set.unitSize);
}
