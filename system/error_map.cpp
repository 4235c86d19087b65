#include "system/error_map.h"

#include <cerrno>

namespace {

struct SystemErrorEntry {
  uint32_t systemError;
  StatusCode status;
};

// Windows system error numbers and the status each one becomes.
constexpr SystemErrorEntry kSystemErrors[] = {
    {0, kStatusSuccess},
    {2, kSysNotFound},                // ERROR_FILE_NOT_FOUND
    {3, kSysNotFound},                // ERROR_PATH_NOT_FOUND
    {5, kSysAccessDenied},            // ERROR_ACCESS_DENIED
    {32, kSysAccessDenied},           // ERROR_SHARING_VIOLATION
    {33, kSysAccessDenied},           // ERROR_LOCK_VIOLATION
    {8, kSysOutOfMemory},             // ERROR_NOT_ENOUGH_MEMORY
    {19, kSysWriteProtected},         // ERROR_WRITE_PROTECT
    {29, kSysWriteFault},             // ERROR_WRITE_FAULT
    {30, kSysReadFault},              // ERROR_READ_FAULT
    {38, kSysEndOfFile},              // ERROR_HANDLE_EOF
    {39, kSysDiskFull},               // ERROR_HANDLE_DISK_FULL
    {112, kSysDiskFull},              // ERROR_DISK_FULL
    {50, kSysNotSupported},           // ERROR_NOT_SUPPORTED
    {82, kSysCannotCreate},           // ERROR_CANNOT_MAKE
    {87, kSysInvalidParameter},       // ERROR_INVALID_PARAMETER
    {111, kSysBufferTooSmall},        // ERROR_BUFFER_OVERFLOW
    {122, kSysBufferTooSmall},        // ERROR_INSUFFICIENT_BUFFER
    {223, kSysFileTooLarge},          // ERROR_FILE_TOO_LARGE
    {1060, kSysServiceDoesNotExist},  // ERROR_SERVICE_DOES_NOT_EXIST
    {6009, kSysFileReadOnly},         // ERROR_FILE_READ_ONLY
};

struct ErrnoEntry {
  int errnoValue;
  uint32_t systemError;
};

// POSIX errors and the Windows error number of the same situation. Listed by name, so a
// platform where two names share a number (EAGAIN and EWOULDBLOCK) simply matches the first.
constexpr ErrnoEntry kErrnoToSystemError[] = {
    {ENOENT, 2},         {ENOTDIR, 3},  {EACCES, 5},       {EPERM, 5},   {EBUSY, 32},
    {ETXTBSY, 32},       {EAGAIN, 33},  {EWOULDBLOCK, 33}, {ENOMEM, 8},  {EROFS, 19},
    {ENOSPC, 112},       {ENOTSUP, 50}, {EOPNOTSUPP, 50},  {ENOSYS, 50}, {EINVAL, 87},
    {ENAMETOOLONG, 111}, {ERANGE, 122}, {EFBIG, 223},
#ifdef EDQUOT
    {EDQUOT, 112},
#endif
};

}  // namespace

StatusCode MapSystemError(uint32_t systemError)
{
  for (const SystemErrorEntry& entry : kSystemErrors) {
    if (entry.systemError == systemError) return entry.status;
  }
  return kSysGeneralFailure;
}

StatusCode MapErrno(int errnoValue)
{
  if (errnoValue == 0) return kStatusSuccess;
  for (const ErrnoEntry& entry : kErrnoToSystemError) {
    if (entry.errnoValue == errnoValue) return MapSystemError(entry.systemError);
  }
  return kSysGeneralFailure;
}
