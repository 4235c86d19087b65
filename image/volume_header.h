// Volume file headers: building, masking, noise, checksum and header encryption.
#pragma once

#include <cstdint>

#include "image/image_set.h"
#include "system/status.h"

// The plain fields of a header with their masks undone.
struct PlainHeaderFields {
  uint32_t outerFlags;
  uint32_t algorithm;
  uint32_t mode;
  uint32_t keyLength;
  uint16_t plainVersion;
  uint32_t plainSize;
};

// Builds a complete header for volume `index` of the set in `header` (kHeaderSize bytes,
// page-aligned): fields, masks, noise, the key area when given, checksum, and encryption
// of the protected part with `headerCipher` when the set is encrypted.
StatusCode BuildVolumeHeader(const ImageSet& set, CipherContext* headerCipher, uint32_t index,
                             uint32_t innerFlags, const uint8_t* keyArea, uint8_t* header);

// Undoes the masks of the plain fields; kImgWrongPassword for an algorithm or mode out
// of range.
StatusCode ReadPlainFields(const uint8_t* header, PlainHeaderFields* fields);

// Decrypts the protected part in place (for an encrypted set) with `headerCipher` and
// checks checksum, magic and version; kImgWrongPassword on any mismatch.
StatusCode UnsealHeader(const ImageSet& set, CipherContext* headerCipher, uint8_t* header);

// Recomputes the checksum and encrypts the protected part in place (encrypted set).
StatusCode SealHeader(const ImageSet& set, CipherContext* headerCipher, uint8_t* header);

// Changes the "further volume follows" bit in the inner and the (masked) outer flags of
// a decrypted header.
void SetFurtherVolumeFlag(uint8_t* header, bool follows);

// Reads, decrypts and verifies the header of an open volume file into `header`.
StatusCode ReadVolumeHeader(const ImageSet& set, SysFile* file, uint8_t* header);
