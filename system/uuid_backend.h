// The operating-system half of SysCreateUuid; the portable half checks the argument and
// applies the test seam.
#pragma once

#include "system/status.h"
#include "system/uuid.h"

// A new identifier from the system; kSysUuidFailed if the system cannot make one.
StatusCode BackendCreateUuid(Guid* out);
