// Makes the chunks of a bulk write on a thread of its own and hands them to the writer,
// while the calling thread reports the written ones: each chunk of an enciphered set is
// enciphered into a slot of a ring (UnitEncryptor, whose helpers this thread joins), one
// slot for each chunk the writer may hold. So neither the enciphering nor the writes wait
// while the progress window takes its time over a report. The thread runs at most
// kMostUnreported chunks ahead of the reports, so that the progress stays close to the disk
// and a cancel cuts off little.
#pragma once

#include <algorithm>
#include <cstdint>
#include <thread>

#include "image/chunk_writer.h"
#include "image/image_set.h"
#include "image/unit_encryptor.h"
#include "system/sync.h"

// The number of chunks of a bulk write of `total` bytes in chunks of 1 MiB.
inline uint64_t BulkChunkCount(uint64_t total)
{
  return (total + kChunkSize - 1) / kChunkSize;
}

// The length of chunk `index` of a bulk write of `total` bytes in chunks of 1 MiB.
inline uint32_t BulkChunkLength(uint64_t total, uint64_t index)
{
  return static_cast<uint32_t>(std::min<uint64_t>(total - index * kChunkSize, kChunkSize));
}

class ChunkFeeder {
 public:
  // The most chunks made before the reports of the ones before them.
  static constexpr uint64_t kMostUnreported = 16;

  ChunkFeeder() = default;
  ChunkFeeder(const ChunkFeeder&) = delete;
  ChunkFeeder& operator=(const ChunkFeeder&) = delete;
  ~ChunkFeeder();

  // Makes the ring, starts the enciphering helpers (for an enciphered set) and the thread,
  // which waits for Feed; nothing on disk changes. kImgOutOfMemory, or the cipher engine's
  // code, when something cannot be made.
  StatusCode Start(const ImageSet& set, unsigned helpers, ChunkWriter& writer);

  // Hands the writer `total` bytes for the stream from `start`: the 1 MiB of `content`,
  // which must stay until Stop, repeated, enciphered if the set is. Once per Start.
  void Feed(uint64_t start, const uint8_t* content, uint64_t total);

  // The caller has reported the first `count` chunks.
  void Reported(uint64_t count);

  // Makes no further chunk after the one under way, and waits for the thread.
  void Stop();

 private:
  struct Bulk {
    uint64_t start = 0;
    const uint8_t* content = nullptr;
    uint64_t total = 0;
  };

  void Work();
  // Waits until chunk `index` may be made; false when the feeding is to stop.
  bool MayMake(uint64_t index);

  const ImageSet* set_ = nullptr;
  ChunkWriter* writer_ = nullptr;
  UnitEncryptor encryptor_;
  uint8_t* ring_ = nullptr;
  std::thread thread_;
  SysMutex mutex_;
  SysCondition changed_;
  Bulk bulk_;
  bool fed_ = false;
  uint64_t reported_ = 0;
  bool stopping_ = false;
};
