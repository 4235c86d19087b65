// The four mounted disks the screenshot scenes show: different drives, sizes, algorithms and
// creation dates, all mounted on the same day.
#pragma once

#include <cstdint>

#include "support/fake_device_host.h"

namespace sample_disks {

// 2026-03-14 09:30 UTC and later.
inline constexpr uint64_t kMarch2026 = 1773480600;
inline constexpr uint64_t kDay = 86400;

inline MountedDisk Disk(const char16_t* mountPoint, const char16_t* imagePath, uint64_t capacity,
                        uint32_t algorithm, uint32_t keyLength, uint64_t created)
{
  MountedDisk disk;
  disk.mountPoint = mountPoint;
  disk.imagePath = imagePath;
  disk.info.capacity = capacity;
  disk.info.algorithm = algorithm;
  disk.info.keyLength = keyLength;
  disk.info.creationTime = created;
  disk.info.mountTime = kMarch2026 + 200 * kDay;
  return disk;
}

}  // namespace sample_disks

// Puts W:, P:, Q: and S: into the host's table.
inline void AddSampleDisks(FakeDeviceHost& host)
{
  using namespace sample_disks;
  host.AddDisk(Disk(u"W:", u"C:\\Users\\Ada\\Documents\\Work.qvi", 8589934592, 0, 32, kMarch2026));
  host.AddDisk(
      Disk(u"P:", u"C:\\Users\\Ada\\Private.qvi", 1073741824, 1, 16, kMarch2026 + 31 * kDay));
  host.AddDisk(
      Disk(u"Q:", u"D:\\Backup\\Archive 2025.qvi", 21474836480, 0, 24, kMarch2026 - 90 * kDay));
  host.AddDisk(Disk(u"S:", u"E:\\Travel.qvi", 104857600, 2, 16, kMarch2026 + 150 * kDay));
}
