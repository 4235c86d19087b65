// Images whose header key comes from a password, as the program makes them, for the tests of
// the commands that take an image and its password.
#pragma once

#include <string>
#include <string_view>

#include "app/size_units.h"
#include "crypto/keys.h"
#include "support/image_fixture.h"
#include "system/memory.h"

inline StatusCode CreatePasswordImage(const std::u16string& path, std::u16string_view password,
                                      uint64_t capacity, uint32_t flags = 0)
{
  ImageKeys keys;
  const StatusCode status =
      CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()), keys.identity.data(),
                      64, keys.headerKey.data(), keys.keyLength);
  if (IsFailure(status)) return status;
  return CreateImage(path, keys, CreateParams(capacity, flags));
}

// Opens the image with the key of `password` into `image`.
inline StatusCode OpenImageWithPassword(const std::u16string& path, std::u16string_view password,
                                        ImageHandle** image)
{
  ImageKeyInfo info{};
  info.recordSize = sizeof(info);
  StatusCode status = ImgGetKeyInfo(path.c_str(), &info);
  if (IsFailure(status)) return status;
  std::vector<uint8_t> key(info.keyLength);
  status = CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()),
                           info.identityBlock, 64, key.data(), info.keyLength);
  if (IsFailure(status)) return status;
  return ImgOpen(path.c_str(), 0, key.data(), info.keyLength, image);
}

// Opens the image with the key of `password` and closes it again; the open's status.
inline StatusCode OpenWithPassword(const std::u16string& path, std::u16string_view password)
{
  ImageHandle* image = nullptr;
  const StatusCode status = OpenImageWithPassword(path, password, &image);
  if (!IsFailure(status)) ImgClose(image, 0);
  return status;
}

// Counts the blocks of the allocation routine for its lifetime: the image handle and the
// key buffer come from it, so a block still live at the end is an image left open or a key
// buffer not released.
class CLiveBlocks {
 public:
  CLiveBlocks() { SysSetAllocationFaults(&faults_); }
  ~CLiveBlocks() { SysSetAllocationFaults(nullptr); }
  CLiveBlocks(const CLiveBlocks&) = delete;
  CLiveBlocks& operator=(const CLiveBlocks&) = delete;

  uint64_t Live() const { return faults_.blocksLive; }
  uint64_t Seen() const { return faults_.allocationsSeen; }
  // Makes the allocation `number` (counted from 1 while this is installed) fail.
  void FailAllocation(uint64_t number) { faults_.failingAllocation = number; }

 private:
  SysAllocationFaults faults_{};
};
