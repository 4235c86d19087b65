#include "app/dismount_flows.h"

#include <functional>

#include "app/dismount_prompts.h"
#include "devhost/device_host_api.h"
#include "settings/options.h"

namespace {

bool UserAgrees(WindowRef owner, const Prompt& question)
{
  return ShowPrompt(owner, question) == kIdYes;
}

// Runs `dismount` with `forced`; when the volume is in use, asks about the disk at
// `mountPoint` and on Yes runs it again forced. A failure left over is reported.
void DismountAskingWhenInUse(WindowRef owner, const std::u16string& mountPoint, uint32_t forced,
                             const std::function<StatusCode(uint32_t forced)>& dismount)
{
  StatusCode status = dismount(forced);
  if (status == kDevVolumeInUse) {
    if (!UserAgrees(owner, DiskInUsePrompt(mountPoint))) return;
    status = dismount(1);
  }
  if (IsFailure(status)) ShowPrompt(owner, DismountFailure(status));
}

}  // namespace

void DismountAllFlow(WindowRef owner, uint32_t forced)
{
  DeviceHost& host = CurrentDeviceHost();
  StatusCode status = host.DismountAll(forced);
  if (!IsFailure(status) || status == kDevNotRunning) return;
  if (status == kDevVolumeInUse) {
    uint32_t ignoreOpenFiles = 0;
    ReadIgnoreOpenFiles(&ignoreOpenFiles);
    if (ignoreOpenFiles == 0 && !UserAgrees(owner, DisksInUsePrompt())) return;
    status = host.DismountAll(1);
  }
  if (IsFailure(status)) ShowPrompt(owner, DismountFailure(status));
}

void DismountMountPointFlow(WindowRef owner, const std::u16string& mountPoint, uint32_t forced)
{
  DeviceHost& host = CurrentDeviceHost();
  DismountAskingWhenInUse(owner, mountPoint, forced, [&host, &mountPoint](uint32_t force) {
    return host.DismountMountPoint(mountPoint, force);
  });
}

void DismountDiskFlow(WindowRef owner, const MountedDisk& disk)
{
  DeviceHost& host = CurrentDeviceHost();
  DismountAskingWhenInUse(owner, disk.mountPoint, 0, [&host, &disk](uint32_t force) {
    return host.DismountById(disk.info.diskId, force);
  });
}
