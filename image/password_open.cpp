#include "image/password_open.h"

#include "crypto/keys.h"
#include "image/layout.h"
#include "system/memory.h"
#include "system/utf.h"
#include "system/wipe.h"

KeyBuffer::KeyBuffer(uint32_t length)
    : length_(length), data_(static_cast<uint8_t*>(SysAllocate(length, kAllocZeroed)))
{
}

KeyBuffer::~KeyBuffer()
{
  if (data_ != nullptr) WipeBytes(data_, length_);
  SysRelease(data_);
}

StatusCode DeriveHeaderKey(std::u16string_view password, const uint8_t* identityBlock,
                           KeyBuffer& key)
{
  if (key.data() == nullptr) return kSysOutOfMemory;
  return CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()), identityBlock,
                         kIdentityBlockSize, key.data(), key.length());
}

StatusCode DeriveHeaderKey(const std::string& password, const uint8_t* identityBlock,
                           KeyBuffer& key)
{
  std::u16string text = Utf8ToUtf16(password);
  const StatusCode status = DeriveHeaderKey(std::u16string_view(text), identityBlock, key);
  WipeText(text);
  return status;
}

StatusCode OpenImageWithPassword(const std::u16string& path, const ImageKeyInfo& info,
                                 const std::string& password, uint32_t openFlags,
                                 ImageHandle** handle)
{
  KeyBuffer key(info.keyLength);
  StatusCode status = DeriveHeaderKey(password, info.identityBlock, key);
  if (!IsFailure(status))
    status = ImgOpen(path.c_str(), openFlags, key.data(), key.length(), handle);
  return status;
}
