// The image that the nbdkit plugin serves. It is opened read-only to begin with, which
// checks the password, every volume file and the image's records without writing a byte,
// and opened again for writing when the first client that may write connects. The header
// key is kept for the later opens; the password is not.
#pragma once

#include <memory>
#include <string>

#include "image/image.h"
#include "image/password_open.h"
#include "system/status.h"

class ServedImage {
 public:
  ServedImage() = default;
  ~ServedImage();
  ServedImage(const ServedImage&) = delete;
  ServedImage& operator=(const ServedImage&) = delete;

  // Reads the key information of the image at `path` (UTF-8), derives the header key of
  // `password` and opens the image read-only.
  StatusCode Open(const std::string& path, const std::string& password);

  // Closes the image and keeps the key, so that Reopen opens it again: the open files and
  // their locks do not pass into a process that nbdkit forks off.
  StatusCode Suspend();
  StatusCode Reopen();

  // Opens the image again for writing, unless it is already; this marks it in use.
  StatusCode MakeWritable();

  // Closes the image (flushed and its in-use mark cleared when it was open for writing)
  // and forgets the key.
  StatusCode Close();

  ImageHandle* handle() const { return handle_; }
  bool writable() const { return writable_; }
  uint64_t capacity() const;

 private:
  StatusCode OpenWithKey(uint32_t openFlags);
  StatusCode CloseHandle();

  std::u16string path_;
  std::unique_ptr<KeyBuffer> headerKey_;
  ImageHandle* handle_ = nullptr;
  bool writable_ = false;
};
