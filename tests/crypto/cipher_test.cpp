#include "crypto/cipher.h"

#include <gtest/gtest.h>

#include "support/cipher_fixture.h"

namespace {

Bytes Pattern(size_t length, uint8_t start = 0)
{
  Bytes bytes(length);
  for (size_t i = 0; i < length; ++i) bytes[i] = static_cast<uint8_t>(start + i * 7);
  return bytes;
}

StatusCode Create(CipherAlgorithm algorithm, uint32_t mode, uint32_t keyLength)
{
  const Bytes key = Pattern(keyLength == 0 ? 1 : keyLength);
  CipherContext* context = nullptr;
  const StatusCode status = CipherCreate(algorithm, mode, key.data(), keyLength, &context);
  if (context != nullptr) {
    EXPECT_EQ(CipherDestroy(context), kStatusSuccess);
  }
  return status;
}

}  // namespace

TEST(CipherCheckKeyLength, AesAllowsOnly16And24And32)
{
  for (uint32_t length : {16u, 24u, 32u}) EXPECT_EQ(CipherCheckKeyLength(kCipherAes, length), 0u);
  for (uint32_t length : {15u, 20u, 31u, 33u, 40u, 0xFFFFFFFFu}) {
    EXPECT_EQ(CipherCheckKeyLength(kCipherAes, length), 0x40030008u) << length;
  }
}

TEST(CipherCheckKeyLength, AesLengthsBelow16WrapAroundAndFail)
{
  EXPECT_EQ(CipherCheckKeyLength(kCipherAes, 0), 0x40030008u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherAes, 8), 0x40030008u);
}

TEST(CipherCheckKeyLength, BlowfishAllows4To56)
{
  EXPECT_EQ(CipherCheckKeyLength(kCipherBlowfish, 3), 0x40030008u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherBlowfish, 4), 0u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherBlowfish, 56), 0u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherBlowfish, 57), 0x40030008u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherBlowfish, 0), 0x40030008u);
}

TEST(CipherCheckKeyLength, CastAllows5To16)
{
  EXPECT_EQ(CipherCheckKeyLength(kCipherCast, 4), 0x40030008u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherCast, 5), 0u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherCast, 16), 0u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherCast, 17), 0x40030008u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherCast, 0), 0x40030008u);
}

TEST(CipherCheckKeyLength, Rc4AllowsAnyLengthFromOne)
{
  EXPECT_EQ(CipherCheckKeyLength(kCipherRc4, 0), 0x40030008u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherRc4, 1), 0u);
  EXPECT_EQ(CipherCheckKeyLength(kCipherRc4, 1000), 0u);
}

TEST(CipherCheckKeyLength, UnknownAlgorithmIsInvalidParameter)
{
  EXPECT_EQ(CipherCheckKeyLength(4, 16), 0x40030002u);
  EXPECT_EQ(CipherCheckKeyLength(0xFFFFFFFFu, 16), 0x40030002u);
}

TEST(CipherCreate, ModeMustMatchTheAlgorithm)
{
  EXPECT_EQ(Create(kCipherAes, kCipherModeStream, 16), 0x40030002u);
  EXPECT_EQ(Create(kCipherBlowfish, kCipherModeStream, 16), 0x40030002u);
  EXPECT_EQ(Create(kCipherCast, kCipherModeStream, 16), 0x40030002u);
  EXPECT_EQ(Create(kCipherRc4, kCipherModeCbc, 16), 0x40030002u);
  EXPECT_EQ(Create(kCipherAes, 2, 16), 0x40030002u);
  EXPECT_EQ(Create(kCipherRc4, 2, 16), 0x40030002u);
}

