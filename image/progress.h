// Progress of a long write, reported in steps: one per MiB of the total, at least 100.
#pragma once

#include <algorithm>
#include <cstdint>

#include "image/image.h"

class Progress {
 public:
  Progress(ProgressCallback callback, void* context, uint64_t total)
      : callback_(callback),
        context_(context),
        total_(total),
        range_(static_cast<uint32_t>(std::max<uint64_t>(total >> 20, 100)))
  {
  }

  uint32_t Range() const { return range_; }

  // Counts `bytes` more as done and reports at the first call and whenever the position
  // changes. False when the callback asks to cancel.
  bool Advance(uint64_t bytes)
  {
    done_ += bytes;
    if (callback_ == nullptr) return true;
    const uint64_t counted = std::min(done_, total_);
    const auto position = static_cast<uint32_t>(total_ == 0 ? range_ : counted * range_ / total_);
    if (reported_ && position == position_) return true;
    reported_ = true;
    position_ = position;
    return callback_(position, range_, context_, done_) != 0;
  }

 private:
  ProgressCallback callback_;
  void* context_;
  uint64_t total_;
  uint32_t range_;
  uint64_t done_ = 0;
  uint32_t position_ = 0;
  bool reported_ = false;
};
