// Mounting an image: the mount dialog, the mount with its retries, and what follows a
// successful mount (recent images, the monitor, the format question, opening the drive).
#pragma once

#include <string>

#include "app/mount_request.h"
#include "services/window_ref.h"
#include "settings/recent_images.h"

// Asks `dialog` for a request (with `initialPath` filled in, may be empty); Cancel ends the
// flow. Then mounts the image at the chosen mount point with the chosen options. A failure
// is shown by ShowOperationError (caption "Cannot Mount Virtual Disk Image", default text
// "Cannot mount %s..."); when it answers retry (a device host just started, or Retry after
// access denied) the same request is mounted again, key derivation included, without
// showing the dialog again. On success: the image enters `recentImages` unless
// "PrivacyMode" is set (the caller shows the list anew), the monitor is started when
// enabled, the drive "X:\" is checked for a file system (CheckFormatted with the mount
// point's first character), the shell is made to look at it, and it is opened in the file
// manager when CheckFormatted allows. The list of mounted disks is not refreshed here. The
// password is overwritten before the flow returns.
void MountFlow(WindowRef owner, const std::u16string& initialPath, CMountRequestSource& dialog,
               RecentImageList& recentImages);
