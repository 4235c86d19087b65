// The clocks of the system layer.
#pragma once

#include <cstdint>

// Seconds between 1601-01-01 (the file-time epoch) and 1970-01-01.
inline constexpr uint64_t kFileTimeEpochOffsetSeconds = 11644473600ull;
inline constexpr uint64_t kFileTimeTicksPerSecond = 10000000ull;

// Seconds since 1970-01-01 00:00:00 UTC.
uint64_t SysUnixTime();

// The file-time clock: 100-nanosecond intervals since 1601-01-01 00:00:00 UTC.
uint64_t SysFileTime();

// A high-resolution, monotonically increasing counter in system-defined ticks.
uint64_t SysPerformanceCounter();

// A test seam: while `unixSeconds` is not 0, SysUnixTime and SysFileTime report that
// moment instead of the system's clock; 0 gives the system's clock back. Production code
// never freezes the clock.
void SysFreezeClock(uint64_t unixSeconds);
