// Images made with every input fixed: clock, identifiers, identity blocks and keys. Their
// files are committed under tests/image/frozen; the tests open them field by field and
// make them again byte for byte, so any change of the format shows.
#pragma once

#include <string>

#include "crypto/keys.h"
#include "image/layout.h"
#include "support/image_fixture.h"
#include "system/clock.h"
#include "system/uuid.h"

// 2026-05-28 20:26:40 UTC; its 16-bit fold (0xCF18) is not 0, as the header noise needs.
inline constexpr uint64_t kFrozenTime = 1780000000;
inline constexpr Guid kFrozenFirstIdentifier{
    0x7C3E0001, 0x5A17, 0x4C2B, {0x9E, 0x41, 0x0D, 0x6F, 0x22, 0xB8, 0x13, 0x57}};
// Every frozen image's password; its header key is derived from it as for any image.
inline constexpr char16_t kFrozenPassword[] = u"frozen fixture";

struct FrozenImage {
  const char16_t* name;
  uint32_t algorithm;
  uint32_t keyLength;
  uint8_t seed;  // of the identity block and the data key (see ImageKeys)
  uint64_t capacity;
  uint32_t createFlags;
  uint64_t volumeSizeLimit;
  uint32_t volumeFiles;
};

inline constexpr FrozenImage kFrozenImages[] = {
    {u"aes256-dynamic.qvi", kCipherAes, 32, 1, 4 << 20, 0, kNoVolumeLimit, 1},
    {u"aes192-dynamic-fat.qvi", kCipherAes, 24, 2, 4 << 20, 0, kFileSystemLimit, 1},
    {u"aes128-fixed.qvi", kCipherAes, 16, 3, 64 << 10, kCreateFixed, kNoVolumeLimit, 1},
    {u"blowfish448-dynamic.qvi", kCipherBlowfish, 56, 4, 4 << 20, 0, kNoVolumeLimit, 1},
    {u"cast128-fixed-split.qvi", kCipherCast, 16, 5, 8192, kCreateFixed, kHeaderSize + 8192, 3},
};

// The keys of a frozen image: identity block and data key from the seed, header key
// derived from the password with the identity block as salt.
inline StatusCode FrozenKeys(const FrozenImage& image, ImageKeys* keys)
{
  *keys = ImageKeys(image.algorithm, image.keyLength, image.seed);
  const uint32_t passwordLength = sizeof kFrozenPassword / sizeof kFrozenPassword[0] - 1;
  return CryptoDeriveKey(kFrozenPassword, passwordLength, keys->identity.data(), 64,
                         keys->headerKey.data(), image.keyLength);
}

// Makes a frozen image at `path` with the clock frozen and identifiers counted from
// kFrozenFirstIdentifier: the set's identifier first, then the image's.
inline StatusCode MakeFrozenImage(const FrozenImage& image, const std::u16string& path)
{
  ImageKeys keys;
  StatusCode status = FrozenKeys(image, &keys);
  if (IsFailure(status)) return status;
  SysFreezeClock(kFrozenTime);
  SysSetUuidSequence(&kFrozenFirstIdentifier);
  status = CreateImage(path, keys,
                       CreateParams(image.capacity, image.createFlags, image.volumeSizeLimit));
  SysSetUuidSequence(nullptr);
  SysFreezeClock(0);
  return status;
}
