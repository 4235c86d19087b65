// Dismounting all disks or the disk at one mount point, with the question when applications
// still use a disk and the forced retry. Failures are reported only by message boxes owned
// by `owner` (may be none); nothing is returned.
#pragma once

#include <cstdint>
#include <string>

#include "devhost/device_host_api.h"
#include "services/window_ref.h"

// Dismounts every disk (`forced` 0 or 1). Success, and a device host that is not running
// (nothing can be mounted then), end silently. When volumes are in use the user is asked
// "Some virtual disks are still used by applications..." unless "IgnoreOpenFilesOnUnmountAll"
// is set; after Yes, or at once when it is set, all disks are dismounted forced. No ends
// silently. A failure left over shows "Operation failed" with its code.
void DismountAllFlow(WindowRef owner, uint32_t forced);

// Dismounts the disk at `mountPoint`. When its volume is in use the user is asked "File
// system volume on drive %s is still used..." (never skipped: the dismount-all setting does
// not apply here); Yes dismounts forced, No ends silently. A failure left over, a device
// host that is not running included, shows "Operation failed" with its code.
void DismountMountPointFlow(WindowRef owner, const std::u16string& mountPoint, uint32_t forced);

// Dismounts one disk of the list by its disk id, not forced. When its volume is in use the
// user is asked about its mount point as for a mount point; Yes dismounts forced, No ends
// silently. A failure left over shows "Operation failed" with its code.
void DismountDiskFlow(WindowRef owner, const MountedDisk& disk);
