// A scripted device host for tests of every flow that calls the device host.
//
// It records each call with its arguments in order and answers from a script: a queue of
// status codes per operation, and a default answer once an operation's queue is spent
// (success unless set). In strict mode a call with nothing queued for its operation fails
// the test. Answers still queued when the fake is destroyed fail the test as well.
//
// It keeps a table of mounted disks that follows its own successful answers: a mount adds
// a disk (with a fresh disk id), a dismount removes the disks it names, and an enumeration
// reports the table. The script alone decides the answers; the table never changes them.
//
// Installed as the current device host for its lifetime. Calls may come from any thread.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "devhost/device_host_api.h"

enum class DeviceHostOperation {
  kMountWithPassword,
  kDismountAll,
  kDismountMountPoint,
  kDismountById,
  kEnumerateDisks,
  kFormatVolume,
  kStartDeviceHostService,
};

// The operation's method name, e.g. "DismountAll".
const char* OperationName(DeviceHostOperation operation);

// One recorded call; the fields its operation does not take stay empty or zero.
struct DeviceHostCall {
  DeviceHostOperation operation;
  std::u16string imagePath;
  std::u16string mountPoint;
  std::u16string password;
  uint32_t mountFlags = 0;
  uint32_t forced = 0;
  Guid diskId{};
  uint32_t selector = 0;

  // The call as one line, e.g. `DismountMountPoint(P:, forced 1)`.
  std::string Text() const;
};

class FakeDeviceHost final : public DeviceHost {
 public:
  FakeDeviceHost();
  ~FakeDeviceHost() override;
  FakeDeviceHost(const FakeDeviceHost&) = delete;
  FakeDeviceHost& operator=(const FakeDeviceHost&) = delete;

  // Queues answers for the next calls of `operation`, in order.
  void Answer(DeviceHostOperation operation, std::initializer_list<StatusCode> answers);
  // The answer of a call with nothing queued (success until set).
  void SetDefaultAnswer(StatusCode answer);
  // In strict mode a call with nothing queued fails the test (and gets the default answer).
  void SetStrict(bool strict);

  // Puts a disk into the table, as if it had been mounted before the test.
  void AddDisk(const MountedDisk& disk);
  std::vector<MountedDisk> Disks() const;

  std::vector<DeviceHostCall> Calls() const;
  // Every call's Text(), in order.
  std::vector<std::string> CallTexts() const;

  StatusCode MountWithPassword(const std::u16string& imagePath, const std::u16string& mountPoint,
                               uint32_t mountFlags, const std::u16string& password) override;
  StatusCode DismountAll(uint32_t forced) override;
  StatusCode DismountMountPoint(const std::u16string& mountPoint, uint32_t forced) override;
  StatusCode DismountById(const Guid& diskId, uint32_t forced) override;
  StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) override;
  StatusCode FormatVolume(const std::u16string& mountPoint, uint32_t selector) override;
  StatusCode StartDeviceHostService() override;

 private:
  // Records the call and takes its answer; the caller holds the lock.
  StatusCode Take(const DeviceHostCall& call);

  mutable std::mutex mutex_;
  DeviceHost* previous_;
  std::map<DeviceHostOperation, std::deque<StatusCode>> answers_;
  StatusCode defaultAnswer_ = kStatusSuccess;
  bool strict_ = false;
  std::vector<DeviceHostCall> calls_;
  std::vector<MountedDisk> disks_;
  uint32_t mountsMade_ = 0;
};
