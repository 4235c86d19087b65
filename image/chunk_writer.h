// Writes the image stream's bulk content on a thread of its own, chunk after chunk in the
// order they are handed over, while the caller enciphers the next chunks and reports
// progress. The first failure stops the writes: every chunk handed over behind it is
// skipped, so the files hold what writing chunk after chunk on one thread leaves. While
// chunks are outstanding the writer owns the set's volume files; the caller touches the
// set again only after Stop.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

#include "image/image_set.h"

class ChunkWriter {
 public:
  // The most chunks handed over and not yet written.
  static constexpr uint32_t kMostOutstanding = 4;

  ChunkWriter() = default;
  ChunkWriter(const ChunkWriter&) = delete;
  ChunkWriter& operator=(const ChunkWriter&) = delete;
  ~ChunkWriter();

  // Starts the thread that writes into `set`; kImgOutOfMemory when it cannot start.
  StatusCode Start(ImageSet& set);

  // Hands over the next chunk (numbered from 0 in this order): `length` bytes, as they go on disk,
  // for stream offset `offset`, written behind (WriteEnciphered). The bytes must stay until
  // the chunk is written; at most kMostOutstanding chunks may be outstanding.
  void Submit(uint64_t offset, const uint8_t* bytes, uint32_t length);

  // Waits until chunk `index` is written; 0, or the first failure if it stopped the writes
  // at this chunk or before.
  StatusCode WaitFor(uint64_t index);

  // Skips the chunks not begun, lets the one being written end, and stops the thread.
  void Stop();

 private:
  struct Chunk {
    uint64_t offset = 0;
    const uint8_t* bytes = nullptr;
    uint32_t length = 0;
  };

  void Work();

  ImageSet* set_ = nullptr;
  std::thread thread_;
  std::mutex mutex_;
  std::condition_variable changed_;
  Chunk chunks_[kMostOutstanding];
  uint64_t submitted_ = 0;
  uint64_t written_ = 0;  // chunks done, skipped ones included
  uint64_t failedAt_ = UINT64_MAX;
  StatusCode failure_ = kStatusSuccess;
  bool stopping_ = false;
};
