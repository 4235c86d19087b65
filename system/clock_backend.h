// The operating-system half of the clocks (system/clock.h); the portable half applies the
// test seam.
#pragma once

#include <cstdint>

// The system's clock as file time: 100-nanosecond intervals since 1601-01-01 UTC.
uint64_t BackendFileTime();
