#include <windows.h>

#include "system/sync.h"

static_assert(sizeof(SRWLOCK) == sizeof(void*) && sizeof(CONDITION_VARIABLE) == sizeof(void*));

namespace {

SRWLOCK* SystemLock(void** storage)
{
  return reinterpret_cast<SRWLOCK*>(storage);
}

CONDITION_VARIABLE* SystemCondition(void** storage)
{
  return reinterpret_cast<CONDITION_VARIABLE*>(storage);
}

}  // namespace

void SysMutex::lock()
{
  AcquireSRWLockExclusive(SystemLock(&lock_));
}

void SysMutex::unlock()
{
  ReleaseSRWLockExclusive(SystemLock(&lock_));
}

void SysCondition::WaitOnce(SysMutex& mutex)
{
  SleepConditionVariableSRW(SystemCondition(&condition_), SystemLock(&mutex.lock_), INFINITE, 0);
}

void SysCondition::notify_all()
{
  WakeAllConditionVariable(SystemCondition(&condition_));
}
