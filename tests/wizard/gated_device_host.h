// A device host for the progress page's tests: it passes every call on to the scripted
// device host, and can hold the creation worker at a mount or a format until the test lets
// it go, so that the test sees the page in that state.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <set>

#include "support/fake_device_host.h"

class CGatedDeviceHost final : public DeviceHost {
 public:
  explicit CGatedDeviceHost(FakeDeviceHost& script) : script_(script)
  {
    previous_ = ReplaceDeviceHost(this);
  }
  ~CGatedDeviceHost() override { ReplaceDeviceHost(previous_); }
  CGatedDeviceHost(const CGatedDeviceHost&) = delete;
  CGatedDeviceHost& operator=(const CGatedDeviceHost&) = delete;

  // Calls of `operation` wait at the gate until Release.
  void Hold(DeviceHostOperation operation)
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    held_.insert(operation);
  }
  void Release(DeviceHostOperation operation)
  {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      held_.erase(operation);
    }
    opened_.notify_all();
  }
  // A call of `operation` waits at the gate.
  bool Waiting(DeviceHostOperation operation)
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    return waiting_.count(operation) != 0;
  }
  // Calls that have returned; once the worker's last call has returned it touches no
  // device host any more.
  int Returned() const { return returned_.load(); }

  StatusCode MountWithPassword(const std::u16string& imagePath, const std::u16string& mountPoint,
                               uint32_t mountFlags, const std::u16string& password) override
  {
    Gate(DeviceHostOperation::kMountWithPassword);
    return Done(script_.MountWithPassword(imagePath, mountPoint, mountFlags, password));
  }
  StatusCode DismountAll(uint32_t forced) override { return Done(script_.DismountAll(forced)); }
  StatusCode DismountMountPoint(const std::u16string& mountPoint, uint32_t forced) override
  {
    Gate(DeviceHostOperation::kDismountMountPoint);
    return Done(script_.DismountMountPoint(mountPoint, forced));
  }
  StatusCode DismountById(const Guid& diskId, uint32_t forced) override
  {
    return Done(script_.DismountById(diskId, forced));
  }
  StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) override
  {
    return Done(script_.EnumerateDisks(disks));
  }
  StatusCode FormatVolume(const std::u16string& mountPoint, uint32_t selector) override
  {
    Gate(DeviceHostOperation::kFormatVolume);
    return Done(script_.FormatVolume(mountPoint, selector));
  }
  StatusCode StartDeviceHostService() override { return Done(script_.StartDeviceHostService()); }

 private:
  void Gate(DeviceHostOperation operation)
  {
    std::unique_lock<std::mutex> lock(mutex_);
    waiting_.insert(operation);
    opened_.wait(lock, [&] { return held_.count(operation) == 0; });
    waiting_.erase(operation);
  }
  StatusCode Done(StatusCode status)
  {
    ++returned_;
    return status;
  }

  FakeDeviceHost& script_;
  DeviceHost* previous_;
  std::mutex mutex_;
  std::condition_variable opened_;
  std::set<DeviceHostOperation> held_;
  std::set<DeviceHostOperation> waiting_;
  std::atomic<int> returned_{0};
};
