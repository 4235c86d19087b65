// Opening an image with a password: the header key is derived from the password with the
// image's identity block as salt, the way every program of the product opens an image.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "image/image.h"
#include "system/status.h"

// Key material from the one allocation routine, never pageable, overwritten before it is
// released.
class KeyBuffer {
 public:
  explicit KeyBuffer(uint32_t length);
  ~KeyBuffer();
  KeyBuffer(const KeyBuffer&) = delete;
  KeyBuffer& operator=(const KeyBuffer&) = delete;

  uint8_t* data() const { return data_; }
  uint32_t length() const { return length_; }

 private:
  uint32_t length_;
  uint8_t* data_;
};

// The header key of a password: PBKDF2 of its UTF-16 code units, salted with the 64-byte
// identity block. kSysOutOfMemory when `key` has no memory.
StatusCode DeriveHeaderKey(std::u16string_view password, const uint8_t* identityBlock,
                           KeyBuffer& key);
// The same for a password in UTF-8.
StatusCode DeriveHeaderKey(const std::string& password, const uint8_t* identityBlock,
                           KeyBuffer& key);

// Derives the header key of `password` for the image whose key information is `info` and
// opens the image at `path` with `openFlags`.
StatusCode OpenImageWithPassword(const std::u16string& path, const ImageKeyInfo& info,
                                 const std::string& password, uint32_t openFlags,
                                 ImageHandle** handle);
