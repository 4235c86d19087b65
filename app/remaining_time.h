// The remaining-time estimate of the progress windows of long jobs (clearing an image,
// creating one): the window stores each progress report here and asks for an estimate on
// its estimate timer; the answer is the text to show and the timer's next period.
//
// The rate is measured over the interval since the previous estimate only: the time passed
// divided by the progress made, times the progress still to come, in 100-ns units of the
// file-time clock, dividing in exactly that order (each division truncates).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

// The bar follows the progress every 200 ms; the first estimate comes 3 s after the start.
inline constexpr uint32_t kProgressBarPeriodMs = 200;
inline constexpr uint32_t kFirstEstimateDelayMs = 3000;
// The bar's position when the job has ended.
inline constexpr uint32_t kProgressBarFinished = 100;

// The bar's upper bound for a total: the range message carries 16 bits, so only the low 16
// bits of the total reach the bar (a total of 65536 gives 0..0). Nothing but the bar uses it.
constexpr uint32_t ProgressBarRange(uint32_t total)
{
  return total & 0xFFFF;
}

// The estimate timer's period after an estimate of `seconds`: 10 s from 61 s on, 5 s from
// 31 s, 3 s from 11 s, 1 s for 10 s or less.
uint32_t EstimatePeriodMs(uint64_t seconds);

// How the two progress differences (done since the previous estimate, and what is left) are
// taken: the creation page takes them as 32-bit values, the clear dialog computes every step
// in 64 bits. They differ only when the progress goes backwards or beyond its total.
enum class ProgressDifferences { k32Bit, k64Bit };

struct RemainingTime {
  uint64_t seconds = 0;
  uint32_t nextPeriodMs = 0;  // re-arm the estimate timer with this period
  std::u16string text;        // the duration text of `seconds` ("1 minute", "45 seconds")
};

class CRemainingTimeEstimate {
 public:
  explicit CRemainingTimeEstimate(ProgressDifferences differences) : differences_(differences) {}

  // A progress report at `now` (100-ns units). The first report starts the clock of the
  // estimate; it returns true, and the window then sets the bar's range.
  bool Report(uint32_t done, uint32_t total, uint64_t now);

  // The estimate timer at `now`. None when there is nothing new to show: no report since
  // the last estimate, nothing done yet, no time passed, the progress unchanged since the
  // last estimate (a repeated report would divide by zero: no estimate, and the time of
  // the last estimate stays, so the next one measures the rate across the stall), or an
  // estimate of 0 seconds (then only the time of the last estimate moves on).
  std::optional<RemainingTime> Estimate(uint64_t now);

  uint32_t Done() const { return done_; }
  uint32_t Total() const { return total_; }

 private:
  ProgressDifferences differences_;
  uint32_t done_ = 0;
  uint32_t total_ = 0;
  uint32_t doneAtLastEstimate_ = 0;
  uint64_t timeOfLastEstimate_ = 0;  // 0 until the first report
  bool reportSinceEstimate_ = false;
};
