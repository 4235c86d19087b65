// Little-endian numbers in byte buffers, and the format's two checksums.
#pragma once

#include <zlib.h>

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "the format is little-endian");

template <typename T>
T Load(const uint8_t* bytes)
{
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

template <typename T>
void Store(uint8_t* bytes, T value)
{
  std::memcpy(bytes, &value, sizeof value);
}

// CRC-32 (zlib's, from its initial value) and Adler-32 (zlib's, from 1).
inline uint32_t Crc32(const uint8_t* bytes, size_t length)
{
  return static_cast<uint32_t>(crc32(0, bytes, static_cast<uInt>(length)));
}

inline uint32_t Adler32(const uint8_t* bytes, size_t length)
{
  return static_cast<uint32_t>(adler32(1, bytes, static_cast<uInt>(length)));
}
