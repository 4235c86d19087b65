// Enciphering on several threads gives the bytes of one thread, and a fixed image's data
// units are exactly the zero units enciphered each with its own chaining vector.
#include "image/unit_encryptor.h"

#include <gtest/gtest.h>

#include <cstring>

#include "image/image_handle.h"
#include "support/cipher_fixture.h"
#include "support/image_fixture.h"

namespace {

// A set with a data cipher and nothing else: all that enciphering units needs.
struct CipherOnlySet {
  ImageSet set;
  explicit CipherOnlySet(const ImageKeys& keys)
  {
    EXPECT_EQ(CipherCreate(keys.algorithm, kCipherModeCbc, keys.dataKey.data(), keys.keyLength,
                           &set.dataCipher),
              0u);
    std::memcpy(set.identityBlock, keys.identity.data(), 64);
    set.ivLength = keys.algorithm == kCipherAes ? 16 : 8;
  }
  ~CipherOnlySet() { CipherDestroy(set.dataCipher); }
};

Bytes Noise(size_t length)
{
  Bytes bytes(length);
  uint32_t x = 12345;
  for (uint8_t& b : bytes) {
    x = x * 1103515245u + 12345u;
    b = static_cast<uint8_t>(x >> 24);
  }
  return bytes;
}

}  // namespace

TEST(UnitEncryptor, AnyNumberOfThreadsGivesTheBytesOfOne)
{
  const CipherOnlySet plain{ImageKeys(kCipherAes, 32)};
  const Bytes input = Noise(kChunkSize);
  for (const uint32_t units : {1u, 5u, 77u, 256u}) {
    const uint32_t length = units * kUnitSize;
    const uint64_t offset = 3ull << 30;
    Bytes expected(length);
    ASSERT_EQ(CipherUnits(plain.set, plain.set.dataCipher, offset, input.data(), expected.data(),
                          length, true),
              0u);
    for (const unsigned helpers : {0u, 1u, 2u, 6u}) {
      UnitEncryptor encryptor;
      ASSERT_EQ(encryptor.Start(plain.set, helpers), 0u);
      Bytes output(length);
      ASSERT_EQ(encryptor.Encipher(offset, input.data(), output.data(), length), 0u);
      EXPECT_EQ(output, expected) << units << " units with " << helpers << " helpers";
    }
  }
}

TEST(UnitEncryptor, JobsFollowOneAnother)
{
  const CipherOnlySet plain{ImageKeys(kCipherBlowfish, 16)};
  const Bytes input = Noise(kChunkSize);
  Bytes first(kChunkSize), second(kChunkSize), expected(kChunkSize);
  UnitEncryptor encryptor;
  ASSERT_EQ(encryptor.Start(plain.set, 2), 0u);
  ASSERT_EQ(encryptor.Encipher(0, input.data(), first.data(), kChunkSize), 0u);
  ASSERT_EQ(encryptor.Encipher(kChunkSize, input.data(), second.data(), kChunkSize), 0u);
  ASSERT_EQ(CipherUnits(plain.set, plain.set.dataCipher, 0, input.data(), expected.data(),
                        kChunkSize, true),
            0u);
  EXPECT_EQ(first, expected);
  ASSERT_EQ(CipherUnits(plain.set, plain.set.dataCipher, kChunkSize, input.data(), expected.data(),
                        kChunkSize, true),
            0u);
  EXPECT_EQ(second, expected);
}

TEST(UnitEncryptor, SetWithoutACipherCannotStart)
{
  ImageSet set;
  UnitEncryptor encryptor;
  EXPECT_EQ(encryptor.Start(set, 2), 0x40030002u);  // the cipher engine's refusal
}

// The stored data of a fixed image, split into volume files whose ends fall inside a
// chunk, is unit n's zeros enciphered with the vector (stream offset, 4095, identity
// bytes 16..19), for every unit and every algorithm.
TEST(FixedImageData, EveryUnitIsItsZerosEncipheredWithItsOwnVector)
{
  for (const uint32_t algorithm : {kCipherAes, kCipherBlowfish, kCipherCast}) {
    TempDir dir;
    const std::u16string path = dir.File(u"fixed.qvi");
    const ImageKeys keys(algorithm, 16, 3);
    const uint64_t capacity = (5ull << 20) + 3 * 4096;
    const uint64_t limit = 4096 + (3ull << 19) + 4096;  // 1.5 MiB and one unit per file
    ASSERT_EQ(CreateImage(path, keys, CreateParams(capacity, kCreateFixed, limit)), 0u);

    const Bytes stream = StoredStream(path);
    ASSERT_GE(stream.size(), 8192 + capacity);

    const CipherPtr cipher = MakeCipher(algorithm, keys.dataKey);
    const Bytes zeros(4096);
    uint32_t wrong = 0;
    for (uint64_t offset = 8192; offset < 8192 + capacity; offset += 4096) {
      SetIv(cipher.get(), UnitVector(keys, offset, algorithm == kCipherAes ? 16 : 8));
      const Bytes expected = Encrypt(cipher.get(), zeros);
      if (std::memcmp(stream.data() + offset, expected.data(), 4096) != 0) ++wrong;
    }
    EXPECT_EQ(wrong, 0u) << "algorithm " << algorithm;
  }
}
