// The vector-AES engine for sixteen units side by side: its key schedule gives the round
// keys of the AES standard's own examples, and its units are, byte for byte, OpenSSL's
// AES-CBC of each unit alone, for every key length, unit length, vector length, group count
// and in place. On a processor without the instructions there is nothing to run.
#include "crypto/aes_wide_units.h"

#include <openssl/aes.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "support/cipher_fixture.h"

namespace {

// Each unit alone through OpenSSL's low-level CBC, from its zero-padded vector.
Bytes UnitByUnit(const Bytes& key, const Bytes& vectors, uint32_t vectorLength, const Bytes& input,
                 uint32_t unitLength)
{
  AES_KEY schedule;
  AES_set_encrypt_key(key.data(), static_cast<int>(key.size() * 8), &schedule);
  Bytes output(input.size());
  for (size_t unit = 0; unit * unitLength < input.size(); ++unit) {
    uint8_t vector[16] = {};
    std::memcpy(vector, vectors.data() + unit * 16, vectorLength);
    AES_cbc_encrypt(input.data() + unit * unitLength, output.data() + unit * unitLength, unitLength,
                    &schedule, vector, AES_ENCRYPT);
  }
  return output;
}

class AesWideUnits : public testing::Test {
 protected:
  void SetUp() override
  {
    if (!AesWideUnitsAvailable()) GTEST_SKIP() << "this processor has no vector AES instructions";
  }
};

}  // namespace

TEST_F(AesWideUnits, TheScheduleEndsWithTheStandardsLastRoundKey)
{
  struct Example {
    const char* key;
    uint32_t rounds;
    const char* lastRoundKey;
  };
  const Example examples[] = {
      {"2b7e151628aed2a6abf7158809cf4f3c", 10, "d014f9a8c9ee2589e13f0cc8b6630ca6"},
      {"8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b", 12, "e98ba06f448c773c8ecc720401002202"},
      {"603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4", 14,
       "fe4890d1e6188d0b046df344706c631e"},
  };
  for (const Example& example : examples) {
    const Bytes key = FromHex(example.key);
    AesRoundKeys keys{};
    ExpandAesKey(key.data(), static_cast<uint32_t>(key.size()), &keys);
    EXPECT_EQ(keys.rounds, example.rounds);
    EXPECT_EQ(Bytes(keys.bytes[keys.rounds], keys.bytes[keys.rounds] + 16),
              FromHex(example.lastRoundKey))
        << example.key;
    EXPECT_EQ(Bytes(keys.bytes[0], keys.bytes[0] + 16), Bytes(key.begin(), key.begin() + 16));
  }
}

TEST_F(AesWideUnits, GiveTheBytesOfEachUnitAlone)
{
  std::mt19937 random(11);
  for (const uint32_t keyLength : {16u, 24u, 32u}) {
    const Bytes key = RandomBytes(random, keyLength);
    AesRoundKeys keys{};
    ExpandAesKey(key.data(), keyLength, &keys);
    for (const uint32_t count : {16u, 32u, 256u}) {
      // One block (every pair is still starting when the first ends), a cache line, a unit.
      for (const uint32_t unitLength : {16u, 64u, 4096u}) {
        for (const uint32_t vectorLength : {16u, 5u}) {
          const Bytes vectors = RandomBytes(random, size_t{count} * 16);
          const Bytes input = RandomBytes(random, size_t{count} * unitLength);
          Bytes output(input.size());
          EncryptAesWideUnits(keys, vectors.data(), vectorLength, input.data(), output.data(),
                              unitLength, count);
          EXPECT_EQ(output, UnitByUnit(key, vectors, vectorLength, input, unitLength))
              << "key " << keyLength << " count " << count << " unit " << unitLength << " vector "
              << vectorLength;
        }
      }
    }
  }
}

TEST_F(AesWideUnits, InPlaceGivesTheSameBytes)
{
  std::mt19937 random(12);
  const Bytes key = RandomBytes(random, 32);
  AesRoundKeys keys{};
  ExpandAesKey(key.data(), 32, &keys);
  const Bytes vectors = RandomBytes(random, 64 * 16);
  Bytes buffer = RandomBytes(random, 64 * 4096);
  const Bytes expected = UnitByUnit(key, vectors, 16, buffer, 4096);
  EncryptAesWideUnits(keys, vectors.data(), 16, buffer.data(), buffer.data(), 4096, 64);
  EXPECT_EQ(buffer, expected);
}
