// Files of the system layer: positional, whole-request I/O on volume files.
//
// Paths are zero-terminated UTF-16 text (on POSIX converted to UTF-8 for the system).
// Every failure is a facility-0 status from the system-error map; a missing path (null or
// empty text), file or output argument is kSysInvalidParameter.
#pragma once

#include <cstdint>

#include "system/status.h"

struct SysFile;

// Open flags.
inline constexpr uint32_t kFileWritable = 0x1;  // read and write access; else read only
inline constexpr uint32_t kFileCreate = 0x2;    // create the file, replacing any file of the name
// Unbuffered, write-through access: every write reaches the disk before it returns.
// Offsets, lengths and buffer addresses must then be multiples of 4096 (buffers from
// SysAllocate are); other transfers fail with kSysInvalidParameter on every system. Where
// a file system refuses unbuffered access the file is opened write-through only.
inline constexpr uint32_t kFileUnbuffered = 0x4;
// Others may open the file for reading while it is open. Without this flag the open is
// exclusive: while it lasts every other open of the file fails with kSysAccessDenied, and
// it fails itself with kSysAccessDenied when the file is already open elsewhere. Only
// read-only opens that share reading coexist: a writable open admits no other open even
// with this flag, since no open shares writing. Creating over an open file fails the same
// way and leaves it untouched.
inline constexpr uint32_t kFileShareRead = 0x8;

StatusCode SysOpenFile(const char16_t* path, uint32_t flags, SysFile** file);

// Reads up to `length` bytes at `offset`; `*done` tells how many were read (fewer only at
// the end of the file).
StatusCode SysReadFile(SysFile* file, uint64_t offset, void* buffer, uint32_t length,
                       uint32_t* done);

// Writes `length` bytes at `offset`. On failure `*done` still tells how many bytes the
// system stored before it failed (for a disk that filled up part way). A file opened
// without kFileWritable refuses with kSysAccessDenied.
StatusCode SysWriteFile(SysFile* file, uint64_t offset, const void* buffer, uint32_t length,
                        uint32_t* done);

// Writes like SysWriteFile, with the same rules and the same seam, but returns without
// waiting for the bytes to reach stable storage, even on an unbuffered file; a later
// SysFlushFile makes them stable. For long runs of bulk writes that one flush closes. The
// bytes go to the disk at once: past the system's cache where the transfer allows it
// (whole 4096-byte units from aligned memory, as SysAllocate gives), on a buffered file
// too, so no other transfer on the same file may run meanwhile. On Windows a file keeps
// the caching and write-through it was opened with.
StatusCode SysWriteFileBehind(SysFile* file, uint64_t offset, const void* buffer, uint32_t length,
                              uint32_t* done);

StatusCode SysGetFileSize(SysFile* file, uint64_t* size);

// Sets the end of the file: cuts it off or extends it with zeros. A file opened without
// kFileWritable refuses with kSysAccessDenied.
StatusCode SysSetFileSize(SysFile* file, uint64_t size);

// Forces everything written so far to the disk.
StatusCode SysFlushFile(SysFile* file);

// Closes the file; a null file is ignored.
StatusCode SysCloseFile(SysFile* file);

// Deletes a file; one that is open fails with kSysAccessDenied.
StatusCode SysDeleteFile(const char16_t* path);

// Bytes free for the calling user on the volume holding `directory` (empty text: the
// current directory).
StatusCode SysGetFreeSpace(const char16_t* directory, uint64_t* bytes);

// A test seam that makes the file routines fail on purpose. While a plan is installed,
// every routine above consults it; production code never installs one.
struct SysFileFaults {
  // Total bytes that writes may still store; a write beyond stores what fits, then fails
  // with kSysDiskFull (counted across all files). An unbuffered file stores whole
  // 4096-byte units only, as a real disk would.
  uint64_t bytesUntilDiskFull = UINT64_MAX;
  // Largest size any file may reach; a write beyond stores what fits below it, then fails
  // with kSysDiskFull (a file system's file-size ceiling); SysSetFileSize beyond it fails
  // with kSysDiskFull and changes nothing.
  uint64_t maxFileSize = UINT64_MAX;
  // The write (counted from 1 across all files) that fails with kSysWriteFault; 0 = none.
  uint64_t failingWrite = 0;
  // The read (counted from 1) that fails with kSysReadFault; 0 = none.
  uint64_t failingRead = 0;
  // The flush (counted from 1 across all files) that fails with kSysWriteFault; 0 = none.
  uint64_t failingFlush = 0;
  // What SysGetFreeSpace reports instead of the real figure; UINT64_MAX = the real figure.
  uint64_t freeSpace = UINT64_MAX;
  // Counters kept by the seam: every read, write and flush that passed the argument checks,
  // failed ones included.
  uint64_t writesSeen = 0;
  uint64_t readsSeen = 0;
  uint64_t flushesSeen = 0;
};

// Installs a plan (the seam updates its counters), or removes it with nullptr.
void SysSetFileFaults(SysFileFaults* faults);
