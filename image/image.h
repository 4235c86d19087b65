// The image container's operations: key information, create, open, properties, change
// key, clear and close. Records carry their own size in their first word.
#pragma once

#include <cstdint>

#include "system/status.h"
#include "system/uuid.h"

// Reports creation and clearing progress: position of range, the caller's context, and
// the bytes done so far. Returns non-zero to go on, zero to cancel.
using ProgressCallback = uint32_t (*)(uint32_t position, uint32_t range, void* context,
                                      uint64_t bytesDone);

struct ImageKeyInfo {
  uint32_t recordSize = 0;  // set by the caller, at least 80
  uint32_t algorithm = 0;
  uint32_t keyLength = 0;
  uint32_t mode = 0;
  uint8_t identityBlock[64] = {};
};
static_assert(sizeof(ImageKeyInfo) == 80);

inline constexpr uint32_t kPropertyReadOnly = 0x10;  // added to the flags of a read-only open

struct ImageProperties {
  uint32_t recordSize = 0;  // set by the caller, at least 72
  uint32_t flags = 0;
  Guid imageIdentifier{};
  uint64_t creationTime = 0;
  uint64_t lastOpenTime = 0;
  uint64_t capacity = 0;
  uint64_t volumeSizeLimit = 0;
  uint32_t blockSize = 0;
  uint32_t algorithm = 0;
  uint32_t keyLength = 0;
  uint32_t mode = 0;
};
static_assert(sizeof(ImageProperties) == 72);

inline constexpr uint32_t kCreateFixed = 0x1;  // all data preallocated

struct ImageCreateParams {
  uint32_t recordSize = 0;  // must be 40
  uint32_t flags = 0;
  uint64_t capacity = 0;                // bytes
  uint64_t volumeSizeLimit = 0;         // 0, all ones, or the largest volume file in bytes
  ProgressCallback progress = nullptr;  // may be null
  void* progressContext = nullptr;
};
static_assert(sizeof(ImageCreateParams) == 40);

// Open flags.
inline constexpr uint32_t kOpenReadOnly = 0x1;
// Accept an informational result of loading the image: the open succeeds and the handle's
// flags carry kStatusInformation. No loading step of this library reports one today; the
// flag belongs to the interface so that callers and a future loader agree on it.
inline constexpr uint32_t kOpenAcceptInformation = 0x2;
inline constexpr uint32_t kOpenUnbuffered = 0x4;

// Close flags.
inline constexpr uint32_t kCloseForce = 0x1;    // close although flushing fails
inline constexpr uint32_t kCloseDiscard = 0x2;  // delete every volume file

struct ImageHandle;

StatusCode ImgGetKeyInfo(const char16_t* path, ImageKeyInfo* info);

StatusCode ImgCreate(const char16_t* path, const ImageCreateParams* params, uint32_t algorithm,
                     uint32_t mode, const uint8_t* headerKey, const uint8_t* dataKey,
                     uint32_t keyLength, const uint8_t* identityBlock,
                     uint32_t identityBlockLength);

StatusCode ImgOpen(const char16_t* path, uint32_t openFlags, const uint8_t* headerKey,
                   uint32_t keyLength, ImageHandle** handle);

StatusCode ImgGetProperties(const ImageHandle* handle, ImageProperties* properties);

StatusCode ImgChangeKey(ImageHandle* handle, const uint8_t* newHeaderKey, uint32_t keyLength);

StatusCode ImgClear(ImageHandle* handle, ProgressCallback progress, void* context);

StatusCode ImgClose(ImageHandle* handle, uint32_t closeFlags);
