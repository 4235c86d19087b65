// The cipher engine: four symmetric ciphers behind algorithm numbers.
//
// A caller picks an algorithm, hands over a key, gets an opaque context, loads a chaining
// vector and encrypts or decrypts buffers of whole cipher blocks. The block ciphers run in
// CBC mode with one chaining vector per context that every call continues and that
// encryption and decryption share; RC4's key stream likewise continues from call to call.
#pragma once

#include <cstdint>

#include "system/status.h"

using CipherAlgorithm = uint32_t;
inline constexpr CipherAlgorithm kCipherAes = 0;
inline constexpr CipherAlgorithm kCipherBlowfish = 1;
inline constexpr CipherAlgorithm kCipherCast = 2;
inline constexpr CipherAlgorithm kCipherRc4 = 3;

inline constexpr uint32_t kCipherModeStream = 0;  // RC4 only
inline constexpr uint32_t kCipherModeCbc = 1;     // AES, Blowfish and CAST

struct CipherContext;

// What CipherQuery reports: the context's four header words.
struct CipherInfo {
  uint32_t algorithm;
  uint32_t mode;
  uint32_t keyLength;  // bytes
  uint32_t blockSize;  // bytes
};
static_assert(sizeof(CipherInfo) == 16);

// 0 if `keyLength` bytes is allowed for `algorithm`; kCryptoBadKeyLength if not;
// kCryptoInvalidParameter for an unknown algorithm.
StatusCode CipherCheckKeyLength(CipherAlgorithm algorithm, uint32_t keyLength);

// Creates a context with an all-zero chaining vector. Every bad argument, a refused key
// length included, is kCryptoInvalidParameter; kCryptoOutOfMemory if no memory.
StatusCode CipherCreate(CipherAlgorithm algorithm, uint32_t mode, const uint8_t* key,
                        uint32_t keyLength, CipherContext** context);

// Encrypt or decrypt `length` bytes (a whole number of blocks) from input to output.
StatusCode CipherEncrypt(CipherContext* context, const uint8_t* input, uint8_t* output,
                         uint32_t length);
StatusCode CipherDecrypt(CipherContext* context, const uint8_t* input, uint8_t* output,
                         uint32_t length);

// Loads up to one block of chaining vector; missing bytes of the block become zero.
StatusCode CipherSetIv(CipherContext* context, const uint8_t* vector, uint32_t vectorLength);

// Encrypts `count` independent units of `unitLength` bytes (a whole number of blocks), unit
// i from input + i * unitLength to output + i * unitLength (the same buffer is allowed),
// each chained from its own vector: the `vectorLength` bytes at vectors + i *
// kCipherVectorStride, loaded as
// CipherSetIv loads them. The bytes are those of CipherSetIv and CipherEncrypt unit after
// unit, and the context's vector is left as that would leave it; AES enciphers several
// units side by side, which the processor's AES instructions do several times faster than
// one chain. RC4 has no vectors and is refused (kCryptoInvalidParameter).
inline constexpr uint32_t kCipherVectorStride = 16;
StatusCode CipherEncryptUnits(CipherContext* context, const uint8_t* vectors, uint32_t vectorLength,
                              const uint8_t* input, uint8_t* output, uint32_t unitLength,
                              uint32_t count);

// Makes an independent copy of a context: same key, same chaining vector (or RC4 key
// stream position). Lets several threads cipher with one key, each on its own copy.
// kCryptoInvalidParameter for a missing or invalid context; kCryptoOutOfMemory if no memory.
StatusCode CipherDuplicate(const CipherContext* context, CipherContext** copy);

// Releases a context. An invalid context is refused and nothing is released.
StatusCode CipherDestroy(CipherContext* context);

// Copies the context's header words into `info` (a buffer of `infoSize` bytes, 16 or more).
StatusCode CipherQuery(const CipherContext* context, CipherInfo* info, uint32_t infoSize);
