#include "system/clock.h"

#include <atomic>

#include "system/clock_backend.h"

namespace {

std::atomic<uint64_t> frozenUnixTime{0};

}  // namespace

void SysFreezeClock(uint64_t unixSeconds)
{
  frozenUnixTime = unixSeconds;
}

uint64_t SysFileTime()
{
  const uint64_t frozen = frozenUnixTime;
  if (frozen == 0) return BackendFileTime();
  return (frozen + kFileTimeEpochOffsetSeconds) * kFileTimeTicksPerSecond;
}

uint64_t SysUnixTime()
{
  return SysFileTime() / kFileTimeTicksPerSecond - kFileTimeEpochOffsetSeconds;
}
