// Keeps the disk requests whose blocks overlap apart: a request holds the range of blocks
// it touches, edges included, while it runs, and a request whose range overlaps a held
// one waits until that is released. Requests on other blocks run side by side, so the
// read-modify-write of a partial block never meets another request on the same block.
#pragma once

#include <cstdint>
#include <vector>

#include "system/sync.h"

class BlockRangeLock {
 public:
  // Waits until no held range overlaps blocks [first, end), then holds them.
  void Lock(uint64_t first, uint64_t end);

  // Releases the range that Lock(first, end) took.
  void Unlock(uint64_t first, uint64_t end);

 private:
  struct Range {
    uint64_t first;
    uint64_t end;
  };

  bool Overlaps(uint64_t first, uint64_t end) const;

  SysMutex mutex_;
  SysCondition released_;
  std::vector<Range> held_;
};

// Holds a range of blocks for one scope.
class HeldBlocks {
 public:
  HeldBlocks(BlockRangeLock& lock, uint64_t first, uint64_t end)
      : lock_(lock), first_(first), end_(end)
  {
    lock_.Lock(first_, end_);
  }
  ~HeldBlocks() { lock_.Unlock(first_, end_); }
  HeldBlocks(const HeldBlocks&) = delete;
  HeldBlocks& operator=(const HeldBlocks&) = delete;

 private:
  BlockRangeLock& lock_;
  uint64_t first_;
  uint64_t end_;
};
