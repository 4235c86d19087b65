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
  return OpenWithKey(kOpenReadOnly);
}

StatusCode ServedImage::Suspend()
{
  return CloseHandle();
}

StatusCode ServedImage::Reopen()
{
  if (handle_ != nullptr) return kStatusSuccess;
  return OpenWithKey(kOpenReadOnly);
}

StatusCode ServedImage::MakeWritable()
{
  if (writable_) return kStatusSuccess;
  const StatusCode status = CloseHandle();
  if (IsFailure(status)) return status;
  return OpenWithKey(0);
}

StatusCode ServedImage::Close()
{
  const StatusCode status = CloseHandle();
  headerKey_.reset();
  return status;
}

uint64_t ServedImage::capacity() const
{
  ImageProperties properties{sizeof(ImageProperties)};
  return IsFailure(ImgGetProperties(handle_, &properties)) ? 0 : properties.capacity;
}

StatusCode ServedImage::OpenWithKey(uint32_t openFlags)
{
  if (!headerKey_) return kImgInvalidParameter;
  const StatusCode status =
      ImgOpen(path_.c_str(), openFlags, headerKey_->data(), headerKey_->length(), &handle_);
  if (IsFailure(status)) handle_ = nullptr;
  writable_ = !IsFailure(status) && (openFlags & kOpenReadOnly) == 0;
  return status;
}

StatusCode ServedImage::CloseHandle()
{
  if (handle_ == nullptr) return kStatusSuccess;
  // A close that cannot flush still releases the image; the first failure is reported.
  const StatusCode status = ImgClose(handle_, 0);
  if (IsFailure(status)) ImgClose(handle_, kCloseForce);
  handle_ = nullptr;
  writable_ = false;
  return status;
}