TEST(CipherCreate, Rc4InStreamModeHasBlockSizeOne)
{
  const CipherPtr rc4 = MakeCipher(kCipherRc4, Pattern(5));
  CipherInfo info{};
  ASSERT_EQ(CipherQuery(rc4.get(), &info, sizeof info), 0u);
  EXPECT_EQ(info.algorithm, kCipherRc4);
  EXPECT_EQ(info.mode, kCipherModeStream);
  EXPECT_EQ(info.keyLength, 5u);
  EXPECT_EQ(info.blockSize, 1u);
}

TEST(CipherCreate, RefusedKeyLengthIsInvalidParameterNotBadKeyLength)
{
  EXPECT_EQ(Create(kCipherAes, kCipherModeCbc, 20), 0x40030002u);
  EXPECT_EQ(Create(kCipherBlowfish, kCipherModeCbc, 57), 0x40030002u);
  EXPECT_EQ(Create(kCipherCast, kCipherModeCbc, 4), 0x40030002u);
}

TEST(CipherCreate, MissingArgumentsAreRefused)
{
  const Bytes key = Pattern(16);
  CipherContext* context = nullptr;
  EXPECT_EQ(CipherCreate(kCipherAes, kCipherModeCbc, nullptr, 16, &context), 0x40030002u);
  EXPECT_EQ(CipherCreate(kCipherAes, kCipherModeCbc, key.data(), 0, &context), 0x40030002u);
  EXPECT_EQ(CipherCreate(kCipherAes, kCipherModeCbc, key.data(), 16, nullptr), 0x40030002u);
  EXPECT_EQ(CipherCreate(4, kCipherModeCbc, key.data(), 16, &context), 0x40030002u);
  EXPECT_EQ(context, nullptr);
}

TEST(CipherCreate, EveryAlgorithmReportsItsHeaderWords)
{
  struct Expected {
    CipherAlgorithm algorithm;
    uint32_t keyLength;
    uint32_t mode;
    uint32_t blockSize;
  };
  for (const Expected& e : {Expected{kCipherAes, 16, 1, 16}, Expected{kCipherAes, 24, 1, 16},
                            Expected{kCipherAes, 32, 1, 16}, Expected{kCipherBlowfish, 4, 1, 8},
                            Expected{kCipherBlowfish, 56, 1, 8}, Expected{kCipherCast, 5, 1, 8},
                            Expected{kCipherCast, 16, 1, 8}, Expected{kCipherRc4, 1000, 0, 1}}) {
    const CipherPtr context = MakeCipher(e.algorithm, Pattern(e.keyLength));
    CipherInfo info{};
    ASSERT_EQ(CipherQuery(context.get(), &info, sizeof info), 0u);
    EXPECT_EQ(info.algorithm, e.algorithm);
    EXPECT_EQ(info.mode, e.mode);
    EXPECT_EQ(info.keyLength, e.keyLength);
    EXPECT_EQ(info.blockSize, e.blockSize);
  }
}

TEST(CipherEncrypt, AesRefuses24BytesBlowfishTakesThem)
{
  const Bytes input = Pattern(24);
  Bytes output(24);
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(16));
  EXPECT_EQ(CipherEncrypt(aes.get(), input.data(), output.data(), 24), 0x40030002u);
  EXPECT_EQ(CipherDecrypt(aes.get(), input.data(), output.data(), 24), 0x40030002u);
  const CipherPtr blowfish = MakeCipher(kCipherBlowfish, Pattern(16));
  EXPECT_EQ(CipherEncrypt(blowfish.get(), input.data(), output.data(), 24), 0u);
  EXPECT_EQ(CipherDecrypt(blowfish.get(), input.data(), output.data(), 24), 0u);
}

TEST(CipherEncrypt, MissingArgumentsAndZeroLengthAreRefused)
{
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(32));
  Bytes buffer(16);
  EXPECT_EQ(CipherEncrypt(nullptr, buffer.data(), buffer.data(), 16), 0x40030002u);
  EXPECT_EQ(CipherEncrypt(aes.get(), nullptr, buffer.data(), 16), 0x40030002u);
  EXPECT_EQ(CipherEncrypt(aes.get(), buffer.data(), nullptr, 16), 0x40030002u);
  EXPECT_EQ(CipherEncrypt(aes.get(), buffer.data(), buffer.data(), 0), 0x40030002u);
  EXPECT_EQ(CipherDecrypt(nullptr, buffer.data(), buffer.data(), 16), 0x40030002u);
  EXPECT_EQ(CipherDecrypt(aes.get(), buffer.data(), buffer.data(), 0), 0x40030002u);
}

