// The operating-system half of the file routines (system/file.h). The portable half checks
// arguments, enforces the rules common to both systems and applies the test seam; each
// backend (file_posix.cpp, file_win.cpp) only talks to its system. Arguments reaching a
// backend are never null.
#pragma once

#include <cstdint>

#include "system/status.h"

// The system's own handle of an open file.
#ifdef _WIN32
using NativeFile = void*;  // a HANDLE
#else
using NativeFile = int;  // a file descriptor
#endif

// Opens or creates the file with the flags of SysOpenFile, sharing rules included.
StatusCode BackendOpen(const char16_t* path, uint32_t flags, NativeFile* file);

// Reads until `length` bytes or the end of the file; `*done` counts what was read, also on
// failure.
StatusCode BackendRead(NativeFile file, uint64_t offset, void* buffer, uint32_t length,
                       uint32_t* done);

// How a write goes to the disk.
enum class WriteMode {
  kCached,        // as the file was opened: into the system's cache, or past it when unbuffered
  kWriteThrough,  // returns once the bytes are on stable storage (unbuffered files)
  kWriteBehind,   // as kCached, and the system starts moving the bytes to the disk at once
};

// Writes all `length` bytes; on failure `*done` counts what the system stored. Windows
// decides write-through when the file is opened, so there every mode writes alike.
StatusCode BackendWrite(NativeFile file, uint64_t offset, const void* buffer, uint32_t length,
                        WriteMode mode, uint32_t* done);

StatusCode BackendGetSize(NativeFile file, uint64_t* size);
StatusCode BackendSetSize(NativeFile file, uint64_t size);
StatusCode BackendFlush(NativeFile file);
StatusCode BackendClose(NativeFile file);
StatusCode BackendDelete(const char16_t* path);

// Empty `directory` text means the current directory.
StatusCode BackendFreeSpace(const char16_t* directory, uint64_t* bytes);
