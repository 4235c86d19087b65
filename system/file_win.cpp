#include <windows.h>

#include "system/error_map.h"
#include "system/file.h"
#include "system/file_backend.h"
#include "system/wide_text_win.h"

namespace {

StatusCode LastError()
{
  return MapSystemError(GetLastError());
}

HANDLE OpenHandle(const char16_t* path, uint32_t flags, DWORD attributes)
{
  DWORD access = GENERIC_READ;
  if ((flags & kFileWritable) != 0) access |= GENERIC_WRITE;
  const DWORD share = (flags & kFileShareRead) != 0 ? FILE_SHARE_READ : 0;
  const DWORD disposition = (flags & kFileCreate) != 0 ? CREATE_ALWAYS : OPEN_EXISTING;
  return CreateFileW(Wide(path), access, share, nullptr, disposition, attributes, nullptr);
}

OVERLAPPED At(uint64_t offset)
{
  OVERLAPPED overlapped{};
  overlapped.Offset = static_cast<DWORD>(offset);
  overlapped.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return overlapped;
}

}  // namespace

StatusCode BackendOpen(const char16_t* path, uint32_t flags, NativeFile* file)
{
  HANDLE handle;
  if ((flags & kFileUnbuffered) != 0) {
    handle = OpenHandle(path, flags,
                        FILE_ATTRIBUTE_NORMAL | FILE_FLAG_NO_BUFFERING | FILE_FLAG_WRITE_THROUGH);
    // A file system without unbuffered access refuses the flag: fall back to write-through.
    if (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_INVALID_PARAMETER) {
      handle = OpenHandle(path, flags, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_WRITE_THROUGH);
    }
  } else {
    handle = OpenHandle(path, flags, FILE_ATTRIBUTE_NORMAL);
  }
  if (handle == INVALID_HANDLE_VALUE) return LastError();
  *file = handle;
  return kStatusSuccess;
}

StatusCode BackendRead(NativeFile file, uint64_t offset, void* buffer, uint32_t length,
                       uint32_t* done)
{
  *done = 0;
  auto* bytes = static_cast<char*>(buffer);
  uint32_t total = 0;
  while (total < length) {
    OVERLAPPED overlapped = At(offset + total);
    DWORD count = 0;
    if (!ReadFile(file, bytes + total, length - total, &count, &overlapped)) {
      const DWORD error = GetLastError();
      // A positioned read that starts at or after the end reports it as an error.
      if (error == ERROR_HANDLE_EOF) break;
      *done = total;
      return MapSystemError(error);
    }
    if (count == 0) break;  // the end of the file
    total += count;
  }
  *done = total;
  return kStatusSuccess;
}

StatusCode BackendWrite(NativeFile file, uint64_t offset, const void* buffer, uint32_t length,
                        WriteMode, uint32_t* done)
{
  *done = 0;
  const auto* bytes = static_cast<const char*>(buffer);
  uint32_t total = 0;
  while (total < length) {
    OVERLAPPED overlapped = At(offset + total);
    DWORD count = 0;
    if (!WriteFile(file, bytes + total, length - total, &count, &overlapped)) {
      *done = total + count;
      return LastError();
    }
    if (count == 0) {
      // The system stores nothing more without naming an error: the disk is full.
      *done = total;
      return kSysDiskFull;
    }
    total += count;
  }
  *done = total;
  return kStatusSuccess;
}

StatusCode BackendGetSize(NativeFile file, uint64_t* size)
{
  LARGE_INTEGER value{};
  if (!GetFileSizeEx(file, &value)) return LastError();
  *size = static_cast<uint64_t>(value.QuadPart);
  return kStatusSuccess;
}

StatusCode BackendSetSize(NativeFile file, uint64_t size)
{
  if (size > static_cast<uint64_t>(INT64_MAX)) return kSysInvalidParameter;
  LARGE_INTEGER position{};
  position.QuadPart = static_cast<LONGLONG>(size);
  // Transfers name their offsets, so moving the file pointer here disturbs none of them.
  if (!SetFilePointerEx(file, position, nullptr, FILE_BEGIN)) return LastError();
  if (!SetEndOfFile(file)) return LastError();
  return kStatusSuccess;
}

StatusCode BackendFlush(NativeFile file)
{
  return FlushFileBuffers(file) ? kStatusSuccess : LastError();
}

StatusCode BackendClose(NativeFile file)
{
  return CloseHandle(file) ? kStatusSuccess : LastError();
}

StatusCode BackendDelete(const char16_t* path)
{
  return DeleteFileW(Wide(path)) ? kStatusSuccess : LastError();
}

StatusCode BackendFreeSpace(const char16_t* directory, uint64_t* bytes)
{
  ULARGE_INTEGER available{};
  // No directory names the current one.
  const wchar_t* name = directory[0] == 0 ? nullptr : Wide(directory);
  if (!GetDiskFreeSpaceExW(name, &available, nullptr, nullptr)) return LastError();
  *bytes = available.QuadPart;
  return kStatusSuccess;
}
