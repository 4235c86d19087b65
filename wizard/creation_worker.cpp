#include "wizard/creation_worker.h"

#include "crypto/cipher.h"
#include "crypto/keys.h"
#include "devhost/device_host_api.h"
#include "devhost/mounted_disk.h"
#include "image/layout.h"
#include "system/memory.h"
#include "system/wipe.h"

namespace {

// The header key and the data key, in unpageable memory, overwritten before release.
class CreationKeys {
 public:
  explicit CreationKeys(uint32_t length)
      : length_(length),
        headerKey_(static_cast<uint8_t*>(SysAllocate(length, kAllocZeroed))),
        dataKey_(static_cast<uint8_t*>(SysAllocate(length, kAllocZeroed)))
  {
  }
  ~CreationKeys()
  {
    Release(headerKey_);
    Release(dataKey_);
  }
  CreationKeys(const CreationKeys&) = delete;
  CreationKeys& operator=(const CreationKeys&) = delete;

  bool Allocated() const { return headerKey_ != nullptr && dataKey_ != nullptr; }
  uint8_t* HeaderKey() const { return headerKey_; }
  uint8_t* DataKey() const { return dataKey_; }

 private:
  void Release(uint8_t* key) const
  {
    if (key == nullptr) return;
    WipeBytes(key, length_);
    SysRelease(key);
  }

  uint32_t length_;
  uint8_t* headerKey_;
  uint8_t* dataKey_;
};

// The creation's progress callback: its context is the reporter.
uint32_t ReportCreationProgress(uint32_t position, uint32_t range, void* context, uint64_t)
{
  return static_cast<CreationReporter*>(context)->Progress(position, range) ? 1 : 0;
}

// Steps 2 to 5: the identity block, both keys and the image file.
StatusCode CreateImageFile(const CreationJob& job, CreationReporter& reporter)
{
  const uint32_t keyLength = job.keyBits / 8;
  uint8_t identityBlock[kIdentityBlockSize] = {};
  StatusCode status = CryptoRandomBytes(identityBlock, kIdentityBlockSize);
  if (IsFailure(status)) return status;

  const CreationKeys keys(keyLength);
  if (!keys.Allocated()) return kSysOutOfMemory;
  status = CryptoDeriveKey(job.password.data(), static_cast<uint32_t>(job.password.size()),
                           identityBlock, kIdentityBlockSize, keys.HeaderKey(), keyLength);
  if (IsFailure(status)) return status;
  status = CryptoGenerateKey(keys.DataKey(), keyLength);
  if (IsFailure(status)) return status;

  const ImageCreateParams params = CreationParams(job, &reporter);
  return ImgCreate(job.path.c_str(), &params, job.algorithm, kCipherModeCbc, keys.HeaderKey(),
                   keys.DataKey(), keyLength, identityBlock, kIdentityBlockSize);
}

}  // namespace

CreationJob::~CreationJob()
{
  WipeText(password);
}

ImageCreateParams CreationParams(const CreationJob& job, CreationReporter* reporter)
{
  ImageCreateParams params;
  params.recordSize = sizeof(ImageCreateParams);
  params.flags = job.fixedSize ? kCreateFixed : 0;
  params.capacity = job.capacity;
  params.volumeSizeLimit = job.fatCompatible ? kFileSystemLimit : kNoVolumeLimit;
  params.progress = ReportCreationProgress;
  params.progressContext = reporter;
  return params;
}

uint32_t FormatSelectorFor(uint64_t capacity)
{
  return capacity >= kLargeFormatCapacity ? kFormatSelectorLarge : kFormatSelectorSmall;
}

std::u16string TemporaryMountPoint(const std::u16string& freeLetters)
{
  if (freeLetters.empty()) return {};
  std::u16string mountPoint = u"A:";
  mountPoint[0] = freeLetters.back();
  return mountPoint;
}

StatusCode RunCreationWorker(const CreationJob& job, CreationReporter& reporter)
{
  StatusCode status = CreateImageFile(job, reporter);

  // The disk is readied even after a failed creation: the mount's status replaces the
  // creation's, so that is the one reported.
  const std::u16string mountPoint = TemporaryMountPoint(reporter.FreeDriveLetters());
  if (mountPoint.empty()) return status;
  DeviceHost& host = CurrentDeviceHost();
  status = host.MountWithPassword(job.path, mountPoint, kMountForFormatting, job.password);
  if (IsFailure(status)) return status;
  reporter.FormattingStarts(status);
  status = host.FormatVolume(mountPoint, FormatSelectorFor(job.capacity));
  host.DismountMountPoint(mountPoint, 1);
  return status;
}
