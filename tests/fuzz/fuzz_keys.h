// The fixed keys of the fuzz targets' images, so that seeds made with them open.
#pragma once

#include <cstdint>

#include "crypto/cipher.h"

inline constexpr uint32_t kFuzzKeyLength = 32;

inline const uint8_t* FuzzHeaderKey()
{
  static uint8_t key[kFuzzKeyLength];
  for (uint32_t i = 0; i < kFuzzKeyLength; ++i) key[i] = static_cast<uint8_t>(0xA0 + i);
  return key;
}

inline const uint8_t* FuzzDataKey()
{
  static uint8_t key[kFuzzKeyLength];
  for (uint32_t i = 0; i < kFuzzKeyLength; ++i) key[i] = static_cast<uint8_t>(0x30 + 3 * i);
  return key;
}

inline const uint8_t* FuzzIdentityBlock()
{
  static uint8_t block[64];
  for (uint32_t i = 0; i < 64; ++i) block[i] = static_cast<uint8_t>(7 * i + 1);
  return block;
}
