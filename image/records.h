// The descriptor, the information record and allocation table blocks: encoding with
// their checksums, and decoding with checks.
#pragma once

#include <cstdint>

#include "system/status.h"
#include "system/uuid.h"

struct Descriptor {
  uint32_t flags = 0;
  Guid imageIdentifier{};
  uint64_t creationTime = 0;
  uint64_t lastOpenTime = 0;
  uint32_t blockSize = 0;
  uint32_t blockCount = 0;
  uint64_t dataOffset = 0;
  uint64_t afterDescriptorOffset = 0;
  uint64_t infoOffset = 0;
  uint64_t reserved = 0;  // carried unchanged
};

struct InfoRecord {
  uint64_t writeTime = 0;
  uint64_t tableOffset = 0;
  uint32_t tableBlocks = 0;
};

// Writes the record into a zero-filled unit (`unit` holds kUnitSize bytes) with its CRC.
void EncodeDescriptor(const Descriptor& descriptor, uint8_t* unit);
void EncodeInfoRecord(const InfoRecord& info, uint8_t* unit);

// Reads a record back; kImgChecksumMismatch when its CRC does not match.
StatusCode DecodeDescriptor(const uint8_t* unit, Descriptor* descriptor);
StatusCode DecodeInfoRecord(const uint8_t* unit, InfoRecord* info);

// Puts the Adler-32 of a table block's entries into its last four bytes.
void SealTableBlock(uint8_t* block);

// kImgChecksumMismatch when a table block's Adler-32 does not match.
StatusCode CheckTableBlock(const uint8_t* block);
