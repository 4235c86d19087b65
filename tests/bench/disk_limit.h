// The disk's limit for the image benchmark: what the file system takes at most for a run
// of 1 MiB writes of a given size past the system's cache, made stable by one flush at the
// end. Natively that is `dd if=/dev/zero bs=1M oflag=direct conv=fsync` run as a child
// process; on Windows the same in the program: unbuffered 1 MiB writes without
// write-through, then one FlushFileBuffers.
#pragma once

#include <cstdint>
#include <string>

// Writes `bytes` (whole MiB) to a scratch file in `directory`, deletes it again, and returns
// the seconds it took, or a negative number when the writes failed.
double DiskLimitSeconds(const std::string& directory, uint64_t bytes);

// How DiskLimitSeconds writes, for the benchmark's report.
const char* DiskLimitMethod();
