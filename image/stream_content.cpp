#include <algorithm>
#include <cstring>
#include <thread>

#include "image/bytes.h"
#include "image/chunk_writer.h"
#include "image/image_handle.h"
#include "image/progress.h"
#include "image/unit_encryptor.h"
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

// The enciphered chunks waiting for the writer, one slot per chunk it may hold.
constexpr size_t kRingSize = size_t{ChunkWriter::kMostOutstanding} * kChunkSize;

// One enciphering thread for each processor but one (at least one): the writer has a
// thread of its own, and the calling thread reports the progress meanwhile.
unsigned EncipheringThreads()
{
  const unsigned processors = std::max(std::thread::hardware_concurrency(), 2u);
  return std::min(processors - 1, 16u);
}

// Fills a buffer with empty table blocks: every entry free, every block sealed.
void FillEmptyTableBlocks(uint8_t* buffer)
{
  std::memset(buffer, 0xFF, kChunkSize);
  for (uint32_t unit = 0; unit < kChunkSize; unit += kUnitSize) SealTableBlock(buffer + unit);
}

// Everything the bulk writes need, made before the first change on disk.
struct BulkWriters {
  ContentBuffer ring{kRingSize};
  UnitEncryptor encryptor;
  ChunkWriter writer;
};

// Writes `total` bytes of the buffer's content, repeated, at the stream end in chunks of
// at most 1 MiB, and reports each chunk once it is written, in order, as writing chunk
// after chunk would. Meanwhile the chunks behind it are enciphered (in an encrypted set,
// into the ring's slots, on the encryptor's threads) and written on the writer's thread, so
// the disk always has the next chunk at hand. A cancel stops at the chunk it was reported
// for: the chunks already under way are cut off again. The writes go behind and are flushed
// behind as they go (ChunkWriter); a success ends with the flush that makes the rest stable.
StatusCode WriteBulk(ImageSet& set, const uint8_t* content, uint64_t total, BulkWriters& bulk,
                     Progress& progress)
{
  const uint64_t start = set.StreamEnd();
  const uint64_t chunks = (total + kChunkSize - 1) / kChunkSize;
  auto lengthOf = [&](uint64_t chunk) {
    return static_cast<uint32_t>(std::min<uint64_t>(total - chunk * kChunkSize, kChunkSize));
  };
  uint64_t reported = 0;
  // Waits for the chunks before `end` that are not reported yet and reports them in order.
  auto report = [&](uint64_t end) {
    while (reported < end) {
      const StatusCode status = bulk.writer.WaitFor(reported);
      if (IsFailure(status)) return status;
      const uint32_t length = lengthOf(reported++);
      if (!progress.Advance(length)) return kImgCancelled;
    }
    return kStatusSuccess;
  };

  // The writer always holds the chunks handed over since the oldest unreported one; a
  // chunk is reported when its slot is needed again, while the encryptor's threads
  // encipher the next chunk into it, so neither the writer nor the enciphering waits while
  // the progress window takes its time. A cancelled report drops the chunk enciphered
  // meanwhile before it is handed over.
  constexpr uint64_t kSlots = ChunkWriter::kMostOutstanding;
  StatusCode status = kStatusSuccess;
  for (uint64_t chunk = 0; chunk < chunks; ++chunk) {
    // The slot's chunk before is written before anything is enciphered over it.
    if (chunk >= kSlots) {
      status = bulk.writer.WaitFor(chunk - kSlots);
      if (IsFailure(status)) break;
    }
    const uint64_t offset = start + chunk * kChunkSize;
    const uint8_t* bytes = content;
    if (set.IsEncrypted()) {
      uint8_t* target = bulk.ring.data + (chunk % kSlots) * kChunkSize;
      bulk.encryptor.Begin(offset, content, target, lengthOf(chunk));
      bytes = target;
    }
    if (chunk >= kSlots) status = report(chunk - kSlots + 1);
    if (set.IsEncrypted()) {
      const StatusCode enciphered = bulk.encryptor.Finish();
      if (!IsFailure(status) && IsFailure(enciphered)) {
        // The chunks before it are reported first, as writing one after the other would.
        const StatusCode before = report(chunk);
        status = IsFailure(before) ? before : enciphered;
      }
    }
    if (IsFailure(status)) break;
    bulk.writer.Submit(offset, bytes, lengthOf(chunk));
  }
  if (!IsFailure(status)) status = report(chunks);
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
  BulkWriters bulk;
  if (buffer.data == nullptr || bulk.ring.data == nullptr) return kImgOutOfMemory;
  StatusCode status =
      set.IsEncrypted() ? bulk.encryptor.Start(set, EncipheringThreads()) : kStatusSuccess;
  if (!IsFailure(status)) status = bulk.writer.Start(set);
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
