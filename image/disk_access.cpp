#include "image/disk_access.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "image/bytes.h"
#include "image/image_handle.h"
#include "system/memory.h"

namespace {

// A run of disk blocks that lies contiguously in the image stream, or that has no storage
// assigned throughout.
struct BlockRun {
  uint64_t streamOffset = 0;
  uint32_t count = 0;
  bool assigned = true;
};

// The allocation table entry of disk block `block`, in the cache slot that holds it.
StatusCode TableEntry(ImageHandle& handle, uint64_t block, uint8_t** entry)
{
  int slot = 0;
  const StatusCode status =
      handle.tableCache->Find(static_cast<uint32_t>(block / kTableEntriesPerBlock), &slot);
  if (IsFailure(status)) return status;
  *entry = handle.tableCache->SlotData(slot) + (block % kTableEntriesPerBlock) * 4;
  return kStatusSuccess;
}

// The longest run of at most `limit` blocks from `block` that reads or writes as one piece.
StatusCode MapRun(ImageHandle& handle, uint64_t block, uint32_t limit, BlockRun* run)
{
  if (!handle.tableCache) {
    *run = BlockRun{handle.dataOffset + block * handle.blockSize, limit, true};
    return kStatusSuccess;
  }
  uint8_t* entry = nullptr;
  StatusCode status = TableEntry(handle, block, &entry);
  if (IsFailure(status)) return status;
  const uint32_t first = Load<uint32_t>(entry);
  run->assigned = first != kTableEntryFree;
  run->streamOffset = handle.dataOffset + uint64_t{first} * handle.blockSize;
  run->count = 1;
  while (run->count < limit) {
    status = TableEntry(handle, block + run->count, &entry);
    if (IsFailure(status)) return status;
    const uint32_t next = Load<uint32_t>(entry);
    if (run->assigned ? next != first + run->count : next != kTableEntryFree) break;
    ++run->count;
  }
  return kStatusSuccess;
}

// Writes whole units (at most one chunk) at stream offset `offset`: enciphered on the disk
// threads when they run, else by the image stream's own write.
StatusCode WriteUnits(ImageHandle& handle, uint64_t offset, const uint8_t* data, uint64_t length)
{
  if (!handle.diskThreads) return WriteStream(handle.set, offset, data, length);
  const auto bytes = static_cast<uint32_t>(length);
  handle.diskThreads->encryptor.Begin(offset, data, handle.diskThreads->buffer, bytes);
  const StatusCode status = handle.diskThreads->encryptor.Finish();
  if (IsFailure(status)) return status;
  return WriteEnciphered(handle.set, offset, handle.diskThreads->buffer, bytes);
}

// Gives `count` unassigned blocks from `block` storage behind the end of the image stream,
// writing their data there first so that the table never names unwritten storage.
StatusCode AssignAndWrite(ImageHandle& handle, uint64_t block, uint32_t count, const uint8_t* data)
{
  ImageSet& set = handle.set;
  const uint64_t end = set.StreamEnd();
  StatusCode status = WriteUnits(handle, end, data, uint64_t{count} * handle.blockSize);
  const auto first = static_cast<uint32_t>((end - handle.dataOffset) / handle.blockSize);
  for (uint32_t i = 0; i < count && !IsFailure(status); ++i) {
    int slot = 0;
    status =
        handle.tableCache->Find(static_cast<uint32_t>((block + i) / kTableEntriesPerBlock), &slot);
    if (IsFailure(status)) break;
    Store<uint32_t>(handle.tableCache->SlotData(slot) + ((block + i) % kTableEntriesPerBlock) * 4,
                    first + i);
    handle.tableCache->MarkChanged(slot);
  }
  return status;
}

// Whole blocks, at most one chunk: reads them into `buffer`, or writes them from `data`.
StatusCode TransferBlocks(ImageHandle& handle, uint64_t block, uint32_t count, uint8_t* buffer,
                          const uint8_t* data)
{
  StatusCode status = kStatusSuccess;
  for (uint32_t done = 0; done < count && !IsFailure(status);) {
    BlockRun run;
    status = MapRun(handle, block + done, count - done, &run);
    if (IsFailure(status)) break;
    const uint64_t skip = uint64_t{done} * handle.blockSize;
    const uint64_t bytes = uint64_t{run.count} * handle.blockSize;
    if (data == nullptr) {
      if (run.assigned) {
        status = ReadStream(handle.set, run.streamOffset, buffer + skip, bytes);
      } else {
        std::memset(buffer + skip, 0, bytes);
      }
    } else if (run.assigned) {
      status = WriteUnits(handle, run.streamOffset, data + skip, bytes);
    } else {
      status = AssignAndWrite(handle, block + done, run.count, data + skip);
    }
    done += run.count;
  }
  return status;
}

StatusCode CheckRange(const ImageHandle* handle, uint64_t offset, uint64_t length)
{
  if (handle == nullptr || handle->blockSize == 0) return kImgInvalidParameter;
  if (offset > handle->capacity || length > handle->capacity - offset) return kImgBeyondEnd;
  return kStatusSuccess;
}

// Reads (`data` null) or writes the byte range: whole blocks straight from or into the
// caller's memory, one chunk at a time; a partial block at either edge through one block
// of memory, read first and for a write changed and written back.
StatusCode AccessDisk(ImageHandle& handle, uint64_t offset, uint64_t length, uint8_t* buffer,
                      const uint8_t* data)
{
  const uint32_t blockSize = handle.blockSize;
  uint8_t* edge = nullptr;
  StatusCode status = kStatusSuccess;
  for (uint64_t done = 0; done < length && !IsFailure(status);) {
    const uint64_t position = offset + done;
    const uint64_t block = position / blockSize;
    const auto within = static_cast<uint32_t>(position % blockSize);
    if (within == 0 && length - done >= blockSize) {
      const auto count = static_cast<uint32_t>(
          std::min<uint64_t>((length - done) / blockSize, kChunkSize / blockSize));
      status = TransferBlocks(handle, block, count, data == nullptr ? buffer + done : nullptr,
                              data == nullptr ? nullptr : data + done);
      done += uint64_t{count} * blockSize;
      continue;
    }
    const auto piece = static_cast<uint32_t>(std::min<uint64_t>(blockSize - within, length - done));
    if (edge == nullptr) edge = static_cast<uint8_t*>(SysAllocate(blockSize, kAllocPageable));
    if (edge == nullptr) {
      status = kImgOutOfMemory;
      break;
    }
    status = TransferBlocks(handle, block, 1, edge, nullptr);
    if (!IsFailure(status) && data == nullptr) std::memcpy(buffer + done, edge + within, piece);
    if (!IsFailure(status) && data != nullptr) {
      std::memcpy(edge + within, data + done, piece);
      status = TransferBlocks(handle, block, 1, nullptr, edge);
    }
    done += piece;
  }
  SysRelease(edge);
  return status;
}

}  // namespace

