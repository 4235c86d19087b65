// Cipher contexts that release themselves at the end of a test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "crypto/cipher.h"
#include "support/hex.h"

struct CipherDestroyer {
  void operator()(CipherContext* context) const
  {
    EXPECT_EQ(CipherDestroy(context), kStatusSuccess);
  }
};
using CipherPtr = std::unique_ptr<CipherContext, CipherDestroyer>;

// `length` bytes from the test's own seeded generator, so that a failure repeats.
inline Bytes RandomBytes(std::mt19937& random, size_t length)
{
  Bytes bytes(length);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
  return bytes;
}

// Creates a context or fails the current test.
inline CipherPtr MakeCipher(CipherAlgorithm algorithm, const Bytes& key)
{
  const uint32_t mode = algorithm == kCipherRc4 ? kCipherModeStream : kCipherModeCbc;
  CipherContext* context = nullptr;
  const StatusCode status =
      CipherCreate(algorithm, mode, key.data(), static_cast<uint32_t>(key.size()), &context);
  EXPECT_EQ(status, kStatusSuccess) << "algorithm " << algorithm << ", key " << key.size();
  return CipherPtr(context);
}

inline Bytes Encrypt(CipherContext* context, const Bytes& input)
{
  Bytes output(input.size());
  EXPECT_EQ(
      CipherEncrypt(context, input.data(), output.data(), static_cast<uint32_t>(input.size())),
      kStatusSuccess);
  return output;
}

inline Bytes Decrypt(CipherContext* context, const Bytes& input)
{
  Bytes output(input.size());
  EXPECT_EQ(
      CipherDecrypt(context, input.data(), output.data(), static_cast<uint32_t>(input.size())),
      kStatusSuccess);
  return output;
}

inline void SetIv(CipherContext* context, const Bytes& vector)
{
  EXPECT_EQ(CipherSetIv(context, vector.data(), static_cast<uint32_t>(vector.size())),
            kStatusSuccess);
}
