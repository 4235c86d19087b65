// Images made with fixed inputs in a temporary directory, for the image container's tests.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "crypto/cipher.h"
#include "image/image.h"
#include "image/image_set.h"
#include "image/layout.h"
#include "support/temp_dir.h"
#ifdef _WIN32
#include "system/wide_text_win.h"
#endif

struct ImageKeys {
  uint32_t algorithm = kCipherAes;
  uint32_t keyLength = 32;
  std::vector<uint8_t> headerKey;
  std::vector<uint8_t> dataKey;
  std::vector<uint8_t> identity;

  ImageKeys(uint32_t algorithmId = kCipherAes, uint32_t length = 32, uint8_t seed = 1)
      : algorithm(algorithmId), keyLength(length), headerKey(length), dataKey(length), identity(64)
  {
    for (uint32_t i = 0; i < length; ++i) {
      headerKey[i] = static_cast<uint8_t>(seed + i * 3);
      dataKey[i] = static_cast<uint8_t>(seed * 7 + i * 5 + 1);
    }
    for (uint32_t i = 0; i < 64; ++i) identity[i] = static_cast<uint8_t>(seed * 11 + i * 13 + 2);
  }
};

inline ImageCreateParams CreateParams(uint64_t capacity, uint32_t flags = 0, uint64_t limit = 0,
                                      ProgressCallback progress = nullptr, void* context = nullptr)
{
  return ImageCreateParams{sizeof(ImageCreateParams), flags, capacity, limit, progress, context};
}

inline StatusCode CreateImage(const std::u16string& path, const ImageKeys& keys,
                              const ImageCreateParams& params)
{
  return ImgCreate(path.c_str(), &params, keys.algorithm, kCipherModeCbc, keys.headerKey.data(),
                   keys.dataKey.data(), keys.keyLength, keys.identity.data(), 64);
}

inline StatusCode OpenImage(const std::u16string& path, const ImageKeys& keys, ImageHandle** handle,
                            uint32_t flags = 0)
{
  return ImgOpen(path.c_str(), flags, keys.headerKey.data(), keys.keyLength, handle);
}

inline uint64_t FileSize(const std::u16string& path)
{
  return std::filesystem::file_size(std::filesystem::path(path));
}

inline bool Exists(const std::u16string& path)
{
  return std::filesystem::exists(std::filesystem::path(path));
}

inline std::vector<uint8_t> ReadBytes(const std::u16string& path)
{
  std::vector<uint8_t> bytes(FileSize(path));
  FILE* file = nullptr;
#ifdef _WIN32
  file = _wfopen(Wide(path), L"rb");
#else
  file = std::fopen(std::filesystem::path(path).string().c_str(), "rb");
#endif
  if (file != nullptr) {
    EXPECT_EQ(std::fread(bytes.data(), 1, bytes.size(), file), bytes.size());
    std::fclose(file);
  }
  return bytes;
}

inline void WriteBytes(const std::u16string& path, const std::vector<uint8_t>& bytes)
{
  FILE* file = nullptr;
#ifdef _WIN32
  file = _wfopen(Wide(path), L"wb");
#else
  file = std::fopen(std::filesystem::path(path).string().c_str(), "wb");
#endif
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file), bytes.size());
  std::fclose(file);
}

// Flips one bit of the file at `offset`.
inline void FlipBit(const std::u16string& path, uint64_t offset)
{
  std::vector<uint8_t> bytes = ReadBytes(path);
  bytes.at(offset) ^= 0x01;
  WriteBytes(path, bytes);
}

// Clears the encrypted bit of the plain outer flags of the image's first volume file, so
// that its header says: not encrypted.
inline void MarkNotEncrypted(const std::u16string& path)
{
  std::vector<uint8_t> bytes = ReadBytes(path);
  bytes.at(64) ^= header::kFlagEncrypted;
  WriteBytes(path, bytes);
}

// Number of files in a directory.
inline size_t FileCount(const TempDir& dir)
{
  size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(dir.path()))
    ++count;
  return count;
}

// The image stream as the volume files hold it: each file's bytes behind its header, in
// file order.
inline std::vector<uint8_t> StoredStream(const std::u16string& path)
{
  std::vector<uint8_t> stream;
  for (uint32_t index = 0; Exists(VolumeFilePath(path, index)); ++index) {
    const std::vector<uint8_t> file = ReadBytes(VolumeFilePath(path, index));
    if (file.size() > kHeaderSize)
      stream.insert(stream.end(), file.begin() + kHeaderSize, file.end());
  }
  return stream;
}

// The chaining vector of the stream unit at `offset`, made by the format's rule rather
// than by the image code: the offset, 4095, identity bytes 16..19; of these the first
// `blockSize` bytes.
inline std::vector<uint8_t> UnitVector(const ImageKeys& keys, uint64_t offset, uint32_t blockSize)
{
  std::vector<uint8_t> vector(16);
  for (size_t i = 0; i < 8; ++i) vector[i] = static_cast<uint8_t>(offset >> (8 * i));
  vector[8] = 0xFF;
  vector[9] = 0x0F;
  for (size_t i = 0; i < 4; ++i) vector[12 + i] = keys.identity[16 + i];
  vector.resize(blockSize);
  return vector;
}
