// AES-CBC over many independent units at once with the processor's vector AES instructions
// (VAES on 256-bit registers). Sixteen chains step together, two in each of eight registers:
// one CBC chain waits on every round's latency, and eight single-block chains still leave
// the AES units idle half the time. The units of an image's buffers lie a whole number of
// 4096-byte units apart, and loads and stores whose low twelve address bits match stall each
// other, so the register pairs run staggered, each one cache line (four blocks) behind the
// pair before it.
#pragma once

#include <cstdint>

// The encryption round keys of one AES key: rounds + 1 keys of 16 bytes.
struct AesRoundKeys {
  uint8_t bytes[15][16];
  uint32_t rounds;  // 10, 12 or 14 for 16-, 24- and 32-byte keys
};

// Expands a 16-, 24- or 32-byte key into its encryption round keys. Only where
// AesWideUnitsAvailable() is true (it uses the processor's AES instructions).
void ExpandAesKey(const uint8_t* key, uint32_t keyLength, AesRoundKeys* keys);

// Whether this processor has the instructions (AES, AVX2, VAES) and the system saves the
// 256-bit registers.
bool AesWideUnitsAvailable();

// The number of units enciphered side by side.
inline constexpr uint32_t kAesWideLanes = 16;

// Enciphers `count` units (a multiple of kAesWideLanes) of `unitLength` bytes (a multiple of
// 16) from input to output (the same buffer is allowed), unit i chained from the
// `vectorLength` bytes (1 to 16) at vectors + 16 * i, the missing bytes of its block zero.
void EncryptAesWideUnits(const AesRoundKeys& keys, const uint8_t* vectors, uint32_t vectorLength,
                         const uint8_t* input, uint8_t* output, uint32_t unitLength,
                         uint32_t count);
