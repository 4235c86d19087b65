// The system's own device host on Windows: the RPC client operations.
#include <new>

#include "devhost/device_host.h"
#include "devhost/device_host_api.h"

namespace {

// Appends one enumerated disk to the caller's list. A list that cannot grow stops the
// enumeration with out-of-memory, as any row builder of the list would.
StatusCode AppendDisk(const char16_t* imagePath, const char16_t* mountPoint, uint32_t mountFlags,
                      const MountedDiskInfo* info, void* context)
{
  try {
    static_cast<std::vector<MountedDisk>*>(context)->push_back(
        {imagePath, mountPoint, mountFlags, *info});
  } catch (const std::bad_alloc&) {
    return kSysOutOfMemory;
  }
  return kStatusSuccess;
}

class RpcDeviceHost final : public DeviceHost {
 public:
  StatusCode MountWithPassword(const std::u16string& imagePath, const std::u16string& mountPoint,
                               uint32_t mountFlags, const std::u16string& password) override
  {
    return ImgMountWithPassword(imagePath.c_str(), mountPoint.c_str(), mountFlags,
                                password.c_str());
  }

  StatusCode DismountAll(uint32_t forced) override { return DevDismountAll(forced); }

  StatusCode DismountMountPoint(const std::u16string& mountPoint, uint32_t forced) override
  {
    return DevDismountMountPoint(mountPoint.c_str(), forced);
  }

  StatusCode DismountById(const Guid& diskId, uint32_t forced) override
  {
    return DevDismountById(&diskId, forced);
  }

  StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) override
  {
    disks->clear();
    const StatusCode status = DevEnumerateDisks(AppendDisk, disks);
    if (IsFailure(status)) disks->clear();
    return status;
  }

  StatusCode FormatVolume(const std::u16string& mountPoint, uint32_t selector) override
  {
    return DevFormatVolume(mountPoint.c_str(), selector);
  }

  StatusCode StartDeviceHostService() override { return DevStartService(); }
};

}  // namespace

DeviceHost& PlatformDeviceHost()
{
  static RpcDeviceHost host;
  return host;
}
