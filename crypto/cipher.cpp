// AES runs through OpenSSL's EVP interface (which uses the processor's AES instructions);
// Blowfish, CAST and RC4 run on OpenSSL's low-level functions. Both give the same bytes:
// the context keeps its own chaining vector and hands it to every call. Independent units
// of AES are chained side by side: sixteen at a time through the vector AES instructions
// where the processor has them (crypto/aes_wide_units.h), the rest through EVP's
// single-block mode.
#include "crypto/cipher.h"

#include <openssl/blowfish.h>
#include <openssl/cast.h>
#include <openssl/evp.h>
#include <openssl/rc4.h>

#include <algorithm>
#include <cstring>

#include "crypto/aes_wide_units.h"
#include "system/memory.h"

namespace {

struct AesState {
  EVP_CIPHER_CTX* encrypt;  // holds the encryption key schedule
  EVP_CIPHER_CTX* decrypt;  // holds the decryption key schedule
  EVP_CIPHER_CTX* blocks;   // the encryption key schedule on single blocks, for side-by-side units
  AesRoundKeys wideKeys;    // for sixteen units side by side; rounds 0 without the instructions
  uint8_t vector[16];
};

struct BlowfishState {
  BF_KEY schedule;
  uint8_t vector[BF_BLOCK];
};

struct CastState {
  CAST_KEY schedule;
  uint8_t vector[CAST_BLOCK];
};

}  // namespace

struct CipherContext {
  uint32_t algorithm;
  uint32_t mode;
  uint32_t keyLength;
  uint32_t blockSize;
  union {
    AesState aes;
    BlowfishState blowfish;
    CastState cast;
    RC4_KEY rc4;
  } state;
};