TEST(CipherSetIv, ShortVectorOnAesIsPaddedWithZeros)
{
  const Bytes key = Pattern(32);
  const Bytes plain = Pattern(64, 3);
  const Bytes shortVector = FromHex("0102030405060708");
  const Bytes paddedVector = FromHex("0102030405060708 0000000000000000");

  // Dirty the vector first, so the padding has to be written, not merely left over.
  const CipherPtr aes = MakeCipher(kCipherAes, key);
  SetIv(aes.get(), Pattern(16, 0x55));
  SetIv(aes.get(), shortVector);
  const Bytes viaShort = Encrypt(aes.get(), plain);

  SetIv(aes.get(), paddedVector);
  EXPECT_EQ(Encrypt(aes.get(), plain), viaShort);

  // And it is the zero padding specifically: a different tail gives different output.
  SetIv(aes.get(), FromHex("0102030405060708 0000000000000001"));
  EXPECT_NE(Encrypt(aes.get(), plain), viaShort);
}

TEST(CipherSetIv, LongerThanABlockIsRefused)
{
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(16));
  const Bytes vector = Pattern(17);
  EXPECT_EQ(CipherSetIv(aes.get(), vector.data(), 17), 0x40030002u);
  EXPECT_EQ(CipherSetIv(aes.get(), vector.data(), 16), 0u);
  const CipherPtr cast = MakeCipher(kCipherCast, Pattern(16));
  EXPECT_EQ(CipherSetIv(cast.get(), vector.data(), 9), 0x40030002u);
  EXPECT_EQ(CipherSetIv(cast.get(), vector.data(), 8), 0u);
}

TEST(CipherSetIv, Rc4AlwaysRefuses)
{
  const CipherPtr rc4 = MakeCipher(kCipherRc4, Pattern(16));
  const Bytes vector = Pattern(16);
  for (uint32_t length : {0u, 1u, 8u, 16u}) {
    EXPECT_EQ(CipherSetIv(rc4.get(), vector.data(), length), 0x40030002u) << length;
  }
}

TEST(CipherSetIv, MissingArgumentsAreRefused)
{
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(16));
  const Bytes vector = Pattern(16);
  EXPECT_EQ(CipherSetIv(nullptr, vector.data(), 16), 0x40030002u);
  EXPECT_EQ(CipherSetIv(aes.get(), nullptr, 16), 0x40030002u);
  EXPECT_EQ(CipherSetIv(aes.get(), vector.data(), 0), 0x40030002u);
}

TEST(CipherEncrypt, ConsecutiveCallsContinueOneChain)
{
  for (CipherAlgorithm algorithm : {kCipherAes, kCipherBlowfish, kCipherCast, kCipherRc4}) {
    const Bytes key = Pattern(16, 9);
    const Bytes plain = Pattern(32, 1);
    const CipherPtr once = MakeCipher(algorithm, key);
    const Bytes whole = Encrypt(once.get(), plain);

    const CipherPtr twice = MakeCipher(algorithm, key);
    Bytes split = Encrypt(twice.get(), Bytes(plain.begin(), plain.begin() + 16));
    const Bytes second = Encrypt(twice.get(), Bytes(plain.begin() + 16, plain.end()));
    split.insert(split.end(), second.begin(), second.end());
    EXPECT_EQ(split, whole) << "algorithm " << algorithm;
  }
}

