#include "support/fake_device_host.h"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "system/utf.h"

namespace {

std::string Utf8(const std::u16string& text)
{
  return Utf16ToUtf8(text.c_str());
}

std::string GuidText(const Guid& id)
{
  char text[40];
  std::snprintf(text, sizeof text, "%08" PRIX32 "-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                id.data1, id.data2, id.data3, id.data4[0], id.data4[1], id.data4[2], id.data4[3],
                id.data4[4], id.data4[5], id.data4[6], id.data4[7]);
  return text;
}

std::string Hex(uint32_t value)
{
  char text[16];
  std::snprintf(text, sizeof text, "0x%" PRIX32, value);
  return text;
}

DeviceHostCall CallOf(DeviceHostOperation operation)
{
  DeviceHostCall call{};
  call.operation = operation;
  return call;
}

bool SameId(const Guid& a, const Guid& b)
{
  return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

const char* OperationName(DeviceHostOperation operation)
{
  switch (operation) {
    case DeviceHostOperation::kMountWithPassword: return "MountWithPassword";
    case DeviceHostOperation::kDismountAll: return "DismountAll";
    case DeviceHostOperation::kDismountMountPoint: return "DismountMountPoint";
    case DeviceHostOperation::kDismountById: return "DismountById";
    case DeviceHostOperation::kEnumerateDisks: return "EnumerateDisks";
    case DeviceHostOperation::kFormatVolume: return "FormatVolume";
    case DeviceHostOperation::kStartDeviceHostService: return "StartDeviceHostService";
  }
  return "UnknownOperation";
}

std::string DeviceHostCall::Text() const
{
  const std::string forcedText = "forced " + std::to_string(forced);
  std::string arguments;
  switch (operation) {
    case DeviceHostOperation::kMountWithPassword:
      arguments = Utf8(imagePath) + ", " + Utf8(mountPoint) + ", flags " + Hex(mountFlags) +
                  ", password " + Utf8(password);
      break;
    case DeviceHostOperation::kDismountAll: arguments = forcedText; break;
    case DeviceHostOperation::kDismountMountPoint:
      arguments = Utf8(mountPoint) + ", " + forcedText;
      break;
    case DeviceHostOperation::kDismountById:
      arguments = GuidText(diskId) + ", " + forcedText;
      break;
    case DeviceHostOperation::kFormatVolume:
      arguments = Utf8(mountPoint) + ", selector " + std::to_string(selector);
      break;
    case DeviceHostOperation::kEnumerateDisks:
    case DeviceHostOperation::kStartDeviceHostService: break;
  }
  return std::string(OperationName(operation)) + "(" + arguments + ")";
}

FakeDeviceHost::FakeDeviceHost() : previous_(ReplaceDeviceHost(this)) {}

FakeDeviceHost::~FakeDeviceHost()
{
  ReplaceDeviceHost(previous_);
  for (const auto& [operation, answers] : answers_) {
    if (answers.empty()) continue;
    ADD_FAILURE() << answers.size() << " scripted answer(s) for " << OperationName(operation)
                  << " were never taken";
  }
}

void FakeDeviceHost::Answer(DeviceHostOperation operation,
                            std::initializer_list<StatusCode> answers)
{
  const std::lock_guard lock(mutex_);
  answers_[operation].insert(answers_[operation].end(), answers);
}

void FakeDeviceHost::SetDefaultAnswer(StatusCode answer)
{
  const std::lock_guard lock(mutex_);
  defaultAnswer_ = answer;
}

void FakeDeviceHost::SetStrict(bool strict)
{
  const std::lock_guard lock(mutex_);
  strict_ = strict;
}

void FakeDeviceHost::AddDisk(const MountedDisk& disk)
{
  const std::lock_guard lock(mutex_);
  disks_.push_back(disk);
}

std::vector<MountedDisk> FakeDeviceHost::Disks() const
{
  const std::lock_guard lock(mutex_);
  return disks_;
}

std::vector<DeviceHostCall> FakeDeviceHost::Calls() const
{
  const std::lock_guard lock(mutex_);
  return calls_;
}

std::vector<std::string> FakeDeviceHost::CallTexts() const
{
  const std::lock_guard lock(mutex_);
  std::vector<std::string> texts;
  for (const DeviceHostCall& call : calls_) texts.push_back(call.Text());
  return texts;
}

StatusCode FakeDeviceHost::Take(const DeviceHostCall& call)
{
  calls_.push_back(call);
  std::deque<StatusCode>& queued = answers_[call.operation];
  if (queued.empty()) {
    if (strict_) ADD_FAILURE() << "unscripted device host call: " << call.Text();
    return defaultAnswer_;
  }
  const StatusCode answer = queued.front();
  queued.pop_front();
  return answer;
}

StatusCode FakeDeviceHost::MountWithPassword(const std::u16string& imagePath,
                                             const std::u16string& mountPoint, uint32_t mountFlags,
                                             const std::u16string& password)
{
  const std::lock_guard lock(mutex_);
  DeviceHostCall call = CallOf(DeviceHostOperation::kMountWithPassword);
  call.imagePath = imagePath;
  call.mountPoint = mountPoint;
  call.password = password;
  call.mountFlags = mountFlags;
  const StatusCode status = Take(call);
  if (!IsFailure(status)) {
    MountedDisk disk{imagePath, mountPoint, mountFlags, {}};
    disk.info.diskId.data1 = ++mountsMade_;
    disks_.push_back(disk);
  }
  return status;
}

StatusCode FakeDeviceHost::DismountAll(uint32_t forced)
{
  const std::lock_guard lock(mutex_);
  DeviceHostCall call = CallOf(DeviceHostOperation::kDismountAll);
  call.forced = forced;
  const StatusCode status = Take(call);
  if (!IsFailure(status)) disks_.clear();
  return status;
}

StatusCode FakeDeviceHost::DismountMountPoint(const std::u16string& mountPoint, uint32_t forced)
{
  const std::lock_guard lock(mutex_);
  DeviceHostCall call = CallOf(DeviceHostOperation::kDismountMountPoint);
  call.mountPoint = mountPoint;
  call.forced = forced;
  const StatusCode status = Take(call);
  if (!IsFailure(status)) {
    std::erase_if(disks_, [&](const MountedDisk& disk) { return disk.mountPoint == mountPoint; });
  }
  return status;
}

StatusCode FakeDeviceHost::DismountById(const Guid& diskId, uint32_t forced)
{
  const std::lock_guard lock(mutex_);
  DeviceHostCall call = CallOf(DeviceHostOperation::kDismountById);
  call.diskId = diskId;
  call.forced = forced;
  const StatusCode status = Take(call);
  if (!IsFailure(status)) {
    std::erase_if(disks_,
                  [&](const MountedDisk& disk) { return SameId(disk.info.diskId, diskId); });
  }
  return status;
}

StatusCode FakeDeviceHost::EnumerateDisks(std::vector<MountedDisk>* disks)
{
  const std::lock_guard lock(mutex_);
  const StatusCode status = Take(CallOf(DeviceHostOperation::kEnumerateDisks));
  if (IsFailure(status)) {
    disks->clear();
  } else {
    *disks = disks_;
  }
  return status;
}

StatusCode FakeDeviceHost::FormatVolume(const std::u16string& mountPoint, uint32_t selector)
{
  const std::lock_guard lock(mutex_);
  DeviceHostCall call = CallOf(DeviceHostOperation::kFormatVolume);
  call.mountPoint = mountPoint;
  call.selector = selector;
  return Take(call);
}

StatusCode FakeDeviceHost::StartDeviceHostService()
{
  const std::lock_guard lock(mutex_);
  return Take(CallOf(DeviceHostOperation::kStartDeviceHostService));
}
