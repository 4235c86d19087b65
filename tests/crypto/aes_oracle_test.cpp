// The engine runs AES through OpenSSL's EVP interface. OpenSSL's low-level
// AES_cbc_encrypt is the oracle: for random keys, vectors, lengths and ways of splitting a
// request into calls, both must give the same bytes and leave the same chaining vector.
#include <openssl/aes.h>

#include <gtest/gtest.h>

#include <random>

#include "support/cipher_fixture.h"

namespace {

// The oracle: a low-level AES-CBC context with the same shared-vector semantics.
class LowLevelAes {
 public:
  explicit LowLevelAes(const Bytes& key)
  {
    AES_set_encrypt_key(key.data(), static_cast<int>(key.size() * 8), &encrypt_);
    AES_set_decrypt_key(key.data(), static_cast<int>(key.size() * 8), &decrypt_);
  }
  void SetIv(const Bytes& vector)
  {
    std::fill(std::begin(vector_), std::end(vector_), 0);
    std::copy(vector.begin(), vector.end(), vector_);
  }
  Bytes Run(const Bytes& input, bool encrypting)
  {
    Bytes output(input.size());
    AES_cbc_encrypt(input.data(), output.data(), input.size(), encrypting ? &encrypt_ : &decrypt_,
                    vector_, encrypting ? AES_ENCRYPT : AES_DECRYPT);
    return output;
  }

 private:
  AES_KEY encrypt_;
  AES_KEY decrypt_;
  uint8_t vector_[16] = {};
};

class AesOracle : public testing::Test {
 protected:
  Bytes RandomBytes(size_t length)
  {
    Bytes bytes(length);
    for (auto& b : bytes) b = static_cast<uint8_t>(random_());
    return bytes;
  }
  size_t RandomBlocks(size_t most) { return 1 + random_() % most; }

  std::mt19937 random_{20261121};
};

}  // namespace

TEST_F(AesOracle, SingleCallsMatchForRandomKeysVectorsAndLengths)
{
  for (int round = 0; round < 300; ++round) {
    const Bytes key = RandomBytes(16 + 8 * (random_() % 3));
    const Bytes vector = RandomBytes(16);
    const Bytes input = RandomBytes(16 * RandomBlocks(300));
    const bool encrypting = random_() % 2 == 0;

    LowLevelAes oracle(key);
    oracle.SetIv(vector);
    const CipherPtr engine = MakeCipher(kCipherAes, key);
    SetIv(engine.get(), vector);
    const Bytes expected = oracle.Run(input, encrypting);
    const Bytes actual = encrypting ? Encrypt(engine.get(), input) : Decrypt(engine.get(), input);
    ASSERT_EQ(actual, expected) << "round " << round << ", key " << key.size() << ", "
                                << input.size() << " bytes";
  }
}

TEST_F(AesOracle, SplitCallsMatchOneCallAndTheOracle)
{
  for (int round = 0; round < 100; ++round) {
    const Bytes key = RandomBytes(16 + 8 * (random_() % 3));
    const Bytes vector = RandomBytes(16);
    const Bytes input = RandomBytes(16 * RandomBlocks(64));
    const bool encrypting = random_() % 2 == 0;

    LowLevelAes oracle(key);
    oracle.SetIv(vector);
    const Bytes expected = oracle.Run(input, encrypting);

    const CipherPtr engine = MakeCipher(kCipherAes, key);
    SetIv(engine.get(), vector);
    Bytes joined;
    for (size_t done = 0; done < input.size();) {
      const size_t piece = std::min(input.size() - done, 16 * RandomBlocks(8));
      const Bytes part(input.begin() + static_cast<long>(done),
                       input.begin() + static_cast<long>(done + piece));
      const Bytes out = encrypting ? Encrypt(engine.get(), part) : Decrypt(engine.get(), part);
      joined.insert(joined.end(), out.begin(), out.end());
      done += piece;
    }
    ASSERT_EQ(joined, expected) << "round " << round;
  }
}

TEST_F(AesOracle, EncryptThenDecryptShareOneVectorLikeTheOracle)
{
  for (int round = 0; round < 100; ++round) {
    const Bytes key = RandomBytes(16 + 8 * (random_() % 3));
    LowLevelAes oracle(key);
    const CipherPtr engine = MakeCipher(kCipherAes, key);
    const Bytes vector = RandomBytes(1 + random_() % 16);  // short vectors are zero-padded
    oracle.SetIv(vector);
    SetIv(engine.get(), vector);

    // Alternate directions on the one context; each call continues from the vector the
    // previous one left, whichever direction that was.
    for (int call = 0; call < 6; ++call) {
      const Bytes input = RandomBytes(16 * RandomBlocks(16));
      const bool encrypting = call % 2 == 0;
      const Bytes expected = oracle.Run(input, encrypting);
      const Bytes actual = encrypting ? Encrypt(engine.get(), input) : Decrypt(engine.get(), input);
      ASSERT_EQ(actual, expected) << "round " << round << ", call " << call;
    }
  }
}

TEST_F(AesOracle, IndependentlyChainedUnitsMatch)
{
  // The image container loads a fresh vector before every 4096-byte unit.
  const Bytes key = RandomBytes(32);
  LowLevelAes oracle(key);
  const CipherPtr engine = MakeCipher(kCipherAes, key);
  for (int unit = 0; unit < 64; ++unit) {
    const Bytes vector = RandomBytes(16);
    const Bytes input = RandomBytes(4096);
    oracle.SetIv(vector);
    SetIv(engine.get(), vector);
    ASSERT_EQ(Encrypt(engine.get(), input), oracle.Run(input, true)) << "unit " << unit;
    oracle.SetIv(vector);
    SetIv(engine.get(), vector);
    ASSERT_EQ(Decrypt(engine.get(), input), oracle.Run(input, false)) << "unit " << unit;
  }
}
