#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "disk_limit.h"

const char* DiskLimitMethod()
{
  return "dd if=/dev/zero bs=1M oflag=direct conv=fsync (child process)";
}

DiskLimit MeasureDiskLimit(const std::string& directory, uint64_t bytes)
{
  const std::string path = directory + "/disk-limit.bin";
  const std::string command = "dd if=/dev/zero of='" + path +
                              "' bs=1M count=" + std::to_string(bytes >> 20) +
                              " oflag=direct conv=fsync 2>/dev/null";
  const auto start = std::chrono::steady_clock::now();
  const int result = std::system(command.c_str());
  const auto written = std::chrono::steady_clock::now();
  unlink(path.c_str());
  SettleFreedBlocks(directory);
  const std::chrono::duration<double> writing = written - start;
  const std::chrono::duration<double> deleting = std::chrono::steady_clock::now() - written;
  return DiskLimit{result == 0 ? writing.count() : -1.0, deleting.count()};
}

void SettleFreedBlocks(const std::string& directory)
{
  const int handle = open(directory.c_str(), O_RDONLY | O_DIRECTORY);
  if (handle < 0) return;
  fsync(handle);
  close(handle);
}
