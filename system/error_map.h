// Turns operating-system errors into facility-0 status codes.
#pragma once

#include <cstdint>

#include "system/status.h"

// Maps a Windows system error number (ERROR_FILE_NOT_FOUND = 2 and so on). 0 maps to
// success; every number without an entry maps to kSysGeneralFailure, never to 0.
StatusCode MapSystemError(uint32_t systemError);

// Maps a POSIX errno value onto the same codes, through the Windows error number that
// Windows reports in the same situation.
StatusCode MapErrno(int errnoValue);
