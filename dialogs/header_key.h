// An image's header key made from a password: the image's key information, a key buffer of
// the image's key length, and the key derived from the password with the image's identity
// block as salt. The buffer holds key material, so it is never pageable, and it is
// overwritten before it goes back.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "image/image.h"
#include "image/password_open.h"
#include "system/status.h"

class CHeaderKey {
 public:
  CHeaderKey() = default;
  CHeaderKey(const CHeaderKey&) = delete;
  CHeaderKey& operator=(const CHeaderKey&) = delete;

  // Once per key: reads the key information of the image at `path` and allocates the key
  // buffer (0x40000005 when that fails).
  StatusCode Prepare(const std::u16string& path);

  // Derives the header key of `password` into the buffer, replacing the key it held.
  StatusCode Derive(std::u16string_view password);

  const uint8_t* Bytes() const { return key_ ? key_->data() : nullptr; }
  uint32_t Length() const { return info_.keyLength; }

 private:
  ImageKeyInfo info_{};
  std::unique_ptr<KeyBuffer> key_;
};
