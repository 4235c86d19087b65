// The decisions of the clearing progress dialog. Its bar and remaining-time estimate are
// the long jobs' shared ones (app/remaining_time.h), with every step of the estimate taken
// in 64 bits.
#pragma once

#include "app/prompt.h"
#include "app/remaining_time.h"
#include "system/status.h"

inline constexpr ProgressDifferences kClearProgressDifferences = ProgressDifferences::k64Bit;

// The question before a cancel takes effect (Cancel button, Escape, close box): the image
// will be corrupted. "Yes" asks the worker to stop at its next progress report.
Prompt CancelClearPrompt();

// The worker's answer to a progress report: go on (non-zero) unless a cancel was confirmed.
constexpr uint32_t ClearProgressReply(bool cancelRequested)
{
  return cancelRequested ? 0 : 1;
}

// The dialog's result when the worker has ended: 1 for success, 3 for a failure (cancel
// included).
constexpr int ClearProgressResult(StatusCode status)
{
  return IsFailure(status) ? 3 : 1;
}
