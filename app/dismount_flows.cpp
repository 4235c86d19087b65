#include "app/dismount_flows.h"

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
  StatusCode status = host.DismountMountPoint(mountPoint, forced);
  if (status == kDevVolumeInUse) {
    const Prompt question =
        MakePrompt(IDS_DISK_IN_USE, IDS_WARNING_CAPTION, kPromptQuestion, {mountPoint});
    if (!UserAgrees(owner, question)) return;
    status = host.DismountMountPoint(mountPoint, 1);
  }
  if (IsFailure(status)) ReportDismountFailure(owner, status);
}
