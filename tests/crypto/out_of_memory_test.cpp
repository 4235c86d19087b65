// The cipher engine when the allocation routine refuses: the context is not made, the
// crypto engine's own out-of-memory code is returned and nothing stays allocated.
#include <gtest/gtest.h>

#include <vector>

#include "crypto/cipher.h"
#include "crypto/keys.h"
#include "system/memory.h"

namespace {

class CryptoOutOfMemory : public testing::Test {
 protected:
  void TearDown() override { SysSetAllocationFaults(nullptr); }

  void FailAllocation(uint64_t number)
  {
    faults_ = SysAllocationFaults{};
    faults_.failingAllocation = number;
    SysSetAllocationFaults(&faults_);
  }

  SysAllocationFaults faults_;
  std::vector<uint8_t> key_ = std::vector<uint8_t>(32, 0x5A);
};

}  // namespace

TEST_F(CryptoOutOfMemory, EveryAlgorithmsContextIsRefusedWithTheCryptoCode)
{
  const struct {
    CipherAlgorithm algorithm;
    uint32_t mode;
  } ciphers[] = {{kCipherAes, kCipherModeCbc},
                 {kCipherBlowfish, kCipherModeCbc},
                 {kCipherCast, kCipherModeCbc},
                 {kCipherRc4, kCipherModeStream}};
  for (const auto& cipher : ciphers) {
    FailAllocation(1);
    CipherContext* context = nullptr;
    EXPECT_EQ(CipherCreate(cipher.algorithm, cipher.mode, key_.data(), 16, &context), 0x40030005u)
        << cipher.algorithm;
    EXPECT_EQ(context, nullptr);
    EXPECT_EQ(faults_.allocationsSeen, 1u);
    EXPECT_EQ(faults_.blocksLive, 0u);
  }
}

TEST_F(CryptoOutOfMemory, DuplicateIsRefusedAndTheOriginalStaysUsable)
{
  CipherContext* original = nullptr;
  ASSERT_EQ(CipherCreate(kCipherAes, kCipherModeCbc, key_.data(), 32, &original), 0u);
  FailAllocation(1);
  CipherContext* copy = nullptr;
  EXPECT_EQ(CipherDuplicate(original, &copy), 0x40030005u);
  EXPECT_EQ(copy, nullptr);
  EXPECT_EQ(faults_.blocksLive, 0u);
  SysSetAllocationFaults(nullptr);
  std::vector<uint8_t> block(16, 1);
  EXPECT_EQ(CipherEncrypt(original, block.data(), block.data(), 16), 0u);
  EXPECT_EQ(CipherDestroy(original), 0u);
}

// Key derivation takes no memory from the allocation routine, so it has no out-of-memory
// result: a refusal planned for the very first allocation is never reached.
TEST_F(CryptoOutOfMemory, KeyDerivationAllocatesNothing)
{
  FailAllocation(1);
  const char16_t password[] = u"secret";
  const std::vector<uint8_t> salt(64, 7);
  std::vector<uint8_t> key(32);
  EXPECT_EQ(CryptoDeriveKey(password, 6, salt.data(), 64, key.data(), 32), 0u);
  EXPECT_EQ(faults_.allocationsSeen, 0u);
}
