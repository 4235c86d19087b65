// One mounted disk as the device host reports it, and the flags of a mount request.
#pragma once

#include <cstddef>
#include <cstdint>

#include "system/status.h"
#include "system/uuid.h"

// Mount flags.
inline constexpr uint32_t kMountReadOnly = 0x1;
inline constexpr uint32_t kMountRemovable = 0x2;
inline constexpr uint32_t kMountInvisible = 0x4;      // invisible to other users
inline constexpr uint32_t kMountForFormatting = 0x8;  // a fresh image mounted to be formatted

// File-system selectors of a format request: 1 for disks of 4 GiB and more, 0 below.
inline constexpr uint32_t kFormatSelectorSmall = 0;
inline constexpr uint32_t kFormatSelectorLarge = 1;

// The information block of a mounted disk (little-endian, 72 bytes read by the client).
// The words at offsets 0, 56 and 68 are the device host's own; the reference device host
// puts the block's size, the image's block size and its cipher mode there.
struct MountedDiskInfo {
  uint32_t reserved0 = 0;
  uint32_t imageFlags = 0;  // the image descriptor's flags (bit 0: fixed-size image)
  Guid diskId{};
  uint64_t creationTime = 0;  // seconds since 1970-01-01 UTC
  uint64_t mountTime = 0;     // seconds since 1970-01-01 UTC
  uint64_t capacity = 0;      // bytes
  uint64_t volumeSizeLimit = 0;
  uint32_t reserved56 = 0;
  uint32_t algorithm = 0;
  uint32_t keyLength = 0;  // bytes
  uint32_t reserved68 = 0;
};
static_assert(sizeof(MountedDiskInfo) == 72);
static_assert(offsetof(MountedDiskInfo, diskId) == 8);
static_assert(offsetof(MountedDiskInfo, creationTime) == 24);
static_assert(offsetof(MountedDiskInfo, volumeSizeLimit) == 48);
static_assert(offsetof(MountedDiskInfo, algorithm) == 60);

// Receives one mounted disk of an enumeration; a failure stops the enumeration.
using MountedDiskCallback = StatusCode (*)(const char16_t* imagePath, const char16_t* mountPoint,
                                           uint32_t mountFlags, const MountedDiskInfo* info,
                                           void* context);
