// The progress page's remaining-time estimate is the long jobs' shared one
// (app/remaining_time.h); the page takes the two progress differences as 32-bit values.
#pragma once

#include "app/remaining_time.h"

inline constexpr ProgressDifferences kCreationProgressDifferences = ProgressDifferences::k32Bit;
