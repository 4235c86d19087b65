#include "crypto/keys.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/hex.h"

namespace {

// PBKDF2-HMAC-SHA1 written out from its definition (RFC 8018, section 5.2), block by
// block, as an independent reference for the engine's key derivation.
Bytes ReferencePbkdf2(const Bytes& password, const Bytes& salt, int iterations, size_t length)
{
  Bytes output;
  for (uint32_t block = 1; output.size() < length; ++block) {
    Bytes message = salt;
    for (int shift = 24; shift >= 0; shift -= 8)
      message.push_back(static_cast<uint8_t>(block >> shift));
    uint8_t u[20];
    unsigned int ulen = 0;
    HMAC(EVP_sha1(), password.data(), static_cast<int>(password.size()), message.data(),
         message.size(), u, &ulen);
    uint8_t t[20];
    std::memcpy(t, u, sizeof t);
    for (int i = 1; i < iterations; ++i) {
      HMAC(EVP_sha1(), password.data(), static_cast<int>(password.size()), u, sizeof u, u, &ulen);
      for (size_t j = 0; j < sizeof t; ++j) t[j] ^= u[j];
    }
    output.insert(output.end(), t, t + std::min(sizeof t, length - output.size()));
  }
  return output;
}

Bytes Text(const std::string& text)
{
  return Bytes(text.begin(), text.end());
}

Bytes Salt64(uint8_t start)
{
  Bytes salt(64);
  for (size_t i = 0; i < salt.size(); ++i) salt[i] = static_cast<uint8_t>(start + i * 13);
  return salt;
}

Bytes Derive(const std::u16string& password, const Bytes& salt, size_t length)
{
  Bytes key(length);
  EXPECT_EQ(CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()), salt.data(),
                            static_cast<uint32_t>(salt.size()), key.data(),
                            static_cast<uint32_t>(length)),
            kStatusSuccess);
  return key;
}

}  // namespace

TEST(ReferencePbkdf2, Rfc6070Vectors)
{
  EXPECT_EQ(ToHex(ReferencePbkdf2(Text("password"), Text("salt"), 1, 20)),
            "0c60c80f961f0e71f3a9b524af6012062fe037a6");
  EXPECT_EQ(ToHex(ReferencePbkdf2(Text("password"), Text("salt"), 2, 20)),
            "ea6c014dc72d6f8ccd1ed92ace1d41f0d8de8957");
  EXPECT_EQ(ToHex(ReferencePbkdf2(Text("password"), Text("salt"), 4096, 20)),
            "4b007901b765489abead49d926f721d065a429c1");
  EXPECT_EQ(ToHex(ReferencePbkdf2(Text("passwordPASSWORDpassword"),
                                  Text("saltSALTsaltSALTsaltSALTsaltSALTsalt"), 4096, 25)),
            "3d2eec4fe41c849b80c8d83662c0e44a8b291a964cf2f07038");
  EXPECT_EQ(ToHex(ReferencePbkdf2(Text(std::string("pass\0word", 9)),
                                  Text(std::string("sa\0lt", 5)), 4096, 16)),
            "56fa6aa75548099dcc37d7f03425e0c3");
}

TEST(CryptoDeriveKey, HashesThePasswordAsUtf16LittleEndian)
{
  // "abc" is hashed as the six bytes 61 00 62 00 63 00, not as three ASCII bytes.
  const Bytes salt = Salt64(1);
  const Bytes key = Derive(u"abc", salt, 32);
  EXPECT_EQ(key, ReferencePbkdf2(FromHex("610062006300"), salt, 2048, 32));
  EXPECT_NE(key, ReferencePbkdf2(Text("abc"), salt, 2048, 32));
}

