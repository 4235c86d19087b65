// A short demonstration of the crypto engine: derive an image's header key from a
// password, generate a data key, and encipher one 4096-byte image unit with every
// algorithm, showing that it decrypts back.
#include <cstdio>
#include <cstring>
#include <vector>

#include "crypto/cipher.h"
#include "crypto/keys.h"
#include "system/clock.h"

namespace {

void PrintHex(const char* label, const uint8_t* bytes, size_t length)
{
  std::printf("%-34s", label);
  for (size_t i = 0; i < length; ++i) std::printf("%02x", bytes[i]);
  std::printf("\n");
}

struct Choice {
  const char* name;
  CipherAlgorithm algorithm;
  uint32_t keyLength;
};

bool RoundTrip(const Choice& choice, const uint8_t* key, const std::vector<uint8_t>& unit)
{
  const bool stream = choice.algorithm == kCipherRc4;
  CipherContext* encrypting = nullptr;
  CipherContext* decrypting = nullptr;
  const uint32_t mode = stream ? kCipherModeStream : kCipherModeCbc;
  StatusCode status = CipherCreate(choice.algorithm, mode, key, choice.keyLength, &encrypting);
  if (!IsFailure(status))
    status = CipherCreate(choice.algorithm, mode, key, choice.keyLength, &decrypting);

  // Every unit is chained on its own, from a vector made of its offset in the image.
  const uint8_t unitVector[8] = {0x00, 0x10};
  std::vector<uint8_t> cipher(unit.size());
  std::vector<uint8_t> plain(unit.size());
  const auto length = static_cast<uint32_t>(unit.size());
  if (!IsFailure(status) && !stream)
    status = CipherSetIv(encrypting, unitVector, sizeof unitVector);
  if (!IsFailure(status) && !stream)
    status = CipherSetIv(decrypting, unitVector, sizeof unitVector);
  if (!IsFailure(status)) status = CipherEncrypt(encrypting, unit.data(), cipher.data(), length);
  if (!IsFailure(status)) status = CipherDecrypt(decrypting, cipher.data(), plain.data(), length);
  if (encrypting != nullptr) CipherDestroy(encrypting);
  if (decrypting != nullptr) CipherDestroy(decrypting);
  if (IsFailure(status)) {
    std::printf("%-14s failed: error code %X\n", choice.name, status);
    return false;
  }
  const bool same = plain == unit;
  std::printf("%-14s unit starts %02x%02x%02x%02x%02x%02x%02x%02x..., decrypts back: %s\n",
              choice.name, cipher[0], cipher[1], cipher[2], cipher[3], cipher[4], cipher[5],
              cipher[6], cipher[7], same ? "yes" : "NO");
  return same;
}

}  // namespace

int main()
{
  const uint64_t counter = SysPerformanceCounter();
  CryptoSeedRandom(reinterpret_cast<const uint8_t*>(&counter), sizeof counter);

  static const char16_t kPassword[] = u"correct horse battery staple";
  uint8_t identity[64];
  uint8_t headerKey[56];
  uint8_t dataKey[56];
  if (IsFailure(CryptoRandomBytes(identity, sizeof identity)) ||
      IsFailure(CryptoDeriveKey(kPassword, sizeof kPassword / 2 - 1, identity, sizeof identity,
                                headerKey, sizeof headerKey)) ||
      IsFailure(CryptoGenerateKey(dataKey, sizeof dataKey))) {
    std::printf("key material could not be made\n");
    return 1;
  }
  std::printf("Cryptelle crypto engine\n\n");
  PrintHex("identity block (salt), first 16:", identity, 16);
  PrintHex("header key from the password:", headerKey, 32);
  PrintHex("generated data key:", dataKey, 32);
  std::printf("AES key of 20 bytes is refused:   error code %X\n\n",
              CipherCheckKeyLength(kCipherAes, 20));

  std::vector<uint8_t> unit(4096);
  std::memcpy(unit.data(), "A unit of image data.", 21);
  bool allGood = true;
  for (const Choice& choice :
       {Choice{"AES-128", kCipherAes, 16}, Choice{"AES-192", kCipherAes, 24},
        Choice{"AES-256", kCipherAes, 32}, Choice{"Blowfish-448", kCipherBlowfish, 56},
        Choice{"CAST-128", kCipherCast, 16}, Choice{"RC4-128", kCipherRc4, 16}}) {
    allGood = RoundTrip(choice, dataKey, unit) && allGood;
  }
  return allGood ? 0 : 1;
}
