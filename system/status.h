// The status word returned by every operation below the user interface.
//
// Bit 30 marks a failure, bit 29 an informational success, bits 16..28 name the layer
// that defined the code (its facility) and bits 0..15 the code within it. Codes are
// always compared as whole 32-bit values: the low 16 bits repeat across facilities.
#pragma once

#include <cstdint>

using StatusCode = uint32_t;

// The one failure test. A status is judged by bit 30 alone, never as non-zero or
// negative, so an informational success (bit 29 only) is a success.
constexpr bool IsFailure(StatusCode status)
{
  return ((status >> 30) & 1u) != 0;
}

inline constexpr uint32_t kFacilitySystem = 0;
inline constexpr uint32_t kFacilityCrypto = 3;
inline constexpr uint32_t kFacilityImage = 5;
inline constexpr uint32_t kFacilityDeviceHost = 6;

constexpr StatusCode MakeFailure(uint32_t facility, uint32_t code)
{
  return 0x40000000u + (facility << 16) + code;
}

inline constexpr StatusCode kStatusSuccess = 0;
inline constexpr StatusCode kStatusInformation = 0x20000000;

// Operating-system services: files, memory, time, identifiers.
inline constexpr StatusCode kSysInvalidParameter = MakeFailure(kFacilitySystem, 0x02);
inline constexpr StatusCode kSysNotSupported = MakeFailure(kFacilitySystem, 0x03);
inline constexpr StatusCode kSysOutOfMemory = MakeFailure(kFacilitySystem, 0x05);
inline constexpr StatusCode kSysBufferTooSmall = MakeFailure(kFacilitySystem, 0x06);
inline constexpr StatusCode kSysGeneralFailure = MakeFailure(kFacilitySystem, 0x07);
inline constexpr StatusCode kSysAccessDenied = MakeFailure(kFacilitySystem, 0x08);
inline constexpr StatusCode kSysReadFault = MakeFailure(kFacilitySystem, 0x09);
inline constexpr StatusCode kSysWriteFault = MakeFailure(kFacilitySystem, 0x0A);
inline constexpr StatusCode kSysWriteProtected = MakeFailure(kFacilitySystem, 0x0C);
inline constexpr StatusCode kSysDiskFull = MakeFailure(kFacilitySystem, 0x0D);
inline constexpr StatusCode kSysEndOfFile = MakeFailure(kFacilitySystem, 0x0E);
inline constexpr StatusCode kSysNotFound = MakeFailure(kFacilitySystem, 0x0F);
inline constexpr StatusCode kSysCannotCreate = MakeFailure(kFacilitySystem, 0x10);
inline constexpr StatusCode kSysFileTooLarge = MakeFailure(kFacilitySystem, 0x11);
inline constexpr StatusCode kSysFileReadOnly = MakeFailure(kFacilitySystem, 0x12);
inline constexpr StatusCode kSysServiceDoesNotExist = MakeFailure(kFacilitySystem, 0x13);
// A new unique identifier could not be made; shares its value with the general failure.
inline constexpr StatusCode kSysUuidFailed = kSysGeneralFailure;

// Crypto engine.
inline constexpr StatusCode kCryptoRandomFailed = MakeFailure(kFacilityCrypto, 0x00);
inline constexpr StatusCode kCryptoInvalidParameter = MakeFailure(kFacilityCrypto, 0x02);
inline constexpr StatusCode kCryptoOutOfMemory = MakeFailure(kFacilityCrypto, 0x05);
inline constexpr StatusCode kCryptoBadKeyLength = MakeFailure(kFacilityCrypto, 0x08);

// Image container.
inline constexpr StatusCode kImgInvalidParameter = MakeFailure(kFacilityImage, 0x02);
inline constexpr StatusCode kImgNotEncrypted = MakeFailure(kFacilityImage, 0x03);
inline constexpr StatusCode kImgOutOfMemory = MakeFailure(kFacilityImage, 0x05);
inline constexpr StatusCode kImgBufferTooSmall = MakeFailure(kFacilityImage, 0x06);
inline constexpr StatusCode kImgKeyLengthMismatch = MakeFailure(kFacilityImage, 0x07);
inline constexpr StatusCode kImgCancelled = MakeFailure(kFacilityImage, 0x08);
inline constexpr StatusCode kImgCreationUnfinished = MakeFailure(kFacilityImage, 0x09);
// Reserved "invalid password" value: the user interface words it like kImgWrongPassword,
// but the image container never produces it.
inline constexpr StatusCode kImgInvalidPassword = MakeFailure(kFacilityImage, 0x0A);
inline constexpr StatusCode kImgWrongPassword = MakeFailure(kFacilityImage, 0x0B);
inline constexpr StatusCode kImgVolumeMissing = MakeFailure(kFacilityImage, 0x0C);
inline constexpr StatusCode kImgMisaligned = MakeFailure(kFacilityImage, 0x0F);
inline constexpr StatusCode kImgReadOnly = MakeFailure(kFacilityImage, 0x10);
inline constexpr StatusCode kImgChecksumMismatch = MakeFailure(kFacilityImage, 0x13);
inline constexpr StatusCode kImgBeyondEnd = MakeFailure(kFacilityImage, 0x14);
inline constexpr StatusCode kImgReadPastEnd = MakeFailure(kFacilityImage, 0x15);
inline constexpr StatusCode kImgPlainImage = MakeFailure(kFacilityImage, 0x17);

// Device host client.
inline constexpr StatusCode kDevInvalidParameter = MakeFailure(kFacilityDeviceHost, 0x02);
inline constexpr StatusCode kDevOutOfMemory = MakeFailure(kFacilityDeviceHost, 0x05);
inline constexpr StatusCode kDevImageNotEncrypted = MakeFailure(kFacilityDeviceHost, 0x09);
inline constexpr StatusCode kDevUnreachable = MakeFailure(kFacilityDeviceHost, 0x0A);
inline constexpr StatusCode kDevNotRunning = MakeFailure(kFacilityDeviceHost, 0x0B);
// The file-system volume of a disk is still in use by applications; a forced dismount goes on.
inline constexpr StatusCode kDevVolumeInUse = MakeFailure(kFacilityDeviceHost, 0x0D);
