// Writes the image stream's bulk content on a thread of its own, chunk after chunk in the
// order they are handed over, while the next chunks are enciphered and progress is
// reported. Every kFlushInterval chunks a second thread flushes the volume files written so
// far, so that the disk takes the data while the next chunks are made instead of all of it
// at the flush that closes the bulk (a system that writes "unbuffered" files through its
// cache, as Wine does, would otherwise write the whole content only then). The first
// failure of a write or of such a flush stops the writes: every chunk handed over behind it
// is skipped, so the files hold what writing chunk after chunk on one thread leaves. While
// chunks are outstanding the writer owns the set's volume files; the caller touches the
// set again only after Stop.
#pragma once

#include <cstdint>
#include <thread>
#include <vector>

#include "image/image_set.h"
#include "system/sync.h"

class ChunkWriter {
 public:
  // The most chunks handed over and not yet written.
  static constexpr uint32_t kMostOutstanding = 4;
  // The chunks written between two flushes behind the writes.
  static constexpr uint64_t kFlushInterval = 16;

  ChunkWriter() = default;
  ChunkWriter(const ChunkWriter&) = delete;
  ChunkWriter& operator=(const ChunkWriter&) = delete;
  ~ChunkWriter();

  // Starts the threads that write into `set` and flush it; kImgOutOfMemory when they cannot
  // start.
  StatusCode Start(ImageSet& set);

  // Hands over the next chunk (numbered from 0 in this order): `length` bytes, as they go on disk,
  // for stream offset `offset`, written behind (WriteEnciphered). The bytes must stay until
  // the chunk is written; at most kMostOutstanding chunks may be outstanding.
  void Submit(uint64_t offset, const uint8_t* bytes, uint32_t length);

  // Hands over, as the next chunk, one that could not be made: it fails with `status` where
  // its write would have been, and stops the writes there.
  void SubmitFailed(StatusCode status);

  // Waits until chunk `index` is written; 0, or the first failure if it stopped the writes
  // at this chunk or before (a failed flush stops them at the chunk being written then).
  StatusCode WaitFor(uint64_t index);

  // Skips the chunks not begun, lets the one being written and a flush asked for end, and
  // stops the threads.
  void Stop();

 private:
  struct Chunk {
    uint64_t offset = 0;
    const uint8_t* bytes = nullptr;
    uint32_t length = 0;
    StatusCode failure = kStatusSuccess;  // a chunk that could not be made
  };

  void Hand(const Chunk& chunk);

  void Work();
  void FlushBehind();
  void Fail(StatusCode status);  // records the first failure, with the mutex held

  ImageSet* set_ = nullptr;
  std::thread thread_;
  std::thread flusher_;
  std::vector<SysFile*> filesToFlush_;  // the volume files of the flush asked for
  bool flushAsked_ = false;
  SysMutex mutex_;
  SysCondition changed_;
  Chunk chunks_[kMostOutstanding];
  uint64_t submitted_ = 0;
  uint64_t written_ = 0;  // chunks done, skipped ones included
  uint64_t failedAt_ = UINT64_MAX;
  StatusCode failure_ = kStatusSuccess;
  bool stopping_ = false;
};
