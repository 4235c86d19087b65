// The lock and the condition variable that worker threads hand work over with. On Windows
// they are the system's own slim lock and condition variable: the C++ runtime's, built on
// MinGW's threads library, wait on kernel semaphores, and under Wine a hand-over through
// them takes about six times as long (a round trip between two threads: 200 against 33
// microseconds). Elsewhere they are the standard ones. Both work with std::unique_lock and
// std::lock_guard; a wait takes the condition it waits for.
#pragma once

#include <condition_variable>
#include <mutex>

#ifdef _WIN32

class SysMutex {
 public:
  SysMutex() = default;
  SysMutex(const SysMutex&) = delete;
  SysMutex& operator=(const SysMutex&) = delete;

  void lock();
  void unlock();

 private:
  friend class SysCondition;
  void* lock_ = nullptr;  // the system's lock, unlocked when zero
};

class SysCondition {
 public:
  SysCondition() = default;
  SysCondition(const SysCondition&) = delete;
  SysCondition& operator=(const SysCondition&) = delete;

  template <typename Ready>
  void wait(std::unique_lock<SysMutex>& lock, Ready ready)
  {
    while (!ready()) WaitOnce(*lock.mutex());
  }
  void notify_all();

 private:
  void WaitOnce(SysMutex& mutex);  // until woken (or spuriously), the mutex released meanwhile
  void* condition_ = nullptr;      // the system's condition variable, with no waiter when zero
};

#else

using SysMutex = std::mutex;
using SysCondition = std::condition_variable;

#endif
