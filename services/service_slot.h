// The current implementation of one replaceable service: the system's own by default, a
// test's script while a test runs.
#pragma once

#include <atomic>

template <class Service>
class CServiceSlot {
 public:
  explicit CServiceSlot(Service& system) : system_(system), current_(&system) {}

  Service& Current() const { return *current_.load(); }

  // Makes `service` current and returns the previous one; null brings back the system's
  // service, which is reported as null in turn.
  Service* Replace(Service* service)
  {
    Service* const previous = current_.exchange(service != nullptr ? service : &system_);
    return previous == &system_ ? nullptr : previous;
  }

 private:
  Service& system_;
  std::atomic<Service*> current_;
};
