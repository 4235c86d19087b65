// The device host as the screens and flows see it: one interface over the client
// operations, with the process-wide current device host that callers reach through
// CurrentDeviceHost().
//
// The system's own device host is the RPC client on Windows. On POSIX there is no device
// host service; the system's own answers every call as unreachable. Tests install a
// scripted device host with ReplaceDeviceHost.
//
// Every method returns the status of the client operation it stands for, unchanged: the
// argument checks (forced or selector above 1: kDevInvalidParameter), kDevUnreachable
// when no binding can be made, the device host's own answers and mapped RPC failures.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "devhost/mounted_disk.h"
#include "system/status.h"
#include "system/uuid.h"

// One mounted disk as an enumeration reports it.
struct MountedDisk {
  std::u16string imagePath;
  std::u16string mountPoint;
  uint32_t mountFlags = 0;  // kMount* flags given at mount
  MountedDiskInfo info;
};

class DeviceHost {
 public:
  virtual ~DeviceHost() = default;

  // Derives the image's header key from `password` and mounts the image at `mountPoint`
  // with kMount* `mountFlags`.
  virtual StatusCode MountWithPassword(const std::u16string& imagePath,
                                       const std::u16string& mountPoint, uint32_t mountFlags,
                                       const std::u16string& password) = 0;

  // `forced` is 0 or 1: a forced dismount goes on although applications use the disk.
  virtual StatusCode DismountAll(uint32_t forced) = 0;
  virtual StatusCode DismountMountPoint(const std::u16string& mountPoint, uint32_t forced) = 0;
  virtual StatusCode DismountById(const Guid& diskId, uint32_t forced) = 0;

  // Replaces `*disks` with the mounted disks in the device host's order; on a failure it
  // is left empty.
  virtual StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) = 0;

  // Has the device host lay a file system on the disk at `mountPoint`; `selector` is a
  // kFormatSelector value.
  virtual StatusCode FormatVolume(const std::u16string& mountPoint, uint32_t selector) = 0;

  // Starts the device host service and waits while it is starting.
  virtual StatusCode StartDeviceHostService() = 0;
};

// The device host every caller uses: the one installed by ReplaceDeviceHost, else the
// system's own. Safe to call from any thread.
DeviceHost& CurrentDeviceHost();

// The system's own device host.
DeviceHost& PlatformDeviceHost();

// Installs `host` as the current device host (null restores the system's own) and
// returns the one installed before (null when that was the system's own). The installed
// host must outlive its installation.
DeviceHost* ReplaceDeviceHost(DeviceHost* host);
