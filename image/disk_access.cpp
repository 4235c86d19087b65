#include "image/disk_access.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>

#include "image/bytes.h"
#include "image/image_handle.h"

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

// Makes the request's copy of the data cipher, once per workspace. The copy is taken under
// the container's lock: the set's own cipher changes its vector while the table is read.
StatusCode PrepareCipher(ImageHandle& handle, DiskWorkspace& space)
{
  if (space.cipher != nullptr || !handle.set.IsEncrypted()) return kStatusSuccess;
  const std::lock_guard<SysMutex> lock(handle.disk.container);
  return CipherDuplicate(handle.set.dataCipher, &space.cipher);
}

// Turns `length` bytes of whole units that belong at stream offset `offset` into the bytes
// as they go on disk, in the workspace's chunk.
StatusCode Encipher(const ImageSet& set, DiskWorkspace& space, uint64_t offset, const uint8_t* data,
                    uint32_t length)
{
  if (!set.IsEncrypted()) {
    std::memcpy(space.chunk, data, length);
    return kStatusSuccess;
  }
  return CipherUnits(set, space.cipher, offset, data, space.chunk, length, true);
}

// Turns `length` bytes as read from stream offset `offset` into disk bytes in `buffer`;
// `read` may be `buffer` itself.
StatusCode Decipher(const ImageSet& set, DiskWorkspace& space, uint64_t offset, const uint8_t* read,
                    uint8_t* buffer, uint32_t length)
{
  if (!set.IsEncrypted()) {
    if (read != buffer) std::memcpy(buffer, read, length);
    return kStatusSuccess;
  }
  return CipherUnits(set, space.cipher, offset, read, buffer, length, false);
}

// Gives `count` unassigned blocks from `block` storage behind the end of the image stream,
// writing their data there first so that the table never names unwritten storage. The
// caller holds the container's lock all along: the data is enciphered for the stream's end
// as it is now.
StatusCode AssignAndWrite(ImageHandle& handle, DiskWorkspace& space, uint64_t block, uint32_t count,
                          const uint8_t* data)
{
  ImageSet& set = handle.set;
  const uint64_t end = set.StreamEnd();
  const uint32_t bytes = count * handle.blockSize;
  StatusCode status = Encipher(set, space, end, data, bytes);
  if (!IsFailure(status)) {
    status = WriteEnciphered(set, end, space.chunk, bytes, EncipheredWrite::kAsFilesWrite);
  }
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

// Reads whole blocks, at most one chunk, into `buffer`: mapped and located in the volume
// files under the container's lock, read and deciphered outside it. A buffered set reads
// straight into `buffer` and is deciphered there; an unbuffered set's transfers need
// aligned memory, the workspace's.
StatusCode ReadBlocks(ImageHandle& handle, DiskWorkspace& space, uint64_t block, uint32_t count,
                      uint8_t* buffer)
{
  const bool inPlace = (handle.set.flags & kSetUnbuffered) == 0;
  StatusCode status = kStatusSuccess;
  for (uint32_t done = 0; done < count && !IsFailure(status);) {
    BlockRun run;
    const uint64_t skip = uint64_t{done} * handle.blockSize;
    uint8_t* read = inPlace ? buffer + skip : space.chunk;
    {
      const std::lock_guard<SysMutex> lock(handle.disk.container);
      status = MapRun(handle, block + done, count - done, &run);
      if (!IsFailure(status) && run.assigned) {
        status =
            LocateStream(handle.set, run.streamOffset, run.count * handle.blockSize, &space.pieces);
      }
    }
    if (IsFailure(status)) break;
    const uint32_t bytes = run.count * handle.blockSize;
    if (!run.assigned) {
      std::memset(buffer + skip, 0, bytes);
    } else {
      status = ReadPieces(space.pieces, read);
      if (!IsFailure(status)) {
        status = Decipher(handle.set, space, run.streamOffset, read, buffer + skip, bytes);
      }
    }
    done += run.count;
  }
  return status;
}

// Writes whole blocks, at most one chunk, from `data`: blocks with storage are enciphered
// outside the container's lock and written under it; unassigned ones get storage under it.
StatusCode WriteBlocks(ImageHandle& handle, DiskWorkspace& space, uint64_t block, uint32_t count,
                       const uint8_t* data)
{
  StatusCode status = kStatusSuccess;
  for (uint32_t done = 0; done < count && !IsFailure(status);) {
    BlockRun run;
    const uint64_t skip = uint64_t{done} * handle.blockSize;
    std::unique_lock<SysMutex> lock(handle.disk.container);
    status = MapRun(handle, block + done, count - done, &run);
    if (IsFailure(status)) break;
    const uint32_t bytes = run.count * handle.blockSize;
    if (!run.assigned) {
      status = AssignAndWrite(handle, space, block + done, run.count, data + skip);
    } else {
      // The blocks' storage stays where it is: they are this request's alone, and storage
      // once assigned never moves.
      lock.unlock();
      status = Encipher(handle.set, space, run.streamOffset, data + skip, bytes);
      lock.lock();
      if (!IsFailure(status)) {
        status = WriteEnciphered(handle.set, run.streamOffset, space.chunk, bytes,
                                 EncipheredWrite::kAsFilesWrite);
      }
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
// caller's memory, one chunk at a time; a partial block at either edge through the
// workspace's block, read first and for a write changed and written back. The request
// holds its blocks, edges included, from the first to the last byte.
StatusCode AccessDisk(ImageHandle& handle, uint64_t offset, uint64_t length, uint8_t* buffer,
                      const uint8_t* data)
{
  if (length == 0) return kStatusSuccess;
  const uint32_t blockSize = handle.blockSize;
  const HeldBlocks held(handle.disk.blocks, offset / blockSize,
                        (offset + length + blockSize - 1) / blockSize);
  std::unique_ptr<DiskWorkspace> space;
  StatusCode status = handle.disk.workspaces.Take(blockSize, &space);
  if (!IsFailure(status)) status = PrepareCipher(handle, *space);
  for (uint64_t done = 0; done < length && !IsFailure(status);) {
    const uint64_t position = offset + done;
    const uint64_t block = position / blockSize;
    const auto within = static_cast<uint32_t>(position % blockSize);
    if (within == 0 && length - done >= blockSize) {
      const auto count = static_cast<uint32_t>(
          std::min<uint64_t>((length - done) / blockSize, kChunkSize / blockSize));
      status = data == nullptr ? ReadBlocks(handle, *space, block, count, buffer + done)
                               : WriteBlocks(handle, *space, block, count, data + done);
      done += uint64_t{count} * blockSize;
      continue;
    }
    const auto piece = static_cast<uint32_t>(std::min<uint64_t>(blockSize - within, length - done));
    uint8_t* edge = space->edge;
    status = ReadBlocks(handle, *space, block, 1, edge);
    if (!IsFailure(status) && data == nullptr) std::memcpy(buffer + done, edge + within, piece);
    if (!IsFailure(status) && data != nullptr) {
      std::memcpy(edge + within, data + done, piece);
      status = WriteBlocks(handle, *space, block, 1, edge);
    }
    done += piece;
  }
  if (space) handle.disk.workspaces.Give(std::move(space));
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

StatusCode ImgFlushDisk(ImageHandle* handle)
{
  if (handle == nullptr) return kImgInvalidParameter;
  if (handle->set.IsReadOnly()) return kStatusSuccess;
  const std::lock_guard<SysMutex> lock(handle->disk.container);
  StatusCode status = handle->tableCache ? handle->tableCache->Flush() : kStatusSuccess;
  if (!IsFailure(status)) status = FlushVolumes(handle->set);
  return status;
}
