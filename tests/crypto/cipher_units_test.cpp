// Enciphering many independent units in one call (AES side by side) gives exactly the bytes
// of loading each unit's vector and enciphering it alone, for every block cipher, key
// length, unit count (also counts that leave a partial group of side-by-side units) and
// vector length, and leaves the chaining vector where the unit-by-unit calls leave it.
#include <gtest/gtest.h>

#include <random>

#include "support/cipher_fixture.h"

namespace {

struct Keyed {
  CipherAlgorithm algorithm;
  uint32_t keyLength;
};

const Keyed kBlockCiphers[] = {
    {kCipherAes, 16}, {kCipherAes, 24}, {kCipherAes, 32}, {kCipherBlowfish, 16}, {kCipherCast, 16}};

uint32_t BlockSize(CipherAlgorithm algorithm)
{
  return algorithm == kCipherAes ? 16 : 8;
}

// One unit after the other: the reference.
Bytes UnitByUnit(CipherContext* context, const Bytes& vectors, uint32_t vectorLength,
                 const Bytes& input, uint32_t unitLength)
{
  Bytes output(input.size());
  for (size_t unit = 0; unit * unitLength < input.size(); ++unit) {
    EXPECT_EQ(CipherSetIv(context, vectors.data() + unit * kCipherVectorStride, vectorLength), 0u);
    EXPECT_EQ(CipherEncrypt(context, input.data() + unit * unitLength,
                            output.data() + unit * unitLength, unitLength),
              0u);
  }
  return output;
}

}  // namespace

TEST(CipherEncryptUnits, GivesTheBytesOfOneUnitAfterTheOther)
{
  std::mt19937 random(7);
  for (const Keyed& keyed : kBlockCiphers) {
    const Bytes key = RandomBytes(random, keyed.keyLength);
    const uint32_t block = BlockSize(keyed.algorithm);
    for (const uint32_t count : {1u, 3u, 8u, 9u, 17u, 256u}) {
      for (const uint32_t unitLength : {block, 4096u}) {
        for (const uint32_t vectorLength : {block, block / 2}) {
          const Bytes vectors = RandomBytes(random, count * kCipherVectorStride);
          const Bytes input = RandomBytes(random, size_t{count} * unitLength);
          const CipherPtr reference = MakeCipher(keyed.algorithm, key);
          const CipherPtr together = MakeCipher(keyed.algorithm, key);
          const Bytes expected =
              UnitByUnit(reference.get(), vectors, vectorLength, input, unitLength);
          Bytes output(input.size());
          ASSERT_EQ(CipherEncryptUnits(together.get(), vectors.data(), vectorLength, input.data(),
                                       output.data(), unitLength, count),
                    0u);
          const std::string what = "algorithm " + std::to_string(keyed.algorithm) + " key " +
                                   std::to_string(keyed.keyLength) + " count " +
                                   std::to_string(count) + " unit " + std::to_string(unitLength);
          EXPECT_EQ(output, expected) << what;
          // Both chains go on from the same vector: the next block comes out the same.
          const Bytes next = RandomBytes(random, block);
          EXPECT_EQ(Encrypt(together.get(), next), Encrypt(reference.get(), next)) << what;
        }
      }
    }
  }
}

TEST(CipherEncryptUnits, InPlaceGivesTheSameBytes)
{
  std::mt19937 random(11);
  const Bytes key = RandomBytes(random, 32);
  const Bytes vectors = RandomBytes(random, 20 * kCipherVectorStride);
  const Bytes input = RandomBytes(random, 20 * 4096);
  const CipherPtr aes = MakeCipher(kCipherAes, key);
  Bytes separate(input.size());
  ASSERT_EQ(
      CipherEncryptUnits(aes.get(), vectors.data(), 16, input.data(), separate.data(), 4096, 20),
      0u);
  Bytes inPlace = input;
  ASSERT_EQ(
      CipherEncryptUnits(aes.get(), vectors.data(), 16, inPlace.data(), inPlace.data(), 4096, 20),
      0u);
  EXPECT_EQ(inPlace, separate);
}

TEST(CipherEncryptUnits, BadRequestsAreRefused)
{
  const Bytes key(16, 1);
  const Bytes vectors(2 * kCipherVectorStride, 2);
  Bytes buffer(64, 3);
  const CipherPtr aes = MakeCipher(kCipherAes, key);
  const CipherPtr rc4 = MakeCipher(kCipherRc4, key);
  auto call = [&](CipherContext* context, const uint8_t* v, uint32_t vectorLength,
                  uint32_t unitLength, uint32_t count) {
    return CipherEncryptUnits(context, v, vectorLength, buffer.data(), buffer.data(), unitLength,
                              count);
  };
  EXPECT_EQ(call(aes.get(), vectors.data(), 16, 32, 2), 0u);
  EXPECT_EQ(call(nullptr, vectors.data(), 16, 32, 2), 0x40030002u);
  EXPECT_EQ(call(aes.get(), nullptr, 16, 32, 2), 0x40030002u);
  EXPECT_EQ(call(aes.get(), vectors.data(), 0, 32, 2), 0x40030002u);
  EXPECT_EQ(call(aes.get(), vectors.data(), 17, 32, 2), 0x40030002u);
  EXPECT_EQ(call(aes.get(), vectors.data(), 16, 24, 2), 0x40030002u);  // not whole blocks
  EXPECT_EQ(call(aes.get(), vectors.data(), 16, 0, 2), 0x40030002u);
  EXPECT_EQ(call(aes.get(), vectors.data(), 16, 32, 0), 0x40030002u);
  EXPECT_EQ(call(rc4.get(), vectors.data(), 1, 32, 2), 0x40030002u);
}
