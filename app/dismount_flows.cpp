#include "app/dismount_flows.h"

#include <functional>

#include "app/prompt.h"
#include "devhost/device_host_api.h"
#include "res/resource.h"
#include "settings/options.h"

namespace {

void ReportDismountFailure(WindowRef owner, StatusCode status)
{
  ShowPrompt(owner,
             MakePrompt(IDS_OPERATION_FAILED, IDS_CANNOT_DISMOUNT_CAPTION, kPromptError, {status}));
}

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
    const Prompt question =
        MakePrompt(IDS_DISK_IN_USE, IDS_WARNING_CAPTION, kPromptQuestion, {mountPoint});
    if (!UserAgrees(owner, question)) return;
    status = dismount(1);
  }
  if (IsFailure(status)) ReportDismountFailure(owner, status);
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
    if (ignoreOpenFiles == 0 && !UserAgrees(owner, MakePrompt(IDS_DISKS_IN_USE, IDS_WARNING_CAPTION,
                                                              kPromptQuestion, {}))) {
      return;
    }
    status = host.DismountAll(1);
  }
  if (IsFailure(status)) ReportDismountFailure(owner, status);
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
