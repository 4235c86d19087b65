#include <windows.h>

#include "system/clock.h"
#include "system/clock_backend.h"

uint64_t BackendFileTime()
{
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return (static_cast<uint64_t>(now.dwHighDateTime) << 32) | now.dwLowDateTime;
}

uint64_t SysPerformanceCounter()
{
  LARGE_INTEGER counter;
  QueryPerformanceCounter(&counter);
  return static_cast<uint64_t>(counter.QuadPart);
}
