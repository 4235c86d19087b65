#include "dialogs/disk_properties.h"

#include "app/display_text.h"
#include "image/image.h"
#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"

namespace {

// The value at offset 48 of the information block that marks a FAT-compatible disk.
constexpr uint64_t kFatCompatibleMark = 0xFFFFFFFFFFFFFFFFull;

std::u16string YesNo(bool yes)
{
  return LoadText(yes ? IDS_YES : IDS_NO);
}

}  // namespace

std::vector<DiskPropertyField> DiskPropertyFields(const MountedDisk& disk)
{
  const MountedDiskInfo& info = disk.info;
  const uint32_t keyBits = info.keyLength * 8u;
  return {
      {IDC_PROPERTY_IMAGE_PATH, disk.imagePath},
      {IDC_PROPERTY_MOUNT_POINT, disk.mountPoint},
      {IDC_PROPERTY_CAPACITY, FormatSizeText(info.capacity, true)},
      {IDC_PROPERTY_CREATED, FormatDateTimeText(info.creationTime)},
      {IDC_PROPERTY_MOUNTED, FormatDateTimeText(info.mountTime)},
      // The image flags are the image descriptor's, whose bit 0 is the creation's "fixed".
      {IDC_PROPERTY_FIXED_SIZE, YesNo((info.imageFlags & kCreateFixed) != 0)},
      // Deliberately an equality test on all 64 bits.
      {IDC_PROPERTY_FAT_COMPATIBLE, YesNo(info.volumeSizeLimit == kFatCompatibleMark)},
      {IDC_PROPERTY_READ_ONLY, YesNo((disk.mountFlags & kMountReadOnly) != 0)},
      {IDC_PROPERTY_REMOVABLE, YesNo((disk.mountFlags & kMountRemovable) != 0)},
      {IDC_PROPERTY_ALGORITHM, AlgorithmName(info.algorithm).value_or(std::u16string())},
      {IDC_PROPERTY_KEY_LENGTH, FormatText(LoadText(IDS_KEY_BITS), {keyBits})},
  };
}
