// The system's own device host on POSIX, where no device host service exists: no call can
// reach it (kDevUnreachable) and there is no service to start (kSysServiceDoesNotExist).
#include "devhost/device_host_api.h"

namespace {

class AbsentDeviceHost final : public DeviceHost {
 public:
  StatusCode MountWithPassword(const std::u16string&, const std::u16string&, uint32_t,
                               const std::u16string&) override
  {
    return kDevUnreachable;
  }
  StatusCode DismountAll(uint32_t) override { return kDevUnreachable; }
  StatusCode DismountMountPoint(const std::u16string&, uint32_t) override
  {
    return kDevUnreachable;
  }
  StatusCode DismountById(const Guid&, uint32_t) override { return kDevUnreachable; }
  StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) override
  {
    disks->clear();
    return kDevUnreachable;
  }
  StatusCode FormatVolume(const std::u16string&, uint32_t) override { return kDevUnreachable; }
  StatusCode StartDeviceHostService() override { return kSysServiceDoesNotExist; }
};

}  // namespace

DeviceHost& PlatformDeviceHost()
{
  static AbsentDeviceHost host;
  return host;
}
