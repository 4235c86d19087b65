#include "dialogs/header_key.h"

StatusCode CHeaderKey::Prepare(const std::u16string& path)
{
  info_ = ImageKeyInfo{};
  info_.recordSize = sizeof(ImageKeyInfo);
  const StatusCode status = ImgGetKeyInfo(path.c_str(), &info_);
  if (IsFailure(status)) return status;
  key_ = std::make_unique<KeyBuffer>(info_.keyLength);
  return key_->data() == nullptr ? kSysOutOfMemory : kStatusSuccess;
}

StatusCode CHeaderKey::Derive(std::u16string_view password)
{
  if (!key_) return kImgInvalidParameter;
  return DeriveHeaderKey(password, info_.identityBlock, *key_);
}
