// The state behind an ImageHandle, shared by the operations' sources.
#pragma once

#include <memory>

#include "image/block_range_lock.h"
#include "image/disk_workspaces.h"
#include "image/image.h"
#include "image/image_set.h"
#include "image/records.h"
#include "image/table_cache.h"
#include "system/sync.h"

// What lets the disk's requests (disk_access.h) run on several threads at once.
struct DiskRequests {
  // The container's shared state: the table cache, the stream's end where storage is
  // assigned, the set's volume files and their use, and the set's own cipher and buffer.
  SysMutex container;
  BlockRangeLock blocks;  // requests on the same blocks one after the other
  DiskWorkspaces workspaces;
};

struct ImageHandle {
  uint32_t flags = 0;  // the descriptor's image flags as loaded
  // kStatusInformation when the open accepted an informational result of loading, else 0.
  // Kept apart from `flags`: in the descriptor the same bit means "never mark in use", and
  // clearing writes `flags` back into a new descriptor. Only the properties report both.
  uint32_t information = 0;
  Guid imageIdentifier{};
  uint64_t capacity = 0;
  uint32_t blockSize = 0;
  uint32_t blockCount = 0;
  uint64_t dataOffset = 0;
  uint64_t creationTime = 0;
  uint64_t lastOpenTime = 0;
  uint64_t descriptorReserved = 0;
  uint64_t afterDescriptorOffset = 0;
  uint64_t infoOffset = 0;
  ImageSet set;
  TableCachePtr tableCache;
  DiskRequests disk;
};

// Writes the image stream's content anew: descriptor (marked as being created until the
// end), information record, an empty allocation table (dynamic) or the whole capacity in
// enciphered zeros (fixed), and the padding unit. Used by creation and clearing.
StatusCode CreateStreamContent(ImageSet& set, uint64_t capacity, uint32_t imageFlags,
                               ProgressCallback progress, void* context);
