// The device host client's RPC operations.
#include <cstring>
#include <string>

#include "crypto/keys.h"
#include "devhost/binding_win.h"
#include "devhost/device_host.h"
#include "devhost_rpc.h"
#include "image/image.h"
#include "system/memory.h"
#include "system/wide_text_win.h"

StatusCode ImgMountWithPassword(const char16_t* imagePath, const char16_t* mountPoint,
                                uint32_t mountFlags, const char16_t* password)
{
  if (imagePath == nullptr) return kDevInvalidParameter;
  ImageKeyInfo keyInfo;
  keyInfo.recordSize = sizeof keyInfo;
  StatusCode status = ImgGetKeyInfo(imagePath, &keyInfo);
  if (IsFailure(status)) return status == kImgPlainImage ? kDevImageNotEncrypted : status;

  // The key lives in whole, never-paged pages of its own.
  auto* key = static_cast<uint8_t*>(SysAllocate(keyInfo.keyLength, kAllocZeroed));
  if (key == nullptr) return kDevOutOfMemory;
  // No check of the password here: an empty one goes to the derivation like any other.
  const auto passwordLength =
      static_cast<uint32_t>(password != nullptr ? std::char_traits<char16_t>::length(password) : 0);
  status = CryptoDeriveKey(password, passwordLength, keyInfo.identityBlock,
                           sizeof keyInfo.identityBlock, key, keyInfo.keyLength);
  if (!IsFailure(status)) {
    status = CallDeviceHost([&](RPC_BINDING_HANDLE binding) {
      return MountImage(binding, Wide(imagePath), Wide(mountPoint), static_cast<LONG>(mountFlags),
                        key, keyInfo.keyLength);
    });
  }
  // Released without overwriting: the system clears the pages before any reuse.
  SysRelease(key);
  return status;
}

StatusCode DevDismountAll(uint32_t forced)
{
  if (forced > 1) return kDevInvalidParameter;
  return CallDeviceHost(
      [&](RPC_BINDING_HANDLE binding) { return DismountAll(binding, forced == 1); });
}

StatusCode DevDismountMountPoint(const char16_t* mountPoint, uint32_t forced)
{
  if (mountPoint == nullptr || forced > 1) return kDevInvalidParameter;
  return CallDeviceHost([&](RPC_BINDING_HANDLE binding) {
    return DismountByMountPoint(binding, Wide(mountPoint), forced == 1);
  });
}

StatusCode DevDismountById(const Guid* diskId, uint32_t forced)
{
  if (diskId == nullptr || forced > 1) return kDevInvalidParameter;
  GUID id;
  static_assert(sizeof id == sizeof *diskId);
  std::memcpy(&id, diskId, sizeof id);
  return CallDeviceHost(
      [&](RPC_BINDING_HANDLE binding) { return DismountById(binding, &id, forced == 1); });
}

StatusCode DevFormatVolume(const char16_t* mountPoint, uint32_t selector)
{
  if (mountPoint == nullptr || selector > kFormatSelectorLarge) return kDevInvalidParameter;
  return CallDeviceHost([&](RPC_BINDING_HANDLE binding) {
    return FormatVolume(binding, Wide(mountPoint), static_cast<FileSystemSelector>(selector));
  });
}

StatusCode DevEnumerateDisks(MountedDiskCallback callback, void* context)
{
  if (callback == nullptr) return kDevInvalidParameter;
  MountedDiskRecord* records = nullptr;
  ULONG count = 0;
  StatusCode status = CallDeviceHost(
      [&](RPC_BINDING_HANDLE binding) { return EnumerateDisks(binding, &records, &count); });
  if (IsFailure(status)) return status;

  status = kStatusSuccess;
  for (ULONG i = 0; i < count && !IsFailure(status); ++i) {
    const MountedDiskRecord& record = records[i];
    // The device host always sends at least the 72 bytes read here.
    MountedDiskInfo info;
    if (record.Info != nullptr) std::memcpy(&info, record.Info, sizeof info);
    status = callback(Utf16(record.ImagePath), Utf16(record.MountPoint),
                      static_cast<uint32_t>(record.MountFlags), &info, context);
  }
  // What the runtime unmarshalled goes back through the allocator pair: the strings and
  // blocks of every record, then the array with one release.
  for (ULONG i = 0; i < count; ++i) {
    MIDL_user_free(records[i].MountPoint);
    MIDL_user_free(records[i].ImagePath);
    MIDL_user_free(records[i].Info);
  }
  MIDL_user_free(records);
  return status;
}
