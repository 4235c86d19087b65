#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "system/error_map.h"
#include "system/file.h"
#include "system/file_backend.h"
#include "system/utf.h"

namespace {

// Largest offset or size the system's file calls take.
constexpr uint64_t kMaxOffset = static_cast<uint64_t>(INT64_MAX);

// The error a directory gives where a file was expected: Windows refuses to open or
// delete a directory as a file with "access denied".
StatusCode MapFileErrno(int errnoValue)
{
  if (errnoValue == EISDIR) return kSysAccessDenied;
  return MapErrno(errnoValue);
}

int OpenRetrying(const char* path, int openFlags)
{
  int fd;
  do {
    fd = open(path, openFlags, 0666);
  } while (fd < 0 && errno == EINTR);
  return fd;
}

void CloseKeepingErrno(int fd)
{
  const int saved = errno;
  close(fd);
  errno = saved;
}

// Takes the lock that stands for Windows's sharing rules. Windows lets two opens of a file
// coexist only when each shares the access the other one asked for. Opens here share
// reading at most, so only read-only opens that share reading can coexist: those take a
// shared lock, every other open an exclusive one. flock belongs to the open file
// description, so two opens within one process exclude each other as well.
StatusCode LockForSharing(int fd, uint32_t flags)
{
  const bool shared = (flags & kFileShareRead) != 0 && (flags & kFileWritable) == 0;
  const int operation = (shared ? LOCK_SH : LOCK_EX) | LOCK_NB;
  int result;
  do {
    result = flock(fd, operation);
  } while (result != 0 && errno == EINTR);
  if (result == 0) return kStatusSuccess;
  if (errno == EWOULDBLOCK) return kSysAccessDenied;
  return MapErrno(errno);
}

// Lets the writes of a file opened with the system's cache go past it for a while: cached
// bulk writes cost a copy of every byte, which takes longer than the disk needs for them.
// Direct I/O belongs to the open file description, so no other transfer may run on the file
// meanwhile. False (nothing changed) for a transfer that direct I/O cannot take (it needs
// whole units of this size from aligned memory), for a file that bypasses the cache already
// and on a file system without direct I/O.
bool BypassCache(int fd, uint64_t offset, const void* buffer, uint32_t length, int* savedFlags)
{
#ifdef O_DIRECT
  constexpr uint64_t kDirectUnit = 4096;
  if (offset % kDirectUnit != 0 || length % kDirectUnit != 0 ||
      reinterpret_cast<uintptr_t>(buffer) % kDirectUnit != 0) {
    return false;
  }
  *savedFlags = fcntl(fd, F_GETFL);
  if (*savedFlags < 0 || (*savedFlags & O_DIRECT) != 0) return false;
  return fcntl(fd, F_SETFL, *savedFlags | O_DIRECT) == 0;
#else
  return false;
#endif
}

// Writes all bytes, each piece write-through when `mode` asks for it.
StatusCode WriteAll(NativeFile file, uint64_t offset, const char* bytes, uint32_t length,
                    WriteMode mode, uint32_t* done)
{
  // A system without write-through writes of its own gets a flush behind the write.
  bool flushAfter = false;
  uint32_t total = 0;
  while (total < length) {
    ssize_t count;
    if (mode == WriteMode::kWriteThrough && !flushAfter) {
      iovec piece{const_cast<char*>(bytes + total), length - total};
      count = pwritev2(file, &piece, 1, static_cast<off_t>(offset + total), RWF_DSYNC);
      if (count < 0 && (errno == EOPNOTSUPP || errno == ENOSYS)) {
        flushAfter = true;
        continue;
      }
    } else {
      count = pwrite(file, bytes + total, length - total, static_cast<off_t>(offset + total));
    }
    if (count < 0) {
      if (errno == EINTR) continue;
      *done = total;
      return MapErrno(errno);
    }
    if (count == 0) {
      // The system stores nothing more without naming an error: the disk is full.
      *done = total;
      return kSysDiskFull;
    }
    total += static_cast<uint32_t>(count);
  }
  *done = total;
  return flushAfter ? BackendFlush(file) : kStatusSuccess;
}

}  // namespace