TEST(CryptoDeriveKey, UsesExactly2048Iterations)
{
  const Bytes salt = Salt64(2);
  const Bytes key = Derive(u"secret", salt, 20);
  const Bytes password = FromHex("7300650063007200650074 00");
  EXPECT_EQ(key, ReferencePbkdf2(password, salt, 2048, 20));
  EXPECT_NE(key, ReferencePbkdf2(password, salt, 2047, 20));
  EXPECT_NE(key, ReferencePbkdf2(password, salt, 2049, 20));
}

TEST(CryptoDeriveKey, ThirtyTwoBytesAreTwoPbkdf2Blocks)
{
  // 32 bytes = all 20 bytes of block 1, then the first 12 of block 2.
  const Bytes salt = Salt64(3);
  const Bytes password = FromHex("700061007300730077006f0072006400");  // "password"
  const Bytes key = Derive(u"password", salt, 32);
  const Bytes twoBlocks = ReferencePbkdf2(password, salt, 2048, 40);
  EXPECT_EQ(Bytes(key.begin(), key.begin() + 20), Bytes(twoBlocks.begin(), twoBlocks.begin() + 20));
  EXPECT_EQ(Bytes(key.begin() + 20, key.end()),
            Bytes(twoBlocks.begin() + 20, twoBlocks.begin() + 32));
  EXPECT_EQ(Derive(u"password", salt, 20), Bytes(key.begin(), key.begin() + 20));
}

TEST(CryptoDeriveKey, SameInputsSameKeyOneSaltByteChangesIt)
{
  const Bytes salt = Salt64(4);
  const Bytes key = Derive(u"correct horse", salt, 32);
  EXPECT_EQ(Derive(u"correct horse", salt, 32), key);
  for (size_t position : {size_t{0}, size_t{31}, size_t{63}}) {
    Bytes changed = salt;
    changed[position] ^= 1;
    EXPECT_NE(Derive(u"correct horse", changed, 32), key) << "salt byte " << position;
  }
  EXPECT_NE(Derive(u"correct horsf", salt, 32), key);
}

TEST(CryptoDeriveKey, EmptyPasswordIsRefused)
{
  const Bytes salt = Salt64(5);
  uint8_t key[32];
  EXPECT_EQ(CryptoDeriveKey(u"", 0, salt.data(), 64, key, 32), 0x40030002u);
}

TEST(CryptoDeriveKey, MissingPointersAndZeroLengthsAreRefused)
{
  const Bytes salt = Salt64(6);
  uint8_t key[32];
  const char16_t* password = u"pw";
  EXPECT_EQ(CryptoDeriveKey(nullptr, 2, salt.data(), 64, key, 32), 0x40030002u);
  EXPECT_EQ(CryptoDeriveKey(password, 2, nullptr, 64, key, 32), 0x40030002u);
  EXPECT_EQ(CryptoDeriveKey(password, 2, salt.data(), 0, key, 32), 0x40030002u);
  EXPECT_EQ(CryptoDeriveKey(password, 2, salt.data(), 64, nullptr, 32), 0x40030002u);
  EXPECT_EQ(CryptoDeriveKey(password, 2, salt.data(), 64, key, 0), 0x40030002u);
}

TEST(CryptoRandomBytes, ZeroLengthIsRefusedRatherThanIgnored)
{
  uint8_t buffer[16];
  EXPECT_EQ(CryptoRandomBytes(buffer, 0), 0x40030002u);
  EXPECT_EQ(CryptoRandomBytes(nullptr, 16), 0x40030002u);
}

TEST(CryptoRandomBytes, FillsTheBufferWithFreshBytes)
{
  Bytes first(64);
  Bytes second(64);
  ASSERT_EQ(CryptoRandomBytes(first.data(), 64), 0u);
  ASSERT_EQ(CryptoRandomBytes(second.data(), 64), 0u);
  EXPECT_NE(first, second);
  EXPECT_NE(first, Bytes(64));
}

