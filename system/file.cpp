#include "system/file.h"

#include <algorithm>
#include <mutex>
#include <new>

#include "system/file_backend.h"

// An open file: the system's handle and the flags it was opened with, which decide the
// rules the portable half enforces (write access, alignment of unbuffered transfers).
struct SysFile {
  NativeFile native;
  uint32_t flags;
};

namespace {

// Unbuffered transfers move whole units of this size at offsets that are multiples of it.
constexpr uint64_t kUnbufferedUnit = 4096;

// The installed fault plan. The mutex makes each routine's use of the plan (counting,
// deciding and doing the transfer) one step, so a plan also works while several threads
// do file I/O; without a plan the routines take no lock.
SysFileFaults* g_faults = nullptr;
std::mutex g_faultsMutex;

bool IsUnbuffered(const SysFile* file)
{
  return (file->flags & kFileUnbuffered) != 0;
}

bool IsAligned(uint64_t value)
{
  return value % kUnbufferedUnit == 0;
}

// Whether a transfer respects the alignment rules of an unbuffered file. Every system
// refuses misaligned unbuffered transfers differently (or, on file systems without
// unbuffered access, not at all), so they are refused here alike everywhere.
bool IsValidTransfer(const SysFile* file, uint64_t offset, const void* buffer, uint32_t length)
{
  if (!IsUnbuffered(file)) return true;
  return IsAligned(offset) && IsAligned(length) && IsAligned(reinterpret_cast<uintptr_t>(buffer));
}

}  // namespace

void SysSetFileFaults(SysFileFaults* faults)
{
  std::lock_guard<std::mutex> lock(g_faultsMutex);
  g_faults = faults;
}

StatusCode SysOpenFile(const char16_t* path, uint32_t flags, SysFile** file)
{
  if (file == nullptr) return kSysInvalidParameter;
  *file = nullptr;
  if (path == nullptr || path[0] == 0) return kSysInvalidParameter;
  NativeFile native{};
  const StatusCode status = BackendOpen(path, flags, &native);
  if (IsFailure(status)) return status;
  auto* opened = new (std::nothrow) SysFile{native, flags};
  if (opened == nullptr) {
    BackendClose(native);
    return kSysOutOfMemory;
  }
  *file = opened;
  return kStatusSuccess;
}

StatusCode SysReadFile(SysFile* file, uint64_t offset, void* buffer, uint32_t length,
                       uint32_t* done)
{
  if (done == nullptr) return kSysInvalidParameter;
  *done = 0;
  if (file == nullptr || buffer == nullptr) return kSysInvalidParameter;
  if (!IsValidTransfer(file, offset, buffer, length)) return kSysInvalidParameter;

  std::unique_lock<std::mutex> lock(g_faultsMutex);
  if (g_faults == nullptr) {
    lock.unlock();
  } else {
    ++g_faults->readsSeen;
    if (g_faults->readsSeen == g_faults->failingRead) return kSysReadFault;
  }
  return BackendRead(file->native, offset, buffer, length, done);
}

namespace {

// A write through the seam: checks, the fault plan, then the backend in `mode`.
StatusCode Write(SysFile* file, uint64_t offset, const void* buffer, uint32_t length,
                 WriteMode mode, uint32_t* done)
{
  if (done == nullptr) return kSysInvalidParameter;
  *done = 0;
  if (file == nullptr || buffer == nullptr) return kSysInvalidParameter;
  if ((file->flags & kFileWritable) == 0) return kSysAccessDenied;
  if (!IsValidTransfer(file, offset, buffer, length)) return kSysInvalidParameter;

  std::unique_lock<std::mutex> lock(g_faultsMutex);
  if (g_faults == nullptr) {
    lock.unlock();
    return BackendWrite(file->native, offset, buffer, length, mode, done);
  }

  SysFileFaults& faults = *g_faults;
  ++faults.writesSeen;
  if (faults.writesSeen == faults.failingWrite) return kSysWriteFault;

  // The part of the request that fits below the file-size ceiling and in the space left.
  uint64_t fits = length;
  if (offset >= faults.maxFileSize) {
    fits = 0;
  } else {
    fits = std::min(fits, faults.maxFileSize - offset);
  }
  fits = std::min(fits, faults.bytesUntilDiskFull);
  // An unbuffered file stores whole units only, as a real disk would.
  if (IsUnbuffered(file)) fits -= fits % kUnbufferedUnit;

  StatusCode status = kStatusSuccess;
  if (fits > 0) {
    status = BackendWrite(file->native, offset, buffer, static_cast<uint32_t>(fits), mode, done);
    faults.bytesUntilDiskFull -= std::min<uint64_t>(*done, faults.bytesUntilDiskFull);
  }
  if (IsFailure(status)) return status;
  return fits < length ? kSysDiskFull : kStatusSuccess;
}

}  // namespace

StatusCode SysWriteFile(SysFile* file, uint64_t offset, const void* buffer, uint32_t length,
                        uint32_t* done)
{
  const bool through = file != nullptr && IsUnbuffered(file);
  const WriteMode mode = through ? WriteMode::kWriteThrough : WriteMode::kCached;
  return Write(file, offset, buffer, length, mode, done);
}

StatusCode SysWriteFileBehind(SysFile* file, uint64_t offset, const void* buffer, uint32_t length,
                              uint32_t* done)
{
  return Write(file, offset, buffer, length, WriteMode::kWriteBehind, done);
}

StatusCode SysGetFileSize(SysFile* file, uint64_t* size)
{
  if (size == nullptr) return kSysInvalidParameter;
  *size = 0;
  if (file == nullptr) return kSysInvalidParameter;
  return BackendGetSize(file->native, size);
}

StatusCode SysSetFileSize(SysFile* file, uint64_t size)
{
  if (file == nullptr) return kSysInvalidParameter;
  if ((file->flags & kFileWritable) == 0) return kSysAccessDenied;
  {
    // The file-size ceiling holds for every way a file can grow.
    std::lock_guard<std::mutex> lock(g_faultsMutex);
    if (g_faults != nullptr && size > g_faults->maxFileSize) return kSysDiskFull;
  }
  return BackendSetSize(file->native, size);
}

StatusCode SysFlushFile(SysFile* file)
{
  if (file == nullptr) return kSysInvalidParameter;
  {
    std::lock_guard<std::mutex> lock(g_faultsMutex);
    if (g_faults != nullptr && ++g_faults->flushesSeen == g_faults->failingFlush) {
      return kSysWriteFault;
    }
  }
  return BackendFlush(file->native);
}

StatusCode SysCloseFile(SysFile* file)
{
  if (file == nullptr) return kStatusSuccess;
  const StatusCode status = BackendClose(file->native);
  delete file;
  return status;
}

StatusCode SysDeleteFile(const char16_t* path)
{
  if (path == nullptr || path[0] == 0) return kSysInvalidParameter;
  return BackendDelete(path);
}

StatusCode SysGetFreeSpace(const char16_t* directory, uint64_t* bytes)
{
  if (bytes == nullptr) return kSysInvalidParameter;
  *bytes = 0;
  if (directory == nullptr) return kSysInvalidParameter;
  {
    std::lock_guard<std::mutex> lock(g_faultsMutex);
    if (g_faults != nullptr && g_faults->freeSpace != UINT64_MAX) {
      *bytes = g_faults->freeSpace;
      return kStatusSuccess;
    }
  }
  return BackendFreeSpace(directory, bytes);
}