namespace {

constexpr uint32_t kAesBlockSize = 16;

// The primitives take lengths as int or long (32 bits on Windows): longer requests go
// through in pieces of whole blocks, each continuing the chain of the one before.
constexpr uint32_t kMaxPiece = 1u << 30;

bool IsValid(const CipherContext* context)
{
  return context->algorithm <= kCipherRc4 && context->mode <= kCipherModeCbc &&
         context->blockSize != 0 &&
         CipherCheckKeyLength(context->algorithm, context->keyLength) == kStatusSuccess;
}

bool IsValidRequest(const CipherContext* context, const uint8_t* input, const uint8_t* output,
                    uint32_t length)
{
  return context != nullptr && input != nullptr && output != nullptr && length != 0 &&
         IsValid(context) && length % context->blockSize == 0;
}

const EVP_CIPHER* AesCbcCipher(uint32_t keyLength)
{
  switch (keyLength) {
    case 16: return EVP_aes_128_cbc();
    case 24: return EVP_aes_192_cbc();
    default: return EVP_aes_256_cbc();
  }
}

const EVP_CIPHER* AesBlockCipher(uint32_t keyLength)
{
  switch (keyLength) {
    case 16: return EVP_aes_128_ecb();
    case 24: return EVP_aes_192_ecb();
    default: return EVP_aes_256_ecb();
  }
}

EVP_CIPHER_CTX* NewAesSchedule(const EVP_CIPHER* cipher, const uint8_t* key, int direction)
{
  EVP_CIPHER_CTX* schedule = EVP_CIPHER_CTX_new();
  if (schedule == nullptr) return nullptr;
  if (EVP_CipherInit_ex(schedule, cipher, nullptr, key, nullptr, direction) != 1 ||
      EVP_CIPHER_CTX_set_padding(schedule, 0) != 1) {
    EVP_CIPHER_CTX_free(schedule);
    return nullptr;
  }
  return schedule;
}

// OpenSSL allocated the schedules itself; it wipes them as it frees them.
void FreeAesSchedules(AesState& aes)
{
  EVP_CIPHER_CTX_free(aes.encrypt);
  EVP_CIPHER_CTX_free(aes.decrypt);
  EVP_CIPHER_CTX_free(aes.blocks);
}

StatusCode CreateAes(CipherContext* context, const uint8_t* key, uint32_t keyLength)
{
  AesState& aes = context->state.aes;
  aes.encrypt = NewAesSchedule(AesCbcCipher(keyLength), key, 1);
  aes.decrypt = NewAesSchedule(AesCbcCipher(keyLength), key, 0);
  aes.blocks = NewAesSchedule(AesBlockCipher(keyLength), key, 1);
  if (aes.encrypt == nullptr || aes.decrypt == nullptr || aes.blocks == nullptr) {
    FreeAesSchedules(aes);
    return kCryptoOutOfMemory;
  }
  static const bool wideUnits = AesWideUnitsAvailable();
  if (wideUnits) ExpandAesKey(key, keyLength, &aes.wideKeys);
  return kStatusSuccess;
}

// The units enciphered side by side: enough independent chains to keep the processor's AES
// pipeline full (eight blocks per call is what OpenSSL's AES-NI code interleaves).
constexpr uint32_t kAesLanes = 8;

// CBC over up to kAesLanes units at once: step b takes block b of every unit, adds each
// unit's chain to it and enciphers all of them in one call on single blocks, so the chains
// advance together instead of one after the other.
void EncryptAesUnits(AesState& aes, const uint8_t* vectors, uint32_t vectorLength,
                     const uint8_t* input, uint8_t* output, uint32_t unitLength, uint32_t count)
{
  // Each chain as two 64-bit words, so that adding a block to it is two word operations.
  uint64_t chains[kAesLanes * 2];
  auto* chainBytes = reinterpret_cast<uint8_t*>(chains);
  for (uint32_t first = 0; first < count; first += kAesLanes) {
    const uint32_t lanes = std::min(kAesLanes, count - first);
    for (uint32_t lane = 0; lane < lanes; ++lane) {
      uint8_t* chain = chainBytes + lane * kAesBlockSize;
      std::memcpy(chain, vectors + size_t{first + lane} * kCipherVectorStride, vectorLength);
      std::memset(chain + vectorLength, 0, kAesBlockSize - vectorLength);
    }
    const uint8_t* unitsIn = input + size_t{first} * unitLength;
    uint8_t* unitsOut = output + size_t{first} * unitLength;
    for (uint32_t block = 0; block < unitLength; block += kAesBlockSize) {
      for (uint32_t lane = 0; lane < lanes; ++lane) {
        uint64_t plain[2];
        std::memcpy(plain, unitsIn + size_t{lane} * unitLength + block, kAesBlockSize);
        chains[2 * lane] ^= plain[0];
        chains[2 * lane + 1] ^= plain[1];
      }
      int written = 0;
      EVP_EncryptUpdate(aes.blocks, chainBytes, &written, chainBytes,
                        static_cast<int>(lanes * kAesBlockSize));
      for (uint32_t lane = 0; lane < lanes; ++lane) {
        std::memcpy(unitsOut + size_t{lane} * unitLength + block, chainBytes + lane * kAesBlockSize,
                    kAesBlockSize);
      }
    }
    std::memcpy(aes.vector, chainBytes + (lanes - 1) * kAesBlockSize, kAesBlockSize);
  }
}

// One CBC pass over a piece, starting from the context's vector and leaving the last
// cipher block in it, exactly as a low-level CBC call does.
void RunAes(AesState& aes, const uint8_t* input, uint8_t* output, int length, bool encrypting)
{
  const auto last = static_cast<size_t>(length) - kAesBlockSize;
  uint8_t lastCipherBlock[kAesBlockSize];
  if (!encrypting) std::memcpy(lastCipherBlock, input + last, kAesBlockSize);
  EVP_CIPHER_CTX* schedule = encrypting ? aes.encrypt : aes.decrypt;
  EVP_CipherInit_ex(schedule, nullptr, nullptr, nullptr, aes.vector, -1);
  int written = 0;
  EVP_CipherUpdate(schedule, output, &written, input, length);
  if (encrypting) std::memcpy(lastCipherBlock, output + last, kAesBlockSize);
  std::memcpy(aes.vector, lastCipherBlock, kAesBlockSize);
}

void RunPiece(CipherContext* context, const uint8_t* input, uint8_t* output, int length,
              bool encrypting)
{
  switch (context->algorithm) {
    case kCipherAes: RunAes(context->state.aes, input, output, length, encrypting); break;
    case kCipherBlowfish:
      BF_cbc_encrypt(input, output, length, &context->state.blowfish.schedule,
                     context->state.blowfish.vector, encrypting ? BF_ENCRYPT : BF_DECRYPT);
      break;
    case kCipherCast:
      CAST_cbc_encrypt(input, output, length, &context->state.cast.schedule,
                       context->state.cast.vector, encrypting ? CAST_ENCRYPT : CAST_DECRYPT);
      break;
    default: RC4(&context->state.rc4, static_cast<size_t>(length), input, output); break;
  }
}

StatusCode Run(CipherContext* context, const uint8_t* input, uint8_t* output, uint32_t length,
               bool encrypting)
{
  if (!IsValidRequest(context, input, output, length)) return kCryptoInvalidParameter;
  for (uint32_t done = 0; done < length;) {
    const uint32_t piece = std::min(length - done, kMaxPiece);
    RunPiece(context, input + done, output + done, static_cast<int>(piece), encrypting);
    done += piece;
  }
  return kStatusSuccess;
}

uint8_t* ChainingVector(CipherContext* context)
{
  switch (context->algorithm) {
    case kCipherAes: return context->state.aes.vector;
    case kCipherBlowfish: return context->state.blowfish.vector;
    default: return context->state.cast.vector;
  }
}

}  // namespace

