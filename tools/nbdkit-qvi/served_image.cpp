#include "tools/nbdkit-qvi/served_image.h"

#include "system/utf.h"

ServedImage::~ServedImage()
{
  Close();
}

StatusCode ServedImage::Open(const std::string& path, const std::string& password)
{
  path_ = Utf8ToUtf16(path);
  ImageKeyInfo info{sizeof(ImageKeyInfo)};
  StatusCode status = ImgGetKeyInfo(path_.c_str(), &info);
  if (IsFailure(status)) return status;
  headerKey_ = std::make_unique<KeyBuffer>(info.keyLength);
  status = DeriveHeaderKey(password, info.identityBlock, *headerKey_);
  if (IsFailure(status)) return status;
  return ImgOpen(path_.c_str(), kOpenReadOnly, headerKey_->data(), headerKey_->length(), &handle_);
}

StatusCode ServedImage::MakeWritable()
{
  if (writable_) return kStatusSuccess;
  if (handle_ == nullptr || !headerKey_) return kImgInvalidParameter;
  StatusCode status = ImgClose(handle_, 0);
  if (IsFailure(status)) return status;
  handle_ = nullptr;
  status = ImgOpen(path_.c_str(), 0, headerKey_->data(), headerKey_->length(), &handle_);
  writable_ = !IsFailure(status);
  return status;
}

StatusCode ServedImage::Close()
{
  headerKey_.reset();
  if (handle_ == nullptr) return kStatusSuccess;
  // A close that cannot flush still releases the image; the first failure is reported.
  const StatusCode status = ImgClose(handle_, 0);
  if (IsFailure(status)) ImgClose(handle_, kCloseForce);
  handle_ = nullptr;
  writable_ = false;
  return status;
}

uint64_t ServedImage::capacity() const
{
  ImageProperties properties{sizeof(ImageProperties)};
  return IsFailure(ImgGetProperties(handle_, &properties)) ? 0 : properties.capacity;
}
