#include <algorithm>
#include <cstring>
#include <thread>

#include "image/bytes.h"
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

// A 1 MiB buffer for the content's bulk writes, released on every path.
struct ContentBuffer {
  uint8_t* data = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocZeroed | kAllocPageable));
  ContentBuffer() = default;
  ContentBuffer(const ContentBuffer&) = delete;
  ContentBuffer& operator=(const ContentBuffer&) = delete;
  ~ContentBuffer() { SysRelease(data); }
};

// One thread for each processor enciphers; the calling thread writes.
unsigned EncipheringThreads()
{
  return std::clamp(std::thread::hardware_concurrency(), 1u, 16u);
}

// Fills a buffer with empty table blocks: every entry free, every block sealed.
void FillEmptyTableBlocks(uint8_t* buffer)
{
  std::memset(buffer, 0xFF, kChunkSize);
  for (uint32_t unit = 0; unit < kChunkSize; unit += kUnitSize) SealTableBlock(buffer + unit);
}

// Writes `total` bytes of the buffer's content, repeated, at the stream end in writes of
// at most 1 MiB, reporting each write. In an encrypted set the next chunk is enciphered
// on the encryptor's threads (already started) while this one is written; `spare` is that
// chunk's buffer.
StatusCode WriteBulk(ImageSet& set, const uint8_t* buffer, uint64_t total, uint8_t* spare,
                     UnitEncryptor& encryptor, Progress& progress)
{
  const uint64_t start = set.StreamEnd();
  auto chunkAt = [&](uint64_t done) {
    return static_cast<uint32_t>(std::min<uint64_t>(total - done, kChunkSize));
  };
  uint8_t* ready = set.workBuffer;
  uint8_t* next = spare;
  if (set.IsEncrypted() && total > 0) encryptor.Begin(start, buffer, ready, chunkAt(0));
  for (uint64_t done = 0; done < total;) {
    const uint32_t length = chunkAt(done);
    const uint8_t* bytes = buffer;
    if (set.IsEncrypted()) {
      const StatusCode status = encryptor.Finish();
      if (IsFailure(status)) return status;
      if (done + length < total) {
        encryptor.Begin(start + done + length, buffer, next, chunkAt(done + length));
      }
      bytes = ready;
      std::swap(ready, next);
    }
    const StatusCode status = WriteEnciphered(set, start + done, bytes, length);
    if (IsFailure(status)) return status;
    done += length;
    if (!progress.Advance(length)) return kImgCancelled;
  }
  return kStatusSuccess;
}

}  // namespace

StatusCode CreateStreamContent(ImageSet& set, uint64_t capacity, uint32_t imageFlags,
                               ProgressCallback callback, void* context)
{
  // Everything the content needs is allocated before the first change on disk, so that a
  // lack of memory leaves the image as it was.
  ContentBuffer buffer;
  ContentBuffer spare;
  if (buffer.data == nullptr || spare.data == nullptr) return kImgOutOfMemory;
  UnitEncryptor encryptor;
  StatusCode status =
      set.IsEncrypted() ? encryptor.Start(set, EncipheringThreads()) : kStatusSuccess;
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
    status = WriteBulk(set, buffer.data, RoundUp(capacity, set.unitSize), spare.data, encryptor,
                       progress);
  } else {
    FillEmptyTableBlocks(buffer.data);
    status = WriteBulk(set, buffer.data, uint64_t{tableBlocks} * set.unitSize, spare.data,
                       encryptor, progress);
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
