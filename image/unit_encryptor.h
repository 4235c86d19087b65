// Enciphers the independent units of a chunk on threads of its own, each with its own copy
// of the set's data cipher, while the calling thread does other work (the bulk writes
// report progress meanwhile). The bytes are the same as one thread would make.
#pragma once

#include <cstdint>
#include <thread>
#include <vector>

#include "image/image_set.h"
#include "system/sync.h"

class UnitEncryptor {
 public:
  UnitEncryptor() = default;
  UnitEncryptor(const UnitEncryptor&) = delete;
  UnitEncryptor& operator=(const UnitEncryptor&) = delete;
  // Lets the work begun last run to its end, then stops the threads.
  ~UnitEncryptor();

  // Copies the set's data cipher for `threads` shares (at least one) and starts a thread
  // for each. The cipher engine's code when a copy cannot be made; kImgOutOfMemory when a
  // thread cannot start.
  StatusCode Start(const ImageSet& set, unsigned threads);

  // Begins enciphering `length` bytes (whole units) of `input`, which belong at stream
  // offset `offset`, into `output`, and returns. Both buffers must stay until Finish returns.
  void Begin(uint64_t offset, const uint8_t* input, uint8_t* output, uint32_t length);

  // Waits until the work begun last is done; its first failure.
  StatusCode Finish();

 private:
  struct Job {
    uint64_t offset = 0;
    const uint8_t* input = nullptr;
    uint8_t* output = nullptr;
    uint32_t length = 0;
  };

  // Enciphers share `index` of `job`: the index-th of as many equal runs of whole units as
  // there are shares; a run is contiguous, so each thread streams through its own memory.
  StatusCode EncipherShare(const Job& job, size_t index) const;
  void Work(size_t index);
  void Stop();

  const ImageSet* set_ = nullptr;
  std::vector<CipherContext*> ciphers_;
  std::vector<std::thread> threads_;
  SysMutex mutex_;
  SysCondition begun_;
  SysCondition finished_;
  Job job_;
  uint64_t generation_ = 0;  // counts the jobs begun
  size_t busy_ = 0;          // threads still working on the current job
  bool stopping_ = false;
  StatusCode status_ = kStatusSuccess;
};
