#include "app/remaining_time.h"

#include <algorithm>

#include "app/display_text.h"
#include "system/clock.h"

uint32_t EstimatePeriodMs(uint64_t seconds)
{
  if (seconds >= 61) return 10000;
  if (seconds >= 31) return 5000;
  if (seconds >= 11) return 3000;
  return 1000;
}

bool CRemainingTimeEstimate::Report(uint32_t done, uint32_t total, uint64_t now)
{
  done_ = done;
  total_ = total;
  reportSinceEstimate_ = true;
  if (timeOfLastEstimate_ != 0) return false;
  timeOfLastEstimate_ = now;
  return true;
}

std::optional<RemainingTime> CRemainingTimeEstimate::Estimate(uint64_t now)
{
  if (!reportSinceEstimate_ || done_ == 0) return std::nullopt;
  if (now == timeOfLastEstimate_ || done_ == doneAtLastEstimate_) return std::nullopt;

  uint64_t progressMade = 0;
  uint64_t progressLeft = 0;
  if (differences_ == ProgressDifferences::k32Bit) {
    progressMade = static_cast<uint32_t>(done_ - doneAtLastEstimate_);
    progressLeft = static_cast<uint32_t>(total_ - done_);
  } else {
    progressMade = uint64_t{done_} - doneAtLastEstimate_;
    progressLeft = uint64_t{total_} - done_;
  }
  const uint64_t seconds =
      (now - timeOfLastEstimate_) / progressMade * progressLeft / kFileTimeTicksPerSecond;
  timeOfLastEstimate_ = now;
  if (seconds == 0) return std::nullopt;

  reportSinceEstimate_ = false;
  doneAtLastEstimate_ = done_;
  // The duration text counts in 32 bits; a longer estimate (beyond 136 years) shows as the
  // longest it can.
  const auto shown = static_cast<uint32_t>(std::min<uint64_t>(seconds, UINT32_MAX));
  return RemainingTime{seconds, EstimatePeriodMs(seconds), FormatDurationText(shown)};
}
