// Enciphers the independent units of a chunk on the calling thread and on helper threads of
// its own, each share with its own copy of the set's data cipher. The bytes are the same as
// one thread would make.
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
  ~UnitEncryptor();

  // Copies the set's data cipher for the calling thread and `helpers` more threads, and
  // starts those. The cipher engine's code when a copy cannot be made; kImgOutOfMemory when
  // a thread cannot start.
  StatusCode Start(const ImageSet& set, unsigned helpers);

  // Enciphers `length` bytes (whole units) of `input`, which belong at stream offset
  // `offset`, into `output`: the calling thread takes the first share and the helpers the
  // others. Returns when all are done, with the first failure.
  StatusCode Encipher(uint64_t offset, const uint8_t* input, uint8_t* output, uint32_t length);

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
  void Help(size_t index);
  void Stop();

  const ImageSet* set_ = nullptr;
  std::vector<CipherContext*> ciphers_;  // one per share; share 0 is the caller's
  std::vector<std::thread> helpers_;
  SysMutex mutex_;
  SysCondition begun_;
  SysCondition finished_;
  Job job_;
  uint64_t generation_ = 0;  // counts the jobs begun
  size_t busy_ = 0;          // helpers still working on the current job
  bool stopping_ = false;
  StatusCode status_ = kStatusSuccess;
};
