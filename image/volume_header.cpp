#include "image/volume_header.h"

#include <cstring>

#include "image/bytes.h"
#include "system/clock.h"

namespace {

// A time folded into 16 bits; never 0 (the clock is read again while it would be).
uint64_t FoldedTime(uint64_t& time)
{
  for (;;) {
    const uint64_t folded = ((time >> 48) ^ (time >> 32) ^ (time >> 16) ^ time) & 0xFFFF;
    if (folded != 0) return folded;
    time = SysUnixTime();
  }
}

// Bytes 78..127 are noise: derived from two readings of the clock and the header's first
// bytes, written before the checksum, never read back.
void FillNoise(uint8_t* header)
{
  uint64_t t1 = SysUnixTime();
  const uint64_t m1 = FoldedTime(t1);
  const uint64_t rounds1 = m1 % ((t1 & 0xFF) + 1) + 100;
  for (uint64_t i = 0; i < rounds1; ++i) t1 = (t1 + 1) * m1 - i;

  uint64_t t2 = SysUnixTime();
  const uint64_t m2 = FoldedTime(t2);
  const uint64_t rounds2 = m2 % ((t1 & 0x1FF) + 1) + 64;
  for (uint64_t i = 0; i < rounds2; ++i) t2 = (t2 + 1) * m2 - i;

  const uint64_t mixed = t2 ^ t1;
  for (size_t p = header::kNoise; p < header::kNoiseEnd; ++p) {
    const size_t n = p - header::kNoise;
    const auto b = static_cast<uint8_t>(static_cast<uint8_t>(mixed >> (8 * (n % 8))) ^ header[n]);
    header[p] = static_cast<uint8_t>(header[b & 63] ^ b);
  }
}

void LoadHeaderVector(const ImageSet& set, CipherContext* headerCipher)
{
  CipherSetIv(headerCipher, set.identityBlock + identity::kHeaderVector, set.ivLength);
}

constexpr uint32_t kProtectedLength = kHeaderSize - header::kProtected;

}  // namespace

StatusCode ReadPlainFields(const uint8_t* h, PlainHeaderFields* fields)
{
  fields->outerFlags = Load<uint32_t>(h + header::kOuterFlags) ^ h[identity::kFlagsMask];
  fields->algorithm = static_cast<uint32_t>(h[header::kAlgorithm] ^ h[identity::kAlgorithmMask]);
  fields->mode = static_cast<uint32_t>(h[header::kMode] ^ h[identity::kModeMask]);
  fields->keyLength = Load<uint16_t>(h + header::kKeyLength) ^ h[identity::kKeyLengthMask];
  fields->plainVersion = Load<uint16_t>(h + header::kPlainVersion);
  fields->plainSize = Load<uint32_t>(h + header::kPlainSize);
  if (fields->algorithm >= 4 || fields->mode >= 2) return kImgWrongPassword;
  return kStatusSuccess;
}

StatusCode SealHeader(const ImageSet& set, CipherContext* headerCipher, uint8_t* h)
{
  Store<uint32_t>(h + header::kProtected, Crc32(h + header::kMagic, kHeaderSize - header::kMagic));
  if (!set.IsEncrypted()) return kStatusSuccess;
  LoadHeaderVector(set, headerCipher);
  return CipherEncrypt(headerCipher, h + header::kProtected, h + header::kProtected,
                       kProtectedLength);
}

StatusCode UnsealHeader(const ImageSet& set, CipherContext* headerCipher, uint8_t* h)
{
  if (set.IsEncrypted()) {
    LoadHeaderVector(set, headerCipher);
    const StatusCode status = CipherDecrypt(headerCipher, h + header::kProtected,
                                            h + header::kProtected, kProtectedLength);
    if (IsFailure(status)) return status;
  }
  const bool valid = Load<uint32_t>(h + header::kProtected) ==
                         Crc32(h + header::kMagic, kHeaderSize - header::kMagic) &&
                     Load<uint32_t>(h + header::kMagic) == header::kMagicValue &&
                     Load<uint16_t>(h + header::kVersion) == header::kVersionValue;
  return valid ? kStatusSuccess : kImgWrongPassword;
}

void SetFurtherVolumeFlag(uint8_t* h, bool follows)
{
  uint32_t inner = Load<uint32_t>(h + header::kInnerFlags);
  inner = follows ? inner | header::kFlagFurtherVolume : inner & ~header::kFlagFurtherVolume;
  Store<uint32_t>(h + header::kInnerFlags, inner);
  Store<uint32_t>(h + header::kOuterFlags, inner ^ h[identity::kFlagsMask]);
}

StatusCode BuildVolumeHeader(const ImageSet& set, CipherContext* headerCipher, uint32_t index,
                             uint32_t innerFlags, const uint8_t* keyArea, uint8_t* h)
{
  std::memset(h, 0, kHeaderSize);
  std::memcpy(h, set.identityBlock, kIdentityBlockSize);
  Store<uint16_t>(h + header::kPlainVersion, header::kPlainVersionValue);
  Store<uint32_t>(h + header::kPlainSize, header::kPlainSizeValue);
  h[header::kAlgorithm] = static_cast<uint8_t>(set.algorithm);
  h[header::kMode] = static_cast<uint8_t>(set.mode);
  Store<uint16_t>(h + header::kKeyLength, static_cast<uint16_t>(set.keyLength));
  Store<uint32_t>(h + header::kMagic, header::kMagicValue);
  Store<uint16_t>(h + header::kVersion, header::kVersionValue);
  Store<uint32_t>(h + header::kUnitSize, set.unitSize);
  Store<uint64_t>(h + header::kVolumeLimit, set.volumeSizeLimit);
  Store<uint32_t>(h + header::kIndex, index);
  const uint32_t flags = innerFlags | (set.IsEncrypted() ? header::kFlagEncrypted : 0);
  Store<uint32_t>(h + header::kInnerFlags, flags);
  std::memcpy(h + header::kSetIdentifier, &set.setIdentifier, sizeof set.setIdentifier);

  h[header::kAlgorithm] ^= h[identity::kAlgorithmMask];
  h[header::kMode] ^= h[identity::kModeMask];
  h[header::kKeyLength] ^= h[identity::kKeyLengthMask];
  Store<uint32_t>(h + header::kOuterFlags, flags ^ h[identity::kFlagsMask]);

  Store<uint64_t>(h + header::kCreationTime,
                  set.creationTime != 0 ? set.creationTime : SysUnixTime());
  FillNoise(h);
  if (keyArea != nullptr) std::memcpy(h + header::kDataKey, keyArea, set.keyLength);
  return SealHeader(set, headerCipher, h);
}

StatusCode ReadVolumeHeader(const ImageSet& set, SysFile* file, uint8_t* h)
{
  uint32_t done = 0;
  StatusCode status = SysReadFile(file, 0, h, kHeaderSize, &done);
  if (IsFailure(status)) return status;
  if (done != kHeaderSize) return kImgWrongPassword;
  PlainHeaderFields fields{};
  status = ReadPlainFields(h, &fields);
  if (IsFailure(status)) return status;
  return UnsealHeader(set, set.headerCipher, h);
}
