#include <windows.h>

#include "system/sync.h"

static_assert(sizeof(SRWLOCK) == sizeof(void*) && sizeof(CONDITION_VARIABLE) == sizeof(void*));

namespace {

SRWLOCK* SystemLock(void** storage)
{
  return reinterpret_cast<SRWLOCK*>(storage);
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

void SysCondition::Sleep(SysMutex& mutex)
{
  SleepConditionVariableSRW(reinterpret_cast<CONDITION_VARIABLE*>(&condition_),
                            SystemLock(&mutex.lock_), INFINITE, 0);
}

void SysCondition::notify_all()
{
  WakeAllConditionVariable(reinterpret_cast<CONDITION_VARIABLE*>(&condition_));
}
