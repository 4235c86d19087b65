#include <windows.h>

#include "system/clock.h"

uint64_t SysFileTime()
{
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return (static_cast<uint64_t>(now.dwHighDateTime) << 32) | now.dwLowDateTime;
}

uint64_t SysUnixTime()
{
  return SysFileTime() / kFileTimeTicksPerSecond - kFileTimeEpochOffsetSeconds;
}

uint64_t SysPerformanceCounter()
{
  LARGE_INTEGER counter;
  QueryPerformanceCounter(&counter);
  return static_cast<uint64_t>(counter.QuadPart);
}
