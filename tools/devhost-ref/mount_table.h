// The reference device host's table of mounted disks.
//
// A mount opens the image with the header key it received and keeps it open until the
// disk is dismounted, so the image cannot be opened a second time meanwhile. Disks keep
// the order in which they were mounted.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "devhost/mounted_disk.h"
#include "image/image.h"
#include "system/status.h"
#include "system/uuid.h"

// The drives through which mounted disks appear to applications.
class HostDrives {
 public:
  virtual ~HostDrives() = default;
  // True when `letter` (upper case) already names a drive of the system.
  virtual bool IsTaken(char16_t letter) = 0;
  // Makes `letter` a drive for the disk `diskId`.
  virtual StatusCode Attach(char16_t letter, const Guid& diskId) = 0;
  // Removes the drive again.
  virtual void Detach(char16_t letter) = 0;
  // True while applications use files on the drive.
  virtual bool InUse(char16_t letter) = 0;
};

// "X:" or "X:\" in either case gives the upper-case drive letter; anything else gives 0.
char16_t MountPointLetter(const char16_t* mountPoint);

struct MountedDisk {
  char16_t letter = 0;
  std::u16string mountPoint;  // "X:"
  std::u16string imagePath;
  uint32_t mountFlags = 0;
  MountedDiskInfo info;
  ImageHandle* image = nullptr;
};

class MountTable {
 public:
  explicit MountTable(HostDrives& drives) : drives_(drives) {}
  ~MountTable();
  MountTable(const MountTable&) = delete;
  MountTable& operator=(const MountTable&) = delete;

  // Opens the image (read-only when the flags say so) and attaches its drive. A mount
  // point that is not a drive letter is kSysInvalidParameter, a taken one kSysAccessDenied;
  // failures of the open come back as the image container gives them.
  StatusCode Mount(const char16_t* imagePath, const char16_t* mountPoint, uint32_t mountFlags,
                   const uint8_t* key, uint32_t keyLength);

  // Dismounts close the image and detach the drive. Unless forced, a disk in use is
  // kDevVolumeInUse and stays mounted (for DismountAll: every disk stays mounted). An
  // unknown disk is kSysNotFound.
  StatusCode DismountAll(bool forced);
  StatusCode DismountByMountPoint(const char16_t* mountPoint, bool forced);
  StatusCode DismountById(const Guid& diskId, bool forced);

  // Accepts a format request for a mounted disk; the selector must be 0 or 1.
  StatusCode Format(const char16_t* mountPoint, uint32_t selector);

  const std::vector<MountedDisk>& Disks() const { return disks_; }

 private:
  StatusCode DismountAt(size_t index, bool forced);

  HostDrives& drives_;
  std::vector<MountedDisk> disks_;
};
