// The state behind an ImageHandle, shared by the operations' sources.
#pragma once

#include <memory>

#include "image/image.h"
#include "image/image_set.h"
#include "image/records.h"
#include "image/table_cache.h"
#include "image/unit_encryptor.h"
#include "system/memory.h"

// Threads that encipher the disk's writes (ImgStartDiskThreads), with the chunk they fill.
struct DiskThreads {
  UnitEncryptor encryptor;
  uint8_t* buffer = nullptr;  // kChunkSize bytes, the enciphered chunk
  DiskThreads() = default;
  DiskThreads(const DiskThreads&) = delete;
  DiskThreads& operator=(const DiskThreads&) = delete;
  ~DiskThreads() { SysRelease(buffer); }
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
  std::unique_ptr<DiskThreads> diskThreads;  // absent unless started
};

// Writes the image stream's content anew: descriptor (marked as being created until the
// end), information record, an empty allocation table (dynamic) or the whole capacity in
// enciphered zeros (fixed), and the padding unit. Used by creation and clearing.
StatusCode CreateStreamContent(ImageSet& set, uint64_t capacity, uint32_t imageFlags,
                               ProgressCallback progress, void* context);