StatusCode CipherCheckKeyLength(CipherAlgorithm algorithm, uint32_t keyLength)
{
  // Unsigned differences: a length below the minimum wraps around and fails too.
  switch (algorithm) {
    case kCipherAes:
      if (keyLength - 16 > 16) return kCryptoBadKeyLength;
      return keyLength % 8 == 0 ? kStatusSuccess : kCryptoBadKeyLength;
    case kCipherBlowfish: return keyLength - 4 > 52 ? kCryptoBadKeyLength : kStatusSuccess;
    case kCipherCast: return keyLength - 5 > 11 ? kCryptoBadKeyLength : kStatusSuccess;
    case kCipherRc4: return keyLength == 0 ? kCryptoBadKeyLength : kStatusSuccess;
    default: return kCryptoInvalidParameter;
  }
}

StatusCode CipherCreate(CipherAlgorithm algorithm, uint32_t mode, const uint8_t* key,
                        uint32_t keyLength, CipherContext** context)
{
  if (key == nullptr || keyLength == 0 || context == nullptr || algorithm > kCipherRc4 ||
      mode > kCipherModeCbc || IsFailure(CipherCheckKeyLength(algorithm, keyLength))) {
    return kCryptoInvalidParameter;
  }
  if ((algorithm == kCipherRc4) != (mode == kCipherModeStream)) return kCryptoInvalidParameter;

  auto* created = static_cast<CipherContext*>(SysAllocate(sizeof(CipherContext), kAllocZeroed));
  if (created == nullptr) return kCryptoOutOfMemory;
  created->algorithm = algorithm;
  created->mode = mode;
  created->keyLength = keyLength;
  switch (algorithm) {
    case kCipherAes: {
      created->blockSize = kAesBlockSize;
      const StatusCode status = CreateAes(created, key, keyLength);
      if (IsFailure(status)) {
        SysRelease(created);
        return status;
      }
      break;
    }
    case kCipherBlowfish:
      created->blockSize = BF_BLOCK;
      BF_set_key(&created->state.blowfish.schedule, static_cast<int>(keyLength), key);
      break;
    case kCipherCast:
      created->blockSize = CAST_BLOCK;
      CAST_set_key(&created->state.cast.schedule, static_cast<int>(keyLength), key);
      break;
    default:
      created->blockSize = 1;
      RC4_set_key(&created->state.rc4, static_cast<int>(keyLength), key);
      break;
  }
  *context = created;
  return kStatusSuccess;
}

StatusCode CipherEncrypt(CipherContext* context, const uint8_t* input, uint8_t* output,
                         uint32_t length)
{
  return Run(context, input, output, length, true);
}

StatusCode CipherDecrypt(CipherContext* context, const uint8_t* input, uint8_t* output,
                         uint32_t length)
{
  return Run(context, input, output, length, false);
}

