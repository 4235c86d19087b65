#include "cipher_workloads.h"

#include <openssl/aes.h>
#include <openssl/blowfish.h>
#include <openssl/cast.h>
#include <openssl/evp.h>
#include <openssl/rc4.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

#include "crypto/cipher.h"
#include "crypto/keys.h"

namespace {

constexpr size_t kUnit = 4096;
constexpr size_t kRunBytes = size_t{1} << 20;
constexpr size_t kUnits = kRunBytes / kUnit;

// The chaining vector of a unit: its number, little-endian, zero-padded.
void UnitVector(size_t unit, uint8_t* vector, size_t length)
{
  std::memset(vector, 0, length);
  for (size_t i = 0; i < sizeof unit && i < length; ++i)
    vector[i] = static_cast<uint8_t>(unit >> (8 * i));
}

// Buffers and keys shared by one workload's two sides.
struct Buffers {
  std::vector<uint8_t> input = std::vector<uint8_t>(kRunBytes, 0x5A);
  std::vector<uint8_t> output = std::vector<uint8_t>(kRunBytes);
  std::vector<uint8_t> key;
  explicit Buffers(size_t keyLength) : key(keyLength)
  {
    for (size_t i = 0; i < keyLength; ++i) key[i] = static_cast<uint8_t>(i * 31 + 7);
  }
};

std::function<void()> EngineUnits(CipherAlgorithm algorithm, size_t keyLength, bool encrypt)
{
  auto buffers = std::make_shared<Buffers>(keyLength);
  CipherContext* raw = nullptr;
  CipherCreate(algorithm, algorithm == kCipherRc4 ? kCipherModeStream : kCipherModeCbc,
               buffers->key.data(), static_cast<uint32_t>(keyLength), &raw);
  std::shared_ptr<CipherContext> context(raw, CipherDestroy);
  const uint32_t block = algorithm == kCipherAes ? 16 : 8;
  return [buffers, context, algorithm, block, encrypt] {
    for (size_t unit = 0; unit < kUnits; ++unit) {
      uint8_t vector[16];
      if (algorithm != kCipherRc4) {
        UnitVector(unit, vector, block);
        CipherSetIv(context.get(), vector, block);
      }
      const uint8_t* in = buffers->input.data() + unit * kUnit;
      uint8_t* out = buffers->output.data() + unit * kUnit;
      if (encrypt) {
        CipherEncrypt(context.get(), in, out, kUnit);
      } else {
        CipherDecrypt(context.get(), in, out, kUnit);
      }
    }
  };
}

// The image's way of enciphering a run: its units side by side in one call.
std::function<void()> EngineUnitsSideBySide(size_t keyLength)
{
  auto buffers = std::make_shared<Buffers>(keyLength);
  CipherContext* raw = nullptr;
  CipherCreate(kCipherAes, kCipherModeCbc, buffers->key.data(), static_cast<uint32_t>(keyLength),
               &raw);
  std::shared_ptr<CipherContext> context(raw, CipherDestroy);
  auto vectors = std::make_shared<std::vector<uint8_t>>(kUnits * kCipherVectorStride);
  for (size_t unit = 0; unit < kUnits; ++unit) {
    UnitVector(unit, vectors->data() + unit * kCipherVectorStride, 16);
  }
  return [buffers, context, vectors] {
    CipherEncryptUnits(context.get(), vectors->data(), 16, buffers->input.data(),
                       buffers->output.data(), kUnit, kUnits);
  };
}

const EVP_CIPHER* EvpAes(size_t keyLength)
{
  return keyLength == 16   ? EVP_aes_128_cbc()
         : keyLength == 24 ? EVP_aes_192_cbc()
                           : EVP_aes_256_cbc();
}

std::function<void()> EvpAesUnits(size_t keyLength, bool encrypt)
{
  auto buffers = std::make_shared<Buffers>(keyLength);
  std::shared_ptr<EVP_CIPHER_CTX> context(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
  EVP_CipherInit_ex(context.get(), EvpAes(keyLength), nullptr, buffers->key.data(), nullptr,
                    encrypt);
  EVP_CIPHER_CTX_set_padding(context.get(), 0);
  return [buffers, context] {
    for (size_t unit = 0; unit < kUnits; ++unit) {
      uint8_t vector[16];
      UnitVector(unit, vector, sizeof vector);
      EVP_CipherInit_ex(context.get(), nullptr, nullptr, nullptr, vector, -1);
      int written = 0;
      EVP_CipherUpdate(context.get(), buffers->output.data() + unit * kUnit, &written,
                       buffers->input.data() + unit * kUnit, kUnit);
    }
  };
}

// The low-level block-cipher CBC calls share one shape: (in, out, length, key, vector, enc).
template <typename Key, size_t kBlock, typename SetKey, typename Cbc>
std::function<void()> LowLevelUnits(size_t keyLength, bool encrypt, SetKey setKey, Cbc cbc)
{
  auto buffers = std::make_shared<Buffers>(keyLength);
  auto key = std::make_shared<Key>();
  setKey(key.get(), buffers->key);
  return [buffers, key, encrypt, cbc] {
    for (size_t unit = 0; unit < kUnits; ++unit) {
      uint8_t vector[kBlock];
      UnitVector(unit, vector, kBlock);
      cbc(buffers->input.data() + unit * kUnit, buffers->output.data() + unit * kUnit, kUnit,
          key.get(), vector, encrypt ? 1 : 0);
    }
  };
}

std::function<void()> LowLevelAesUnits(size_t keyLength, bool encrypt)
{
  const int bits = static_cast<int>(keyLength * 8);
  return LowLevelUnits<AES_KEY, 16>(
      keyLength, encrypt,
      [bits, encrypt](AES_KEY* key, const std::vector<uint8_t>& bytes) {
        if (encrypt) {
          AES_set_encrypt_key(bytes.data(), bits, key);
        } else {
          AES_set_decrypt_key(bytes.data(), bits, key);
        }
      },
      AES_cbc_encrypt);
}

std::function<void()> LowLevelBlowfishUnits(size_t keyLength, bool encrypt)
{
  return LowLevelUnits<BF_KEY, 8>(
      keyLength, encrypt,
      [](BF_KEY* key, const std::vector<uint8_t>& bytes) {
        BF_set_key(key, static_cast<int>(bytes.size()), bytes.data());
      },
      [](const uint8_t* in, uint8_t* out, size_t length, BF_KEY* key, uint8_t* vector, int enc) {
        BF_cbc_encrypt(in, out, static_cast<long>(length), key, vector, enc);
      });
}

std::function<void()> LowLevelCastUnits(size_t keyLength, bool encrypt)
{
  return LowLevelUnits<CAST_KEY, 8>(
      keyLength, encrypt,
      [](CAST_KEY* key, const std::vector<uint8_t>& bytes) {
        CAST_set_key(key, static_cast<int>(bytes.size()), bytes.data());
      },
      [](const uint8_t* in, uint8_t* out, size_t length, CAST_KEY* key, uint8_t* vector, int enc) {
        CAST_cbc_encrypt(in, out, static_cast<long>(length), key, vector, enc);
      });
}

std::function<void()> LowLevelRc4Units(size_t keyLength)
{
  auto buffers = std::make_shared<Buffers>(keyLength);
  auto key = std::make_shared<RC4_KEY>();
  RC4_set_key(key.get(), static_cast<int>(keyLength), buffers->key.data());
  return [buffers, key] {
    for (size_t unit = 0; unit < kUnits; ++unit) {
      RC4(key.get(), kUnit, buffers->input.data() + unit * kUnit,
          buffers->output.data() + unit * kUnit);
    }
  };
}

std::vector<Workload> KeyDerivationWorkloads()
{
  static const char16_t kPassword[] = u"correct horse battery staple";
  constexpr uint32_t kPasswordUnits = sizeof kPassword / 2 - 1;
  auto salt = std::make_shared<std::vector<uint8_t>>(64, 0x11);
  auto key = std::make_shared<std::vector<uint8_t>>(32);
  return {{"PBKDF2-HMAC-SHA1 2048 iterations, 32 bytes", "OpenSSL PKCS5_PBKDF2_HMAC_SHA1", 0,
           [salt, key] {
             CryptoDeriveKey(kPassword, kPasswordUnits, salt->data(), 64, key->data(), 32);
           },
           [salt, key] {
             PKCS5_PBKDF2_HMAC_SHA1(reinterpret_cast<const char*>(kPassword), kPasswordUnits * 2,
                                    salt->data(), 64, kKeyDerivationIterations, 32, key->data());
           }}};
}

}  // namespace

std::vector<Workload> MakeCipherWorkloads()
{
  std::vector<Workload> workloads;
  for (bool encrypt : {true, false}) {
    const std::string direction = encrypt ? " encrypt" : " decrypt";
    for (size_t keyLength : {size_t{16}, size_t{24}, size_t{32}}) {
      const std::string name = "AES-" + std::to_string(keyLength * 8) + direction;
      workloads.push_back({name, "OpenSSL EVP", kRunBytes,
                           EngineUnits(kCipherAes, keyLength, encrypt),
                           EvpAesUnits(keyLength, encrypt)});
      workloads.push_back({name, "OpenSSL AES_cbc_encrypt", kRunBytes,
                           EngineUnits(kCipherAes, keyLength, encrypt),
                           LowLevelAesUnits(keyLength, encrypt)});
    }
    for (size_t keyLength : {size_t{16}, size_t{56}}) {
      workloads.push_back({"Blowfish-" + std::to_string(keyLength * 8) + direction,
                           "OpenSSL BF_cbc_encrypt", kRunBytes,
                           EngineUnits(kCipherBlowfish, keyLength, encrypt),
                           LowLevelBlowfishUnits(keyLength, encrypt)});
    }
    for (size_t keyLength : {size_t{8}, size_t{16}}) {
      workloads.push_back({"CAST-" + std::to_string(keyLength * 8) + direction,
                           "OpenSSL CAST_cbc_encrypt", kRunBytes,
                           EngineUnits(kCipherCast, keyLength, encrypt),
                           LowLevelCastUnits(keyLength, encrypt)});
    }
  }
  workloads.push_back({"AES-256 encrypt, units side by side", "OpenSSL EVP, unit after unit",
                       kRunBytes, EngineUnitsSideBySide(32), EvpAesUnits(32, true)});
  workloads.push_back({"RC4-128 stream", "OpenSSL RC4", kRunBytes,
                       EngineUnits(kCipherRc4, 16, true), LowLevelRc4Units(16)});
  for (Workload& w : KeyDerivationWorkloads()) workloads.push_back(std::move(w));
  return workloads;
}

void PrintRatioTable(const std::vector<Measurement>& measurements)
{
  std::printf("\n%-44s %12s %12s %-32s %7s\n", "workload", "Cryptelle", "reference", "reference is",
              "ratio");
  for (const Measurement& m : measurements) {
    const Workload& w = *m.workload;
    // The ratio is ours / reference in throughput, so above 1 means faster than OpenSSL.
    const double ratio = m.referenceSeconds / m.oursSeconds;
    if (w.bytesPerRun == 0) {
      std::printf("%-44s %9.3f ms %9.3f ms %-32s %7.3f\n", w.name.c_str(), m.oursSeconds * 1e3,
                  m.referenceSeconds * 1e3, w.referenceName.c_str(), ratio);
    } else {
      const double mb = static_cast<double>(w.bytesPerRun) / 1e6;
      std::printf("%-44s %7.0f MB/s %7.0f MB/s %-32s %7.3f\n", w.name.c_str(), mb / m.oursSeconds,
                  mb / m.referenceSeconds, w.referenceName.c_str(), ratio);
    }
  }
}
