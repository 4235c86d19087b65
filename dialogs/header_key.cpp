#include "dialogs/header_key.h"

#include "crypto/keys.h"
#include "system/memory.h"
#include "system/wipe.h"

CHeaderKey::~CHeaderKey()
{
  if (key_ == nullptr) return;
  WipeBytes(key_, info_.keyLength);
  SysRelease(key_);
}

StatusCode CHeaderKey::Prepare(const std::u16string& path)
{
  info_ = ImageKeyInfo{};
  info_.recordSize = sizeof(ImageKeyInfo);
  const StatusCode status = ImgGetKeyInfo(path.c_str(), &info_);
  if (IsFailure(status)) return status;
  key_ = static_cast<uint8_t*>(SysAllocate(info_.keyLength, kAllocZeroed));
  return key_ == nullptr ? kSysOutOfMemory : kStatusSuccess;
}

StatusCode CHeaderKey::Derive(std::u16string_view password)
{
  return CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()),
                         info_.identityBlock, sizeof(info_.identityBlock), key_, info_.keyLength);
}
