#include <time.h>

#include "system/clock.h"
#include "system/clock_backend.h"

namespace {

uint64_t Nanoseconds(clockid_t clock)
{
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<uint64_t>(now.tv_sec) * 1000000000ull + static_cast<uint64_t>(now.tv_nsec);
}

}  // namespace

uint64_t BackendFileTime()
{
  return Nanoseconds(CLOCK_REALTIME) / 100 + kFileTimeEpochOffsetSeconds * kFileTimeTicksPerSecond;
}

uint64_t SysPerformanceCounter()
{
  return Nanoseconds(CLOCK_MONOTONIC);
}
