// The byte layout of volume files and of the records inside the image stream.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr uint32_t kUnitSize = 4096;       // every stream offset and length
inline constexpr uint32_t kChunkSize = 0x100000;  // the largest single transfer, 1 MiB
inline constexpr uint32_t kHeaderSize = 4096;     // at file offset 0 of every volume file
inline constexpr uint32_t kIdentityBlockSize = 64;
inline constexpr uint64_t kNoVolumeLimit = 0;        // one file without limit
inline constexpr uint64_t kFileSystemLimit = ~0ull;  // split where the file system refuses

// Uses of the identity block's bytes.
namespace identity {
inline constexpr size_t kUnitVectorTail = 16;  // 4 bytes closing every unit's vector
inline constexpr size_t kHeaderVector = 32;    // the header encryption's chaining vector
inline constexpr size_t kAlgorithmMask = 48;
inline constexpr size_t kKeyLengthMask = 50;
inline constexpr size_t kModeMask = 51;
inline constexpr size_t kFlagsMask = 52;
}  // namespace identity

// Volume file header. Bytes 0..127 are plain, 128..4095 the protected part.
namespace header {
inline constexpr size_t kOuterFlags = 64;
inline constexpr size_t kPlainVersion = 68;
inline constexpr size_t kPlainSize = 70;
inline constexpr size_t kAlgorithm = 74;
inline constexpr size_t kMode = 75;
inline constexpr size_t kKeyLength = 76;
inline constexpr size_t kNoise = 78;
inline constexpr size_t kNoiseEnd = 128;
inline constexpr size_t kProtected = 128;  // also where the CRC of 132..4095 is
inline constexpr size_t kMagic = 132;
inline constexpr size_t kVersion = 136;
inline constexpr size_t kSetIdentifier = 138;
inline constexpr size_t kCreationTime = 154;
inline constexpr size_t kInnerFlags = 162;
inline constexpr size_t kUnitSize = 166;
inline constexpr size_t kVolumeLimit = 170;
inline constexpr size_t kIndex = 178;
inline constexpr size_t kDataKey = 256;

inline constexpr uint16_t kPlainVersionValue = 0x0100;
inline constexpr uint32_t kPlainSizeValue = 128;
inline constexpr uint32_t kMagicValue = 0x4D495650;  // "PVIM"
inline constexpr uint16_t kVersionValue = 0x0100;

inline constexpr uint32_t kFlagEncrypted = 0x1;
inline constexpr uint32_t kFlagFurtherVolume = 0x2;
}  // namespace header

// The image descriptor, 128 bytes in the stream's first unit.
namespace descriptor {
inline constexpr uint32_t kSize = 128;
inline constexpr size_t kRecordSize = 4;
inline constexpr size_t kFlags = 8;
inline constexpr size_t kImageIdentifier = 12;
inline constexpr size_t kCreationTime = 28;
inline constexpr size_t kLastOpenTime = 36;
inline constexpr size_t kBlockSize = 44;
inline constexpr size_t kBlockCount = 48;
inline constexpr size_t kDataOffset = 52;
inline constexpr size_t kAfterDescriptor = 60;
inline constexpr size_t kInfoOffset = 68;
inline constexpr size_t kReserved = 76;
}  // namespace descriptor

// Image flags in the descriptor.
inline constexpr uint32_t kImageFixed = 0x1;
inline constexpr uint32_t kImageCreatedFlag = 0x2;
inline constexpr uint32_t kImageNeverInUse = 0x20000000;
inline constexpr uint32_t kImageBeingCreated = 0x40000000;
inline constexpr uint32_t kImageInUse = 0x80000000;

// The information record, 124 bytes in the stream's second unit.
namespace info {
inline constexpr uint32_t kSize = 124;
inline constexpr size_t kRecordSize = 4;
inline constexpr size_t kWriteTime = 12;
inline constexpr size_t kFirstTextLength = 28;
inline constexpr size_t kSecondTextLength = 30;
inline constexpr size_t kTableOffset = 34;
inline constexpr size_t kTableBlocks = 42;
}  // namespace info

// Allocation table blocks: 1023 entries and an Adler-32.
inline constexpr uint32_t kTableEntriesPerBlock = (kUnitSize - 4) / 4;
inline constexpr size_t kTableChecksum = kUnitSize - 4;
inline constexpr uint32_t kTableEntryFree = 0xFFFFFFFF;
