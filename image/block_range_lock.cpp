#include "image/block_range_lock.h"

#include <algorithm>

bool BlockRangeLock::Overlaps(uint64_t first, uint64_t end) const
{
  return std::any_of(held_.begin(), held_.end(),
                     [&](const Range& range) { return range.first < end && first < range.end; });
}

void BlockRangeLock::Lock(uint64_t first, uint64_t end)
{
  std::unique_lock<SysMutex> lock(mutex_);
  released_.wait(lock, [&] { return !Overlaps(first, end); });
  held_.push_back(Range{first, end});
}

void BlockRangeLock::Unlock(uint64_t first, uint64_t end)
{
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    const auto range = std::find_if(held_.begin(), held_.end(), [&](const Range& held) {
      return held.first == first && held.end == end;
    });
    if (range != held_.end()) held_.erase(range);
  }
  released_.notify_all();
}