StatusCode CipherSetIv(CipherContext* context, const uint8_t* vector, uint32_t vectorLength)
{
  if (context == nullptr || vector == nullptr || vectorLength == 0 || !IsValid(context) ||
      context->algorithm == kCipherRc4 || vectorLength > context->blockSize) {
    return kCryptoInvalidParameter;
  }
  uint8_t* chaining = ChainingVector(context);
  std::memcpy(chaining, vector, vectorLength);
  std::memset(chaining + vectorLength, 0, context->blockSize - vectorLength);
  return kStatusSuccess;
}

StatusCode CipherEncryptUnits(CipherContext* context, const uint8_t* vectors, uint32_t vectorLength,
                              const uint8_t* input, uint8_t* output, uint32_t unitLength,
                              uint32_t count)
{
  if (vectors == nullptr || count == 0 || !IsValidRequest(context, input, output, unitLength) ||
      context->algorithm == kCipherRc4 || vectorLength == 0 || vectorLength > context->blockSize) {
    return kCryptoInvalidParameter;
  }
  if (context->algorithm == kCipherAes) {
    AesState& aes = context->state.aes;
    const uint32_t wide = aes.wideKeys.rounds == 0 ? 0 : count / kAesWideLanes * kAesWideLanes;
    if (wide != 0) {
      EncryptAesWideUnits(aes.wideKeys, vectors, vectorLength, input, output, unitLength, wide);
    }
    // The units after the wide groups leave the vector as they go; otherwise it is the last
    // unit's last cipher block.
    if (wide < count) {
      EncryptAesUnits(aes, vectors + size_t{wide} * kCipherVectorStride, vectorLength,
                      input + size_t{wide} * unitLength, output + size_t{wide} * unitLength,
                      unitLength, count - wide);
    } else {
      std::memcpy(aes.vector, output + size_t{count} * unitLength - kAesBlockSize, kAesBlockSize);
    }
    return kStatusSuccess;
  }
  for (uint32_t unit = 0; unit < count; ++unit) {
    const size_t skip = size_t{unit} * unitLength;
    CipherSetIv(context, vectors + size_t{unit} * kCipherVectorStride, vectorLength);
    const StatusCode status = Run(context, input + skip, output + skip, unitLength, true);
    if (IsFailure(status)) return status;
  }
  return kStatusSuccess;
}

StatusCode CipherDuplicate(const CipherContext* context, CipherContext** copy)
{
  if (context == nullptr || copy == nullptr || !IsValid(context)) return kCryptoInvalidParameter;
  auto* made = static_cast<CipherContext*>(SysAllocate(sizeof(CipherContext), kAllocZeroed));
  if (made == nullptr) return kCryptoOutOfMemory;
  std::memcpy(made, context, sizeof(CipherContext));
  if (context->algorithm == kCipherAes) {
    // The key schedules live in OpenSSL's own contexts: copy those, not their pointers.
    AesState& aes = made->state.aes;
    aes.encrypt = EVP_CIPHER_CTX_new();
    aes.decrypt = EVP_CIPHER_CTX_new();
    aes.blocks = EVP_CIPHER_CTX_new();
    if (aes.encrypt == nullptr || aes.decrypt == nullptr || aes.blocks == nullptr ||
        EVP_CIPHER_CTX_copy(aes.encrypt, context->state.aes.encrypt) != 1 ||
        EVP_CIPHER_CTX_copy(aes.decrypt, context->state.aes.decrypt) != 1 ||
        EVP_CIPHER_CTX_copy(aes.blocks, context->state.aes.blocks) != 1) {
      FreeAesSchedules(aes);
      SysRelease(made);
      return kCryptoOutOfMemory;
    }
  }
  *copy = made;
  return kStatusSuccess;
}

StatusCode CipherDestroy(CipherContext* context)
{
  if (context == nullptr || !IsValid(context)) return kCryptoInvalidParameter;
  if (context->algorithm == kCipherAes) FreeAesSchedules(context->state.aes);
  SysRelease(context);
  return kStatusSuccess;
}

StatusCode CipherQuery(const CipherContext* context, CipherInfo* info, uint32_t infoSize)
{
  if (context == nullptr || info == nullptr || infoSize < sizeof(CipherInfo) || !IsValid(context)) {
    return kCryptoInvalidParameter;
  }
  *info = CipherInfo{context->algorithm, context->mode, context->keyLength, context->blockSize};
  return kStatusSuccess;
}
