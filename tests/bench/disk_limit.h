// The disk's limit for the image benchmark: what the file system takes at most for a run
// of 1 MiB writes of a given size past the system's cache, made stable by one flush at the
// end. Natively that is `dd if=/dev/zero bs=1M oflag=direct conv=fsync` run as a child
// process; on Windows the same in the program: unbuffered 1 MiB writes without
// write-through, then one FlushFileBuffers.
#pragma once

#include <cstdint>
#include <string>

struct DiskLimit {
  double writeSeconds;   // negative when the writes failed
  double deleteSeconds;  // freeing the file's blocks again, which clearing pays too
};

// Writes `bytes` (whole MiB) to a scratch file in `directory` and deletes it again; the
// deletion is timed up to SettleFreedBlocks.
DiskLimit MeasureDiskLimit(const std::string& directory, uint64_t bytes);

// Flushes `directory`, which ends the file system's pending transaction: a journaled file
// system mounted with discard discards the blocks of files deleted before in that commit,
// so the next measurement does not pay for them.
void SettleFreedBlocks(const std::string& directory);

// How MeasureDiskLimit writes, for the benchmark's report.
const char* DiskLimitMethod();
