// The virtual disk inside an open image: reads and writes at any byte offset and length,
// and flushing. The disk's blocks map to the image stream's data area: a fixed image holds
// block b at data offset + b × block size; a dynamic image looks b up in its allocation
// table, reads an unassigned block as zeros and assigns storage to a block at its first
// write, at the end of the image stream.
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

// Enciphers the disk's later writes on `threads` threads, each with its own copy of the
// data cipher, instead of the caller's thread alone; the bytes on disk are the same. For an
// encrypted image opened for writing; the threads end when the image is closed.
// kImgReadOnly for a read-only image; the cipher engine's code or kImgOutOfMemory when a
// copy, a thread or the chunk's memory cannot be had.
StatusCode ImgStartDiskThreads(ImageHandle* handle, unsigned threads);

// Writes the changed allocation table blocks back and flushes every volume file to disk.
// Nothing to do for an image opened read-only.
StatusCode ImgFlushDisk(ImageHandle* handle);