TEST(CipherDecrypt, SharesTheChainingVectorWithEncryption)
{
  // After an encryption the vector holds the last cipher block, so a decryption on the
  // same context continues from it.
  for (CipherAlgorithm algorithm : {kCipherAes, kCipherBlowfish, kCipherCast}) {
    const Bytes key = Pattern(16, 4);
    const CipherPtr context = MakeCipher(algorithm, key);
    const Bytes first = Encrypt(context.get(), Pattern(32, 2));
    const Bytes plain = Pattern(32, 8);
    const Bytes cipher = Encrypt(context.get(), plain);

    const long block = algorithm == kCipherAes ? 16 : 8;
    SetIv(context.get(), Bytes(first.end() - block, first.end()));
    EXPECT_EQ(Decrypt(context.get(), cipher), plain) << "algorithm " << algorithm;
  }
}

TEST(CipherDecrypt, InvertsEncryptionForEveryAlgorithmAndKeyLength)
{
  struct Case {
    CipherAlgorithm algorithm;
    uint32_t keyLength;
  };
  for (const Case& c :
       {Case{kCipherAes, 16}, Case{kCipherAes, 24}, Case{kCipherAes, 32}, Case{kCipherBlowfish, 16},
        Case{kCipherBlowfish, 56}, Case{kCipherCast, 8}, Case{kCipherCast, 16}}) {
    const CipherPtr context = MakeCipher(c.algorithm, Pattern(c.keyLength, 5));
    const Bytes vector = Pattern(8, 77);
    const Bytes plain = Pattern(4096, 11);
    SetIv(context.get(), vector);
    const Bytes cipher = Encrypt(context.get(), plain);
    EXPECT_NE(cipher, plain);
    SetIv(context.get(), vector);
    EXPECT_EQ(Decrypt(context.get(), cipher), plain) << c.algorithm << "/" << c.keyLength;
  }
}

TEST(CipherEncrypt, InPlaceGivesTheSameBytesAsSeparateBuffers)
{
  for (CipherAlgorithm algorithm : {kCipherAes, kCipherBlowfish, kCipherCast, kCipherRc4}) {
    const Bytes key = Pattern(16, 6);
    const Bytes plain = Pattern(256, 1);
    const CipherPtr separate = MakeCipher(algorithm, key);
    const Bytes expected = Encrypt(separate.get(), plain);
    const CipherPtr inPlace = MakeCipher(algorithm, key);
    Bytes buffer = plain;
    ASSERT_EQ(CipherEncrypt(inPlace.get(), buffer.data(), buffer.data(), 256), 0u);
    EXPECT_EQ(buffer, expected);
    if (algorithm == kCipherRc4) continue;
    SetIv(inPlace.get(), Bytes(algorithm == kCipherAes ? 16 : 8, 0));
    ASSERT_EQ(CipherDecrypt(inPlace.get(), buffer.data(), buffer.data(), 256), 0u);
    EXPECT_EQ(buffer, plain) << "algorithm " << algorithm;
  }
}

TEST(CipherQuery, BufferBelow16BytesIsRefused)
{
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(16));
  CipherInfo info{};
  EXPECT_EQ(CipherQuery(aes.get(), &info, 15), 0x40030002u);
  EXPECT_EQ(CipherQuery(aes.get(), nullptr, 16), 0x40030002u);
  EXPECT_EQ(CipherQuery(nullptr, &info, 16), 0x40030002u);
  EXPECT_EQ(CipherQuery(aes.get(), &info, 16), 0u);
}

TEST(CipherDestroy, MissingContextIsRefused)
{
  EXPECT_EQ(CipherDestroy(nullptr), 0x40030002u);
}

