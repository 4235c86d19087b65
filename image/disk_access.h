// The virtual disk inside an open image: reads and writes at any byte offset and length,
// and flushing. The disk's blocks map to the image stream's data area: a fixed image holds
// block b at data offset + b × block size; a dynamic image looks b up in its allocation
// table, reads an unassigned block as zeros and assigns storage to a block at its first
// write, at the end of the image stream.
//
// The three routines may be called on one handle from several threads at once (nothing
// else may use the handle meanwhile). Requests on disjoint blocks run side by side:
// enciphering, deciphering and reading run outside the container's lock, which only the
// table, the assignment of storage, finding a read's place in the volume files, writing
// and flushing take.
// Requests that share a block, a partial one at an edge included, run one after the
// other, so each sees the other whole or not at all. A dynamic image's first write to a
// block is enciphered under the lock, since its place in the stream is known only there.
#pragma once

#include <cstdint>

#include "image/image.h"
#include "system/status.h"

// Reads `length` bytes of the disk from `offset`. kImgBeyondEnd when the range does not lie
// inside the capacity.
StatusCode ImgReadDisk(ImageHandle* handle, uint64_t offset, uint8_t* buffer, uint64_t length);

// Writes `length` bytes at `offset`; partial blocks at the edges are read, changed and
// written back. kImgReadOnly for an image opened read-only, kImgBeyondEnd outside the
// capacity.
StatusCode ImgWriteDisk(ImageHandle* handle, uint64_t offset, const uint8_t* buffer,
                        uint64_t length);

// Writes the changed allocation table blocks back and flushes every volume file to disk.
// Nothing to do for an image opened read-only.
StatusCode ImgFlushDisk(ImageHandle* handle);
