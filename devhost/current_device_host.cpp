// The process-wide current device host.
#include <atomic>

#include "devhost/device_host_api.h"

namespace {

// Read by the creation worker's thread as well as the user-interface thread.
std::atomic<DeviceHost*> installed{nullptr};

}  // namespace

DeviceHost& CurrentDeviceHost()
{
  DeviceHost* const host = installed.load();
  return host != nullptr ? *host : PlatformDeviceHost();
}

DeviceHost* ReplaceDeviceHost(DeviceHost* host)
{
  return installed.exchange(host);
}
