#include "tools/devhost-ref/mount_table.h"

#include <cstring>

#include "system/clock.h"

namespace {

// What the disk list shows of a mounted image.
MountedDiskInfo DescribeDisk(const ImageProperties& properties, const Guid& diskId)
{
  MountedDiskInfo info;
  info.reserved0 = sizeof info;
  info.imageFlags = properties.flags & ~kPropertyReadOnly;
  info.diskId = diskId;
  info.creationTime = properties.creationTime;
  info.mountTime = SysUnixTime();
  info.capacity = properties.capacity;
  info.volumeSizeLimit = properties.volumeSizeLimit;
  info.reserved56 = properties.blockSize;
  info.algorithm = properties.algorithm;
  info.keyLength = properties.keyLength;
  info.reserved68 = properties.mode;
  return info;
}

}  // namespace

char16_t MountPointLetter(const char16_t* mountPoint)
{
  if (mountPoint == nullptr) return 0;
  char16_t letter = mountPoint[0];
  if (letter >= u'a' && letter <= u'z') letter = static_cast<char16_t>(letter - u'a' + u'A');
  if (letter < u'A' || letter > u'Z' || mountPoint[1] != u':') return 0;
  const bool rootForm = mountPoint[2] == u'\\' && mountPoint[3] == 0;
  return mountPoint[2] == 0 || rootForm ? letter : 0;
}

MountTable::~MountTable()
{
  DismountAll(true);
}

StatusCode MountTable::Mount(const char16_t* imagePath, const char16_t* mountPoint,
                             uint32_t mountFlags, const uint8_t* key, uint32_t keyLength)
{
  const char16_t letter = MountPointLetter(mountPoint);
  if (imagePath == nullptr || imagePath[0] == 0 || letter == 0) return kSysInvalidParameter;
  for (const MountedDisk& disk : disks_) {
    if (disk.letter == letter) return kSysAccessDenied;
  }
  if (drives_.IsTaken(letter)) return kSysAccessDenied;

  MountedDisk disk;
  const uint32_t openFlags = (mountFlags & kMountReadOnly) != 0 ? kOpenReadOnly : 0;
  StatusCode status = ImgOpen(imagePath, openFlags, key, keyLength, &disk.image);
  if (IsFailure(status)) return status;
  ImageProperties properties;
  properties.recordSize = sizeof properties;
  Guid diskId{};
  status = ImgGetProperties(disk.image, &properties);
  if (!IsFailure(status)) status = SysCreateUuid(&diskId);
  if (!IsFailure(status)) status = drives_.Attach(letter, diskId);
  if (IsFailure(status)) {
    ImgClose(disk.image, kCloseForce);
    return status;
  }
  disk.letter = letter;
  disk.mountPoint = {letter, u':'};
  disk.imagePath = imagePath;
  disk.mountFlags = mountFlags;
  disk.info = DescribeDisk(properties, diskId);
  disks_.push_back(std::move(disk));
  return kStatusSuccess;
}

StatusCode MountTable::DismountAt(size_t index, bool forced)
{
  MountedDisk& disk = disks_[index];
  if (!forced && drives_.InUse(disk.letter)) return kDevVolumeInUse;
  drives_.Detach(disk.letter);
  ImgClose(disk.image, kCloseForce);
  disks_.erase(disks_.begin() + static_cast<std::ptrdiff_t>(index));
  return kStatusSuccess;
}

StatusCode MountTable::DismountAll(bool forced)
{
  if (!forced) {
    for (const MountedDisk& disk : disks_) {
      if (drives_.InUse(disk.letter)) return kDevVolumeInUse;
    }
  }
  while (!disks_.empty()) DismountAt(disks_.size() - 1, true);
  return kStatusSuccess;
}

StatusCode MountTable::DismountByMountPoint(const char16_t* mountPoint, bool forced)
{
  const char16_t letter = MountPointLetter(mountPoint);
  if (letter == 0) return kSysInvalidParameter;
  for (size_t i = 0; i < disks_.size(); ++i) {
    if (disks_[i].letter == letter) return DismountAt(i, forced);
  }
  return kSysNotFound;
}

StatusCode MountTable::DismountById(const Guid& diskId, bool forced)
{
  for (size_t i = 0; i < disks_.size(); ++i) {
    if (std::memcmp(&disks_[i].info.diskId, &diskId, sizeof diskId) == 0) {
      return DismountAt(i, forced);
    }
  }
  return kSysNotFound;
}

StatusCode MountTable::Format(const char16_t* mountPoint, uint32_t selector)
{
  const char16_t letter = MountPointLetter(mountPoint);
  if (letter == 0 || selector > kFormatSelectorLarge) return kSysInvalidParameter;
  for (const MountedDisk& disk : disks_) {
    if (disk.letter == letter) return kStatusSuccess;
  }
  return kSysNotFound;
}