StatusCode BackendOpen(const char16_t* path, uint32_t flags, NativeFile* file)
{
  const std::string name = Utf16ToUtf8(path);
  const bool create = (flags & kFileCreate) != 0;
  int openFlags = O_CLOEXEC;
  openFlags |= (flags & kFileWritable) != 0 ? O_RDWR : O_RDONLY;
  // Creation truncates only once the lock is held, so that creating over a file that is
  // open elsewhere fails without destroying it.
  if (create) openFlags |= O_CREAT;
  // Write-through is asked for write by write (WriteMode), so that bulk writes can leave
  // the wait for stable storage to one flush at their end.

  int fd = -1;
#ifdef O_DIRECT
  if ((flags & kFileUnbuffered) != 0) {
    fd = OpenRetrying(name.c_str(), openFlags | O_DIRECT);
    // A file system without direct I/O refuses the flag: fall back to cached writes.
    if (fd < 0 && errno == EINVAL) fd = OpenRetrying(name.c_str(), openFlags);
  } else {
    fd = OpenRetrying(name.c_str(), openFlags);
  }
#else
  fd = OpenRetrying(name.c_str(), openFlags);
#endif
  if (fd < 0) return MapFileErrno(errno);

  // A read-only open of a directory succeeds on POSIX; Windows refuses it.
  struct stat info {};
  if (fstat(fd, &info) != 0) {
    CloseKeepingErrno(fd);
    return MapErrno(errno);
  }
  if (S_ISDIR(info.st_mode)) {
    close(fd);
    return kSysAccessDenied;
  }

  StatusCode status = LockForSharing(fd, flags);
  if (!IsFailure(status) && create && info.st_size != 0) {
    // A read-only descriptor cannot be cut; the name can, and it still names this file
    // because the lock just taken keeps other opens away.
    int result;
    if ((flags & kFileWritable) != 0) {
      result = ftruncate(fd, 0);
    } else {
      result = truncate(name.c_str(), 0);
    }
    if (result != 0) status = MapErrno(errno);
  }
  if (IsFailure(status)) {
    close(fd);
    return status;
  }
  *file = fd;
  return kStatusSuccess;
}

StatusCode BackendRead(NativeFile file, uint64_t offset, void* buffer, uint32_t length,
                       uint32_t* done)
{
  *done = 0;
  if (offset > kMaxOffset) return kSysInvalidParameter;
  auto* bytes = static_cast<char*>(buffer);
  uint32_t total = 0;
  while (total < length) {
    const ssize_t count =
        pread(file, bytes + total, length - total, static_cast<off_t>(offset + total));
    if (count < 0) {
      if (errno == EINTR) continue;
      *done = total;
      return MapErrno(errno);
    }
    if (count == 0) break;  // the end of the file
    total += static_cast<uint32_t>(count);
  }
  *done = total;
  return kStatusSuccess;
}

StatusCode BackendWrite(NativeFile file, uint64_t offset, const void* buffer, uint32_t length,
                        WriteMode mode, uint32_t* done)
{
  *done = 0;
  if (offset > kMaxOffset) return kSysInvalidParameter;
  const auto* bytes = static_cast<const char*>(buffer);
  int savedFlags = 0;
  const bool bypassed =
      mode == WriteMode::kWriteBehind && BypassCache(file, offset, buffer, length, &savedFlags);
  const StatusCode status = WriteAll(file, offset, bytes, length, mode, done);
  if (bypassed) fcntl(file, F_SETFL, savedFlags);
  if (IsFailure(status) || mode != WriteMode::kWriteBehind || bypassed) return status;
  // Cached bytes start their way to the disk now instead of when the system gets to them;
  // bytes of an unbuffered file are there already and this returns at once.
  if (sync_file_range(file, static_cast<off_t>(offset), length, SYNC_FILE_RANGE_WRITE) != 0) {
    return MapErrno(errno);
  }
  return kStatusSuccess;
}

StatusCode BackendGetSize(NativeFile file, uint64_t* size)
{
  struct stat info {};
  if (fstat(file, &info) != 0) return MapErrno(errno);
  *size = static_cast<uint64_t>(info.st_size);
  return kStatusSuccess;
}

StatusCode BackendSetSize(NativeFile file, uint64_t size)
{
  if (size > kMaxOffset) return kSysInvalidParameter;
  int result;
  do {
    result = ftruncate(file, static_cast<off_t>(size));
  } while (result != 0 && errno == EINTR);
  return result == 0 ? kStatusSuccess : MapErrno(errno);
}

StatusCode BackendFlush(NativeFile file)
{
  int result;
  do {
    result = fdatasync(file);
  } while (result != 0 && errno == EINTR);
  return result == 0 ? kStatusSuccess : MapErrno(errno);
}

StatusCode BackendClose(NativeFile file)
{
  // The descriptor is gone even when close reports an error, so it is never retried.
  if (close(file) != 0 && errno != EINTR) return MapErrno(errno);
  return kStatusSuccess;
}

StatusCode BackendDelete(const char16_t* path)
{
  const std::string name = Utf16ToUtf8(path);
  // Windows refuses to delete a file that is open; an exclusive lock, held while the name
  // goes, proves that no open holds the file. A file this user cannot open for reading is
  // deleted without the check.
  const int fd = OpenRetrying(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (fd < 0 && errno == ENOENT) return kSysNotFound;
  if (fd >= 0) {
    const StatusCode status = LockForSharing(fd, 0);
    if (IsFailure(status)) {
      close(fd);
      return status;
    }
  }
  const int result = unlink(name.c_str());
  const int error = errno;
  if (fd >= 0) close(fd);
  return result == 0 ? kStatusSuccess : MapFileErrno(error);
}

StatusCode BackendFreeSpace(const char16_t* directory, uint64_t* bytes)
{
  std::string name = Utf16ToUtf8(directory);
  if (name.empty()) name = ".";
  struct statvfs info {};
  if (statvfs(name.c_str(), &info) != 0) return MapErrno(errno);
  *bytes = static_cast<uint64_t>(info.f_bavail) * static_cast<uint64_t>(info.f_frsize);
  return kStatusSuccess;
}