StatusCode ImgReadDisk(ImageHandle* handle, uint64_t offset, uint8_t* buffer, uint64_t length)
{
  StatusCode status = CheckRange(handle, offset, length);
  if (!IsFailure(status) && buffer == nullptr && length != 0) status = kImgInvalidParameter;
  if (IsFailure(status)) return status;
  return AccessDisk(*handle, offset, length, buffer, nullptr);
}

StatusCode ImgWriteDisk(ImageHandle* handle, uint64_t offset, const uint8_t* buffer,
                        uint64_t length)
{
  StatusCode status = CheckRange(handle, offset, length);
  if (!IsFailure(status) && buffer == nullptr && length != 0) status = kImgInvalidParameter;
  if (IsFailure(status)) return status;
  if (handle->set.IsReadOnly()) return kImgReadOnly;
  return AccessDisk(*handle, offset, length, nullptr, buffer);
}

StatusCode ImgStartDiskThreads(ImageHandle* handle, unsigned threads)
{
  if (handle == nullptr || threads == 0 || !handle->set.IsEncrypted()) return kImgInvalidParameter;
  if (handle->set.IsReadOnly()) return kImgReadOnly;
  if (handle->diskThreads) return kStatusSuccess;
  std::unique_ptr<DiskThreads> started(new (std::nothrow) DiskThreads);
  if (!started) return kImgOutOfMemory;
  started->buffer = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocPageable));
  if (started->buffer == nullptr) return kImgOutOfMemory;
  const StatusCode status = started->encryptor.Start(handle->set, threads);
  if (IsFailure(status)) return status;
  handle->diskThreads = std::move(started);
  return kStatusSuccess;
}

StatusCode ImgFlushDisk(ImageHandle* handle)
{
  if (handle == nullptr) return kImgInvalidParameter;
  if (handle->set.IsReadOnly()) return kStatusSuccess;
  StatusCode status = handle->tableCache ? handle->tableCache->Flush() : kStatusSuccess;
  if (!IsFailure(status)) status = FlushVolumes(handle->set);
  return status;
}
