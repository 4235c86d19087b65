// The choices the new image wizard collects, page by page: the capacity page writes the
// capacity and the two storage options, the encryption page the cipher and key length, the
// password page the password, the location page the path and the completion page whether
// the new image is mounted at once. The creation worker and the summary read them.
#pragma once

#include <cstdint>
#include <string>

#include "system/wipe.h"

struct NewImageRequest {
  NewImageRequest() = default;
  NewImageRequest(const NewImageRequest&) = delete;
  NewImageRequest& operator=(const NewImageRequest&) = delete;
  // The password does not outlive the wizard.
  ~NewImageRequest() { WipeText(password); }

  uint64_t capacity = 0;       // bytes
  uint32_t fatCompatible = 0;  // split into 2 GB volume files
  uint32_t fixedSize = 0;      // allocate the whole capacity
  uint32_t algorithm = 0;      // the cipher engine's id: 0 AES, 1 Blowfish, 2 CAST
  uint32_t keyBits = 0;
  std::u16string path;
  std::u16string password;  // exactly as typed
  uint32_t mountAfter = 0;
};
