// Known-answer vectors from published sources, run through the cipher engine. Every
// vector's name appears in the test name, so the test output lists what was checked.
#include <gtest/gtest.h>

#include <string>

#include "support/cipher_fixture.h"

namespace {

struct KnownAnswer {
  std::string name;
  CipherAlgorithm algorithm;
  const char* key;
  const char* vector;  // empty: the all-zero starting vector (a single block is then ECB)
  const char* plain;
  const char* cipher;
};

const KnownAnswer kVectors[] = {
    // NIST SP 800-38A, appendix F.2 (CBC): F.2.1/F.2.2, F.2.3/F.2.4, F.2.5/F.2.6.
    {"NistSp80038a_F2_1_CbcAes128", kCipherAes, "2b7e151628aed2a6abf7158809cf4f3c",
     "000102030405060708090a0b0c0d0e0f",
     "6bc1bee22e409f96e93d7e117393172a ae2d8a571e03ac9c9eb76fac45af8e51"
     "30c81c46a35ce411e5fbc1191a0a52ef f69f2445df4f9b17ad2b417be66c3710",
     "7649abac8119b246cee98e9b12e9197d 5086cb9b507219ee95db113a917678b2"
     "73bed6b8e3c1743b7116e69e22229516 3ff1caa1681fac09120eca307586e1a7"},
    {"NistSp80038a_F2_3_CbcAes192", kCipherAes, "8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b",
     "000102030405060708090a0b0c0d0e0f",
     "6bc1bee22e409f96e93d7e117393172a ae2d8a571e03ac9c9eb76fac45af8e51"
     "30c81c46a35ce411e5fbc1191a0a52ef f69f2445df4f9b17ad2b417be66c3710",
     "4f021db243bc633d7178183a9fa071e8 b4d9ada9ad7dedf4e5e738763f69145a"
     "571b242012fb7ae07fa9baac3df102e0 08b0e27988598881d920a9e64f5615cd"},
    {"NistSp80038a_F2_5_CbcAes256", kCipherAes,
     "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4",
     "000102030405060708090a0b0c0d0e0f",
     "6bc1bee22e409f96e93d7e117393172a ae2d8a571e03ac9c9eb76fac45af8e51"
     "30c81c46a35ce411e5fbc1191a0a52ef f69f2445df4f9b17ad2b417be66c3710",
     "f58c4c04d6e5f1ba779eabfb5f7bfbd6 9cfc4e967edb808d679f777bc6702c7d"
     "39f23369a9d9bacfa530e26304231461 b2eb05e2c39be9fcda6c19078c6a9d1b"},

    // Blowfish: Eric Young's published test vectors (single blocks, then his CBC vector).
    {"BlowfishEayEcb_KeyZero", kCipherBlowfish, "0000000000000000", "", "0000000000000000",
     "4ef997456198dd78"},
    {"BlowfishEayEcb_KeyOnes", kCipherBlowfish, "ffffffffffffffff", "", "ffffffffffffffff",
     "51866fd5b85ecb8a"},
    {"BlowfishEayEcb_Key3000", kCipherBlowfish, "3000000000000000", "", "1000000000000001",
     "7d856f9a613063f2"},
    {"BlowfishEayEcb_Key1111", kCipherBlowfish, "1111111111111111", "", "1111111111111111",
     "2466dd878b963c9d"},
    {"BlowfishEayEcb_Key0123", kCipherBlowfish, "0123456789abcdef", "", "1111111111111111",
     "61f9c3802281b096"},
    {"BlowfishEayEcb_KeyFedc", kCipherBlowfish, "fedcba9876543210", "", "0123456789abcdef",
     "0aceab0fc6a0a28d"},
    {"BlowfishEayCbc_NowIsTheTime", kCipherBlowfish, "0123456789abcdeff0e1d2c3b4a59687",
     "fedcba9876543210", "37363534333231204e6f77206973207468652074696d6520666f722000000000",
     "6b77b4d63006dee605b156e27403979358deb9e7154616d959f1652bd5ff92cc"},

    // CAST-128: RFC 2144, appendix B.1 (single-plaintext key-ciphertext pairs).
    {"Rfc2144_B1_Cast128Key128", kCipherCast, "0123456712345678234567893456789a", "",
     "0123456789abcdef", "238b4fe5847e44b2"},
    {"Rfc2144_B1_Cast128Key80", kCipherCast, "01234567123456782345", "", "0123456789abcdef",
     "eb6a711a2c02271b"},
    {"Rfc2144_B1_Cast128Key40", kCipherCast, "0123456712", "", "0123456789abcdef",
     "7ac816d16e9b302e"},

    // RC4: RFC 6229, key streams at offsets 0 and 16 (the cipher of zero bytes).
    {"Rfc6229_Rc4Key40", kCipherRc4, "0102030405", "",
     "00000000000000000000000000000000 00000000000000000000000000000000",
     "b2396305f03dc027ccc3524a0a1118a8 6982944f18fc82d589c403a47a0d0919"},
    {"Rfc6229_Rc4Key128", kCipherRc4, "0102030405060708090a0b0c0d0e0f10", "",
     "00000000000000000000000000000000 00000000000000000000000000000000",
     "9ac7cc9a609d1ef7b2932899cde41b97 5248c4959014126a6e8a84f11d1a9e1c"},
};

// Names the vector when gtest prints a test's parameter.
void PrintTo(const KnownAnswer& vector, std::ostream* out)
{
  *out << vector.name;
}

class CipherKnownAnswer : public testing::TestWithParam<KnownAnswer> {};

void LoadVector(CipherContext* context, const KnownAnswer& v)
{
  if (*v.vector != '\0') SetIv(context, FromHex(v.vector));
}

}  // namespace

TEST_P(CipherKnownAnswer, Encrypts)
{
  const KnownAnswer& v = GetParam();
  const CipherPtr context = MakeCipher(v.algorithm, FromHex(v.key));
  LoadVector(context.get(), v);
  EXPECT_EQ(ToHex(Encrypt(context.get(), FromHex(v.plain))), ToHex(FromHex(v.cipher)));
}

TEST_P(CipherKnownAnswer, Decrypts)
{
  const KnownAnswer& v = GetParam();
  const CipherPtr context = MakeCipher(v.algorithm, FromHex(v.key));
  LoadVector(context.get(), v);
  EXPECT_EQ(ToHex(Decrypt(context.get(), FromHex(v.cipher))), ToHex(FromHex(v.plain)));
}

INSTANTIATE_TEST_SUITE_P(Published, CipherKnownAnswer, testing::ValuesIn(kVectors),
                         [](const testing::TestParamInfo<KnownAnswer>& vector) {
                           return vector.param.name;
                         });

TEST(CipherKnownAnswer, Rfc6229Rc4KeyStreamContinuesAcrossCalls)
{
  // RFC 6229, 40-bit key, offsets 240 and 256: reached by encrypting in several calls.
  const CipherPtr rc4 = MakeCipher(kCipherRc4, FromHex("0102030405"));
  Encrypt(rc4.get(), Bytes(100));
  Encrypt(rc4.get(), Bytes(140));
  EXPECT_EQ(ToHex(Encrypt(rc4.get(), Bytes(32))),
            "28cb1132c96ce286421dcaadb8b69eae1cfcf62b03eddb641d77dfcf7f8d8c93");
}
