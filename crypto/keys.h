// Key derivation and random material.
//
// An image's header key is PBKDF2-HMAC-SHA1 of the user's password (UTF-16LE code units,
// no terminator) salted with the image's 64-byte identity block; its data key is random
// bytes whitened once through PBKDF2. Both use the fixed iteration count below: every
// existing image depends on it.
#pragma once

#include <cstdint>

#include "system/status.h"

inline constexpr int kKeyDerivationIterations = 2048;

// Adds `length` bytes to the random generator's seed.
StatusCode CryptoSeedRandom(const uint8_t* seed, uint32_t length);

// Fills `buffer` with random bytes; kCryptoRandomFailed if the generator cannot work.
// A generator that merely judges its seeding weak still counts as success.
StatusCode CryptoRandomBytes(uint8_t* buffer, uint32_t length);

// Fills `buffer` with a fresh data key of `length` bytes.
StatusCode CryptoGenerateKey(uint8_t* buffer, uint32_t length);

// Derives `outputLength` bytes of header key from a password of `passwordLength` UTF-16
// code units and a salt.
StatusCode CryptoDeriveKey(const char16_t* password, uint32_t passwordLength, const uint8_t* salt,
                           uint32_t saltLength, uint8_t* output, uint32_t outputLength);