TEST(CryptoSeedRandom, MissingOrEmptySeedIsRefused)
{
  const uint8_t seed[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  EXPECT_EQ(CryptoSeedRandom(nullptr, 8), 0x40030002u);
  EXPECT_EQ(CryptoSeedRandom(seed, 0), 0x40030002u);
  EXPECT_EQ(CryptoSeedRandom(seed, 8), 0u);
}

namespace {

// A random method whose answers a test scripts: a result for RAND_bytes, a byte pattern,
// and a record of the last seed.
struct ScriptedRandom {
  static inline int result = 1;
  static inline uint8_t next = 0;
  static inline Bytes lastSeed;

  static int Seed(const void* buffer, int length)
  {
    const auto* bytes = static_cast<const uint8_t*>(buffer);
    lastSeed.assign(bytes, bytes + length);
    return 1;
  }
  static int RandomBytes(unsigned char* buffer, int length)
  {
    for (int i = 0; i < length; ++i) buffer[i] = next++;
    return result;
  }
  static int Status() { return 1; }

  static constexpr RAND_METHOD kMethod = {Seed, RandomBytes, nullptr, nullptr, RandomBytes, Status};
};

class ScriptedRandomTest : public testing::Test {
 protected:
  void SetUp() override
  {
    saved_ = RAND_get_rand_method();
    ScriptedRandom::result = 1;
    ScriptedRandom::next = 0;
    ASSERT_EQ(RAND_set_rand_method(&ScriptedRandom::kMethod), 1);
  }
  void TearDown() override { RAND_set_rand_method(saved_); }

 private:
  const RAND_METHOD* saved_ = nullptr;
};

}  // namespace

TEST_F(ScriptedRandomTest, SeedGoesToTheDefaultRandomMethod)
{
  const uint8_t counter[8] = {0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};
  ASSERT_EQ(CryptoSeedRandom(counter, 8), 0u);
  EXPECT_EQ(ScriptedRandom::lastSeed, Bytes(counter, counter + 8));
}

TEST_F(ScriptedRandomTest, GeneratorThatCannotWorkFails)
{
  ScriptedRandom::result = -1;
  uint8_t buffer[16];
  EXPECT_EQ(CryptoRandomBytes(buffer, 16), 0x40030000u);
  EXPECT_EQ(CryptoGenerateKey(buffer, 16), 0x40030000u);
}

TEST_F(ScriptedRandomTest, WeaklySeededGeneratorCountsAsSuccess)
{
  ScriptedRandom::result = 0;
  uint8_t buffer[16];
  EXPECT_EQ(CryptoRandomBytes(buffer, 16), 0u);
  EXPECT_EQ(buffer[15], 15);
}

TEST_F(ScriptedRandomTest, GeneratedKeyIsRandomBytesWhitenedThroughPbkdf2)
{
  // Random key bytes first, then a 16-byte salt; the key becomes PBKDF2 of itself.
  Bytes key(32);
  ASSERT_EQ(CryptoGenerateKey(key.data(), 32), 0u);
  Bytes raw(32);
  Bytes salt(16);
  for (uint8_t i = 0; i < 32; ++i) raw[i] = i;
  for (uint8_t i = 0; i < 16; ++i) salt[i] = static_cast<uint8_t>(32 + i);
  EXPECT_EQ(key, ReferencePbkdf2(raw, salt, 2048, 32));
}

TEST(CryptoGenerateKey, ZeroLengthIsRefused)
{
  uint8_t buffer[16];
  EXPECT_EQ(CryptoGenerateKey(buffer, 0), 0x40030002u);
  EXPECT_EQ(CryptoGenerateKey(nullptr, 16), 0x40030002u);
}

TEST(CryptoGenerateKey, KeysDifferEveryTime)
{
  Bytes first(56);
  Bytes second(56);
  ASSERT_EQ(CryptoGenerateKey(first.data(), 56), 0u);
  ASSERT_EQ(CryptoGenerateKey(second.data(), 56), 0u);
  EXPECT_NE(first, second);
}