TEST(CipherContextValidity, ACorruptedHeaderIsRefusedEverywhere)
{
  // The context is opaque, but its first four words are the documented header; a context
  // whose header no longer passes the validity rules is a bad parameter to every call.
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(16));
  auto* header = reinterpret_cast<uint32_t*>(aes.get());
  Bytes buffer(16);
  CipherInfo info{};
  const uint32_t saved[4] = {header[0], header[1], header[2], header[3]};
  for (int field = 0; field < 4; ++field) {
    header[field] = field == 3 ? 0u : 0x80000000u;  // blockSize 0, or a "negative" value
    EXPECT_EQ(CipherEncrypt(aes.get(), buffer.data(), buffer.data(), 16), 0x40030002u) << field;
    EXPECT_EQ(CipherDecrypt(aes.get(), buffer.data(), buffer.data(), 16), 0x40030002u) << field;
    EXPECT_EQ(CipherSetIv(aes.get(), buffer.data(), 16), 0x40030002u) << field;
    EXPECT_EQ(CipherQuery(aes.get(), &info, 16), 0x40030002u) << field;
    EXPECT_EQ(CipherDestroy(aes.get()), 0x40030002u) << field;  // nothing released
    header[field] = saved[field];
  }
  // A key length that no longer suits the algorithm makes the context invalid too.
  header[2] = 20;
  EXPECT_EQ(CipherQuery(aes.get(), &info, 16), 0x40030002u);
  header[2] = saved[2];
  EXPECT_EQ(CipherQuery(aes.get(), &info, 16), 0u);
}

TEST(CipherDuplicate, CopyContinuesTheChainAndKeyStreamIndependently)
{
  const Bytes plain = Pattern(64, 3);
  for (const CipherAlgorithm algorithm : {kCipherAes, kCipherBlowfish, kCipherCast, kCipherRc4}) {
    const CipherPtr original = MakeCipher(algorithm, Pattern(16, 9));
    if (algorithm != kCipherRc4) SetIv(original.get(), Pattern(8, 1));
    Encrypt(original.get(), plain);  // moves the chaining vector or the key stream on
    CipherContext* raw = nullptr;
    ASSERT_EQ(CipherDuplicate(original.get(), &raw), 0u) << algorithm;
    const CipherPtr copy(raw);
    // Both go on from the same state and give the same bytes; then each has its own.
    const Bytes fromOriginal = Encrypt(original.get(), plain);
    EXPECT_EQ(Encrypt(copy.get(), plain), fromOriginal) << algorithm;
    Encrypt(original.get(), plain);  // only the original moves on
    const Bytes again = Encrypt(original.get(), plain);
    EXPECT_NE(Encrypt(copy.get(), plain), again) << algorithm;
  }
}

TEST(CipherDuplicate, CopyOutlivesTheOriginal)
{
  CipherPtr original = MakeCipher(kCipherAes, Pattern(32));
  SetIv(original.get(), Pattern(16));
  CipherContext* raw = nullptr;
  ASSERT_EQ(CipherDuplicate(original.get(), &raw), 0u);
  const CipherPtr copy(raw);
  const Bytes expected = Encrypt(original.get(), Pattern(32, 5));
  SetIv(original.get(), Pattern(16));
  original.reset();
  SetIv(copy.get(), Pattern(16));
  EXPECT_EQ(Encrypt(copy.get(), Pattern(32, 5)), expected);
  SetIv(copy.get(), Pattern(16));
  EXPECT_EQ(Decrypt(copy.get(), expected), Pattern(32, 5));
}

TEST(CipherDuplicate, MissingOrInvalidContextIsRefused)
{
  const CipherPtr aes = MakeCipher(kCipherAes, Pattern(16));
  CipherContext* copy = nullptr;
  EXPECT_EQ(CipherDuplicate(nullptr, &copy), 0x40030002u);
  EXPECT_EQ(CipherDuplicate(aes.get(), nullptr), 0x40030002u);
  auto* header = reinterpret_cast<uint32_t*>(aes.get());
  header[3] = 0;  // block size 0: not a valid context
  EXPECT_EQ(CipherDuplicate(aes.get(), &copy), 0x40030002u);
  EXPECT_EQ(copy, nullptr);
  header[3] = 16;
}
