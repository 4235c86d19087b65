#include "crypto/aes_wide_units.h"

#include <cstddef>
#include <cstring>

#include "system/wipe.h"

#if defined(__x86_64__)

#include <cpuid.h>
#include <immintrin.h>

namespace {

constexpr uint32_t kBlock = 16;
constexpr uint32_t kPairs = kAesWideLanes / 2;
// How many steps each register pair runs behind the one before: one cache line of blocks.
constexpr uint32_t kLag = 64 / kBlock;

// The key schedule's S-box substitution of one word: the key-generation assist instruction
// substitutes the second word of its input into the first word of its result.
__attribute__((target("aes"))) uint32_t SubWord(uint32_t word)
{
  const __m128i input = _mm_set_epi32(0, 0, static_cast<int>(word), 0);
  return static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_aeskeygenassist_si128(input, 0)));
}

// One register pair: the two units it enciphers now (first and first + 1) and the block of
// both it is at.
struct Pair {
  size_t first;
  uint32_t block;
};

// Units first and first + 1's vectors, the low half of the register for the first.
__attribute__((target("aes,avx2,vaes"))) __m256i LoadVectors(const uint8_t* vectors,
                                                             uint32_t vectorLength, size_t first)
{
  uint8_t padded[2 * kBlock] = {};
  std::memcpy(padded, vectors + first * kBlock, vectorLength);
  std::memcpy(padded + kBlock, vectors + (first + 1) * kBlock, vectorLength);
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(padded));
}

}  // namespace

void ExpandAesKey(const uint8_t* key, uint32_t keyLength, AesRoundKeys* keys)
{
  // The schedule of the AES standard, in 32-bit words whose first byte is the lowest.
  const uint32_t keyWords = keyLength / 4;
  keys->rounds = keyWords + 6;
  const uint32_t total = 4 * (keys->rounds + 1);
  uint32_t words[4 * 15];
  std::memcpy(words, key, keyLength);
  uint32_t roundConstant = 1;
  for (uint32_t i = keyWords; i < total; ++i) {
    uint32_t word = words[i - 1];
    if (i % keyWords == 0) {
      word = SubWord((word >> 8) | (word << 24)) ^ roundConstant;
      roundConstant = (roundConstant << 1) ^ ((roundConstant & 0x80) != 0 ? 0x11b : 0);
    } else if (keyWords > 6 && i % keyWords == 4) {
      word = SubWord(word);
    }
    words[i] = words[i - keyWords] ^ word;
  }
  std::memcpy(keys->bytes, words, total * 4);
  WipeBytes(words, sizeof words);
}

bool AesWideUnitsAvailable()
{
  unsigned eax = 0;
  unsigned ebx = 0;
  unsigned ecx = 0;
  unsigned edx = 0;
  if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0) return false;
  if ((ecx & bit_AES) == 0 || (ecx & bit_AVX) == 0 || (ecx & bit_OSXSAVE) == 0) return false;
  // The system saves the 128- and 256-bit registers: bits 1 and 2 of extended control
  // register 0.
  uint32_t low = 0;
  uint32_t high = 0;
  __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  if ((low & 6) != 6) return false;
  if (__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) == 0) return false;
  return (ebx & bit_AVX2) != 0 && (ecx & bit_VAES) != 0;
}

__attribute__((target("aes,avx2,vaes"))) void EncryptAesWideUnits(
    const AesRoundKeys& keys, const uint8_t* vectors, uint32_t vectorLength, const uint8_t* input,
    uint8_t* output, uint32_t unitLength, uint32_t count)
{
  __m256i roundKeys[15];
  for (uint32_t round = 0; round <= keys.rounds; ++round) {
    roundKeys[round] = _mm256_broadcastsi128_si256(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(keys.bytes[round])));
  }
  // Pair p enciphers units 16g + 2p and 16g + 2p + 1 of every group g of sixteen, block by
  // block, starting kLag * p steps after step 0; each pair is active for `steps` steps.
  const uint32_t blocks = unitLength / kBlock;
  const uint64_t steps = uint64_t{count / kAesWideLanes} * blocks;
  __m256i chains[kPairs] = {};
  Pair pairs[kPairs];
  for (uint32_t p = 0; p < kPairs; ++p) pairs[p] = Pair{2 * size_t{p}, 0};
  for (uint64_t step = 0; step < steps + kLag * (kPairs - 1); ++step) {
    bool active[kPairs];
#pragma GCC unroll 8
    for (uint32_t p = 0; p < kPairs; ++p) {
      active[p] = step - kLag * p < steps;  // false before the pair's start too (unsigned)
      if (!active[p]) continue;
      const Pair& pair = pairs[p];
      if (pair.block == 0) chains[p] = LoadVectors(vectors, vectorLength, pair.first);
      const uint8_t* plain = input + pair.first * unitLength + size_t{pair.block} * kBlock;
      const __m256i blocksIn =
          _mm256_loadu2_m128i(reinterpret_cast<const __m128i*>(plain + unitLength),
                              reinterpret_cast<const __m128i*>(plain));
      chains[p] = _mm256_xor_si256(_mm256_xor_si256(chains[p], blocksIn), roundKeys[0]);
    }
    for (uint32_t round = 1; round < keys.rounds; ++round) {
      const __m256i roundKey = roundKeys[round];
#pragma GCC unroll 8
      for (uint32_t p = 0; p < kPairs; ++p) chains[p] = _mm256_aesenc_epi128(chains[p], roundKey);
    }
#pragma GCC unroll 8
    for (uint32_t p = 0; p < kPairs; ++p) {
      chains[p] = _mm256_aesenclast_epi128(chains[p], roundKeys[keys.rounds]);
      if (!active[p]) continue;
      Pair& pair = pairs[p];
      uint8_t* cipher = output + pair.first * unitLength + size_t{pair.block} * kBlock;
      _mm256_storeu2_m128i(reinterpret_cast<__m128i*>(cipher + unitLength),
                           reinterpret_cast<__m128i*>(cipher), chains[p]);
      if (++pair.block == blocks) pair = Pair{pair.first + kAesWideLanes, 0};
    }
  }
  WipeBytes(roundKeys, sizeof roundKeys);
}

#else

void ExpandAesKey(const uint8_t*, uint32_t, AesRoundKeys*) {}

bool AesWideUnitsAvailable()
{
  return false;
}

void EncryptAesWideUnits(const AesRoundKeys&, const uint8_t*, uint32_t, const uint8_t*, uint8_t*,
                         uint32_t, uint32_t)
{
}

#endif
