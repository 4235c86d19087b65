#include "image/records.h"

#include <algorithm>
#include <cstring>

#include "image/bytes.h"
#include "image/layout.h"

void EncodeDescriptor(const Descriptor& d, uint8_t* unit)
{
  std::memset(unit, 0, kUnitSize);
  Store<uint32_t>(unit + descriptor::kRecordSize, descriptor::kSize);
  Store<uint32_t>(unit + descriptor::kFlags, d.flags);
  std::memcpy(unit + descriptor::kImageIdentifier, &d.imageIdentifier, sizeof d.imageIdentifier);
  Store<uint64_t>(unit + descriptor::kCreationTime, d.creationTime);
  Store<uint64_t>(unit + descriptor::kLastOpenTime, d.lastOpenTime);
  Store<uint32_t>(unit + descriptor::kBlockSize, d.blockSize);
  Store<uint32_t>(unit + descriptor::kBlockCount, d.blockCount);
  Store<uint64_t>(unit + descriptor::kDataOffset, d.dataOffset);
  Store<uint64_t>(unit + descriptor::kAfterDescriptor, d.afterDescriptorOffset);
  Store<uint64_t>(unit + descriptor::kInfoOffset, d.infoOffset);
  Store<uint64_t>(unit + descriptor::kReserved, d.reserved);
  Store<uint32_t>(unit, Crc32(unit + 4, descriptor::kSize - 4));
}

StatusCode DecodeDescriptor(const uint8_t* unit, Descriptor* d)
{
  if (Load<uint32_t>(unit) != Crc32(unit + 4, descriptor::kSize - 4)) return kImgChecksumMismatch;
  d->flags = Load<uint32_t>(unit + descriptor::kFlags);
  std::memcpy(&d->imageIdentifier, unit + descriptor::kImageIdentifier, sizeof d->imageIdentifier);
  d->creationTime = Load<uint64_t>(unit + descriptor::kCreationTime);
  d->lastOpenTime = Load<uint64_t>(unit + descriptor::kLastOpenTime);
  d->blockSize = Load<uint32_t>(unit + descriptor::kBlockSize);
  d->blockCount = Load<uint32_t>(unit + descriptor::kBlockCount);
  d->dataOffset = Load<uint64_t>(unit + descriptor::kDataOffset);
  d->afterDescriptorOffset = Load<uint64_t>(unit + descriptor::kAfterDescriptor);
  d->infoOffset = Load<uint64_t>(unit + descriptor::kInfoOffset);
  d->reserved = Load<uint64_t>(unit + descriptor::kReserved);
  return kStatusSuccess;
}

void EncodeInfoRecord(const InfoRecord& r, uint8_t* unit)
{
  std::memset(unit, 0, kUnitSize);
  Store<uint32_t>(unit + info::kRecordSize, info::kSize);
  Store<uint64_t>(unit + info::kWriteTime, r.writeTime);
  Store<uint64_t>(unit + info::kTableOffset, r.tableOffset);
  Store<uint32_t>(unit + info::kTableBlocks, r.tableBlocks);
  Store<uint32_t>(unit, Crc32(unit + 4, info::kSize - 4));
}

StatusCode DecodeInfoRecord(const uint8_t* unit, InfoRecord* r)
{
  // Optional texts may follow the record; the checksum then covers them too. The unit
  // bounds what a reader may take in.
  const size_t texts = Load<uint16_t>(unit + info::kFirstTextLength) +
                       static_cast<size_t>(Load<uint16_t>(unit + info::kSecondTextLength));
  const size_t covered = std::min<size_t>(texts * 2 + info::kSize, kUnitSize);
  if (Load<uint32_t>(unit) != Crc32(unit + 4, covered - 4)) return kImgChecksumMismatch;
  r->writeTime = Load<uint64_t>(unit + info::kWriteTime);
  r->tableOffset = Load<uint64_t>(unit + info::kTableOffset);
  r->tableBlocks = Load<uint32_t>(unit + info::kTableBlocks);
  return kStatusSuccess;
}

void SealTableBlock(uint8_t* block)
{
  Store<uint32_t>(block + kTableChecksum, Adler32(block, kTableChecksum));
}

StatusCode CheckTableBlock(const uint8_t* block)
{
  return Load<uint32_t>(block + kTableChecksum) == Adler32(block, kTableChecksum)
             ? kStatusSuccess
             : kImgChecksumMismatch;
}
