// The messages of the dismount flows: the questions when applications still use a disk and
// the failure that is left over.
#pragma once

#include <string_view>

#include "app/prompt.h"
#include "system/status.h"

// "File system volume on drive %s is still used by applications..." with the mount point as
// given, under "Warning", Yes and No: Yes dismounts the one disk forced.
Prompt DiskInUsePrompt(std::u16string_view mountPoint);

// "Some virtual disks are still used by applications..." under "Warning", Yes and No: Yes
// dismounts every disk forced.
Prompt DisksInUsePrompt();

// "Operation failed." with the code under "Cannot Dismount Virtual Disk".
Prompt DismountFailure(StatusCode status);
