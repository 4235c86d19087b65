#include <cstring>
#include <new>

#include "image/bytes.h"
#include "image/image_handle.h"
#include "image/volume_header.h"
#include "system/clock.h"
#include "system/memory.h"

namespace {

// A page-aligned unit buffer for header and record transfers, released on every path.
struct UnitBuffer {
  uint8_t* data = static_cast<uint8_t*>(SysAllocate(kUnitSize, kAllocZeroed | kAllocPageable));
  ~UnitBuffer() { SysRelease(data); }
};

// Handles live in memory from the allocation routine, like the rest of the container's.
ImageHandle* NewHandle()
{
  void* memory = SysAllocate(sizeof(ImageHandle), kAllocZeroed | kAllocPageable);
  return memory != nullptr ? new (memory) ImageHandle : nullptr;
}

void DeleteHandle(ImageHandle* handle)
{
  handle->~ImageHandle();
  SysRelease(handle);
}

StatusCode CreateCiphers(ImageSet& set, const uint8_t* headerKey, const uint8_t* dataKey)
{
  StatusCode status =
      CipherCreate(set.algorithm, set.mode, headerKey, set.keyLength, &set.headerCipher);
  if (!IsFailure(status)) {
    status = CipherCreate(set.algorithm, set.mode, dataKey, set.keyLength, &set.dataCipher);
  }
  CipherInfo info{};
  if (!IsFailure(status)) status = CipherQuery(set.dataCipher, &info, sizeof info);
  set.ivLength = info.blockSize;
  return status;
}

// Opens volume 0 and takes the set's parameters and keys from its header.
StatusCode OpenFirstVolume(ImageSet& set, uint32_t openFlags, const uint8_t* headerKey,
                           uint32_t keyLength, uint32_t* innerFlags)
{
  SysFile* file = nullptr;
  const uint32_t fileFlags = ((openFlags & kOpenReadOnly) != 0 ? 0 : kFileWritable) |
                             ((openFlags & kOpenUnbuffered) != 0 ? kFileUnbuffered : 0);
  StatusCode status = SysOpenFile(set.path.c_str(), fileFlags, &file);
  if (IsFailure(status)) return status;
  set.volumes.push_back(Volume{file, 0, 0});

  uint8_t* header = set.headerBuffer;
  uint32_t done = 0;
  status = SysReadFile(file, 0, header, kHeaderSize, &done);
  if (IsFailure(status)) return status;
  if (done != kHeaderSize) return kImgWrongPassword;
  PlainHeaderFields fields{};
  status = ReadPlainFields(header, &fields);
  if (IsFailure(status)) return status;
  if ((fields.outerFlags & header::kFlagEncrypted) == 0) return kImgPlainImage;
  if (fields.keyLength != keyLength) return kImgKeyLengthMismatch;
  set.algorithm = fields.algorithm;
  set.mode = fields.mode;
  set.keyLength = fields.keyLength;
  std::memcpy(set.identityBlock, header, kIdentityBlockSize);

  status = CipherCreate(set.algorithm, set.mode, headerKey, keyLength, &set.headerCipher);
  CipherInfo info{};
  if (!IsFailure(status)) status = CipherQuery(set.headerCipher, &info, sizeof info);
  set.ivLength = info.blockSize;
  if (!IsFailure(status)) status = UnsealHeader(set, set.headerCipher, header);
  if (!IsFailure(status)) {
    status = CipherCreate(set.algorithm, set.mode, header + header::kDataKey, keyLength,
                          &set.dataCipher);
  }
  if (IsFailure(status)) return status;

  std::memcpy(&set.setIdentifier, header + header::kSetIdentifier, sizeof set.setIdentifier);
  set.creationTime = Load<uint64_t>(header + header::kCreationTime);
  set.unitSize = Load<uint32_t>(header + header::kUnitSize);
  set.volumeSizeLimit = Load<uint64_t>(header + header::kVolumeLimit);
  if (set.unitSize != kUnitSize) return kImgWrongPassword;
  if (set.volumeSizeLimit == kFileSystemLimit) set.directory = VolumeDirectory(set.path);
  *innerFlags = Load<uint32_t>(header + header::kInnerFlags);

  uint64_t size = 0;
  status = SysGetFileSize(file, &size);
  if (IsFailure(status)) return status;
  if (size < kHeaderSize) return kImgWrongPassword;
  set.volumes[0].dataLength = size - kHeaderSize;
  return kStatusSuccess;
}

// Reads descriptor, information record and the first table block into the handle, and
// marks a writable image as in use.
StatusCode LoadImageState(ImageHandle& handle)
{
  ImageSet& set = handle.set;
  UnitBuffer unit;
  if (unit.data == nullptr) return kImgOutOfMemory;
  StatusCode status = ReadStream(set, 0, unit.data, kUnitSize);
  Descriptor d;
  if (!IsFailure(status)) status = DecodeDescriptor(unit.data, &d);
  if (IsFailure(status)) return status;
  if ((d.flags & kImageBeingCreated) != 0) return kImgCreationUnfinished;

  if (!set.IsReadOnly() && (d.flags & kImageNeverInUse) == 0) {
    d.flags |= kImageInUse;
    d.lastOpenTime = SysUnixTime();
    EncodeDescriptor(d, unit.data);
    status = WriteStream(set, 0, unit.data, kUnitSize);
    if (IsFailure(status)) return status;
  }
  handle.flags = d.flags;
  handle.imageIdentifier = d.imageIdentifier;
  handle.blockSize = d.blockSize;
  handle.blockCount = d.blockCount;
  handle.capacity = uint64_t{d.blockSize} * d.blockCount;
  handle.dataOffset = d.dataOffset;
  handle.creationTime = d.creationTime;
  handle.lastOpenTime = d.lastOpenTime;
  handle.descriptorReserved = d.reserved;
  handle.afterDescriptorOffset = d.afterDescriptorOffset;
  handle.infoOffset = d.infoOffset;

  InfoRecord info;
  status = ReadStream(set, d.infoOffset, unit.data, kUnitSize);
  if (!IsFailure(status)) status = DecodeInfoRecord(unit.data, &info);
  if (IsFailure(status) || info.tableBlocks == 0) return status;
  handle.tableCache = MakeTableCache(set, info.tableOffset, info.tableBlocks);
  if (handle.tableCache == nullptr) return kImgOutOfMemory;
  status = handle.tableCache->Allocate();
  int slot = 0;
  if (!IsFailure(status)) status = handle.tableCache->Load(0, &slot);
  // A cache that could not be set up is released at once, not left to the handle.
  if (IsFailure(status)) handle.tableCache.reset();
  return status;
}

}  // namespace

StatusCode ImgGetKeyInfo(const char16_t* path, ImageKeyInfo* info)
{
  if (path == nullptr || info == nullptr || info->recordSize < sizeof(ImageKeyInfo)) {
    return kImgInvalidParameter;
  }
  UnitBuffer header;
  if (header.data == nullptr) return kImgOutOfMemory;
  SysFile* file = nullptr;
  StatusCode status = SysOpenFile(path, kFileUnbuffered | kFileShareRead, &file);
  if (IsFailure(status)) return status;
  uint32_t done = 0;
  status = SysReadFile(file, 0, header.data, kHeaderSize, &done);
  SysCloseFile(file);
  if (IsFailure(status)) return status;

  PlainHeaderFields fields{};
  if (done != kHeaderSize || IsFailure(ReadPlainFields(header.data, &fields)) ||
      fields.plainVersion != header::kPlainVersionValue ||
      fields.plainSize != header::kPlainSizeValue) {
    return kImgWrongPassword;
  }
  if ((fields.outerFlags & header::kFlagEncrypted) == 0) return kImgPlainImage;
  info->algorithm = fields.algorithm;
  info->keyLength = fields.keyLength;
  info->mode = fields.mode;
  std::memcpy(info->identityBlock, header.data, kIdentityBlockSize);
  return kStatusSuccess;
}

StatusCode ImgCreate(const char16_t* path, const ImageCreateParams* params, uint32_t algorithm,
                     uint32_t mode, const uint8_t* headerKey, const uint8_t* dataKey,
                     uint32_t keyLength, const uint8_t* identityBlock, uint32_t identityBlockLength)
{
  if (path == nullptr || *path == u'\0' || params == nullptr || headerKey == nullptr ||
      dataKey == nullptr || keyLength == 0 || identityBlock == nullptr ||
      params->recordSize != sizeof(ImageCreateParams) ||
      identityBlockLength != kIdentityBlockSize || params->capacity == 0) {
    return kImgInvalidParameter;
  }
  // A limit that leaves no room for one unit behind the header could never be filled.
  if (params->volumeSizeLimit >= kHeaderSize && params->volumeSizeLimit < kHeaderSize + kUnitSize) {
    return kImgInvalidParameter;
  }
  try {
    ImageSet set;
    set.flags = kSetUnbuffered | kSetEncrypted;
    set.path = path;
    set.volumeSizeLimit = params->volumeSizeLimit;
    if (set.volumeSizeLimit == kFileSystemLimit) set.directory = VolumeDirectory(set.path);
    set.algorithm = algorithm;
    set.mode = mode;
    set.keyLength = keyLength;
    std::memcpy(set.identityBlock, identityBlock, kIdentityBlockSize);
    StatusCode status = AllocateSetBuffers(set);
    if (!IsFailure(status)) status = CreateCiphers(set, headerKey, dataKey);
    if (!IsFailure(status)) status = CreateNextVolume(set, dataKey);
    if (IsFailure(status)) {
      CloseSet(set, false);
      return status;
    }
    status = CreateStreamContent(set, params->capacity, params->flags | kImageCreatedFlag,
                                 params->progress, params->progressContext);
    if (IsFailure(status)) {
      CloseSet(set, true);
      return status;
    }
    return CloseSet(set, false);
  } catch (const std::bad_alloc&) {
    return kImgOutOfMemory;
  }
}

StatusCode ImgOpen(const char16_t* path, uint32_t openFlags, const uint8_t* headerKey,
                   uint32_t keyLength, ImageHandle** handle)
{
  if (path == nullptr || headerKey == nullptr || keyLength == 0 || handle == nullptr) {
    return kImgInvalidParameter;
  }
  ImageHandle* opened = NewHandle();
  if (opened == nullptr) return kImgOutOfMemory;
  StatusCode status = kStatusSuccess;
  try {
    ImageSet& set = opened->set;
    set.path = path;
    set.flags = kSetEncrypted | ((openFlags & kOpenReadOnly) != 0 ? kSetReadOnly : 0) |
                ((openFlags & kOpenUnbuffered) != 0 ? kSetUnbuffered : 0);
    uint32_t innerFlags = 0;
    status = AllocateSetBuffers(set);
    if (!IsFailure(status))
      status = OpenFirstVolume(set, openFlags, headerKey, keyLength, &innerFlags);
    if (!IsFailure(status)) status = LinkFurtherVolumes(set, innerFlags);
    if (!IsFailure(status)) status = LoadImageState(*opened);
    if (status == kStatusInformation && (openFlags & kOpenAcceptInformation) != 0) {
      opened->information = kStatusInformation;
    }
  } catch (const std::bad_alloc&) {
    status = kImgOutOfMemory;
  }
  if (IsFailure(status)) {
    opened->tableCache.reset();
    CloseSet(opened->set, false);
    DeleteHandle(opened);
    return status;
  }
  *handle = opened;
  return kStatusSuccess;
}

StatusCode ImgGetProperties(const ImageHandle* handle, ImageProperties* properties)
{
  if (handle == nullptr || properties == nullptr) return kImgInvalidParameter;
  if (properties->recordSize < sizeof(ImageProperties)) return kImgBufferTooSmall;
  const ImageSet& set = handle->set;
  properties->flags =
      handle->flags | handle->information | (set.IsReadOnly() ? kPropertyReadOnly : 0);
  properties->imageIdentifier = handle->imageIdentifier;
  properties->creationTime = handle->creationTime;
  properties->lastOpenTime = handle->lastOpenTime;
  properties->capacity = handle->capacity;
  properties->volumeSizeLimit = set.volumeSizeLimit;
  properties->blockSize = handle->blockSize;
  properties->algorithm = set.algorithm;
  properties->keyLength = set.keyLength;
  properties->mode = set.mode;
  return kStatusSuccess;
}

StatusCode ImgChangeKey(ImageHandle* handle, const uint8_t* newHeaderKey, uint32_t keyLength)
{
  if (handle == nullptr || newHeaderKey == nullptr || handle->set.volumes.empty()) {
    return kImgInvalidParameter;
  }
  ImageSet& set = handle->set;
  if (!set.IsEncrypted()) return kImgNotEncrypted;
  if (keyLength != set.keyLength) return kImgInvalidParameter;

  CipherContext* newCipher = nullptr;
  StatusCode status = CipherCreate(set.algorithm, set.mode, newHeaderKey, keyLength, &newCipher);
  if (IsFailure(status)) return status;
  uint8_t* oldHeader = set.headerBuffer;
  uint8_t* newHeader = set.headerBuffer + kHeaderSize;
  // Last volume file first; each gets a whole new header (fresh noise) under the new key.
  for (size_t index = set.volumes.size(); index-- > 0 && !IsFailure(status);) {
    SysFile* file = set.volumes[index].file;
    status = ReadVolumeHeader(set, file, oldHeader);
    if (!IsFailure(status)) {
      status = BuildVolumeHeader(set, newCipher, static_cast<uint32_t>(index),
                                 Load<uint32_t>(oldHeader + header::kInnerFlags),
                                 oldHeader + header::kDataKey, newHeader);
    }
    uint32_t done = 0;
    if (!IsFailure(status)) status = SysWriteFile(file, 0, newHeader, kHeaderSize, &done);
  }
  CipherContext* retired = IsFailure(status) ? newCipher : set.headerCipher;
  if (!IsFailure(status)) set.headerCipher = newCipher;
  CipherDestroy(retired);
  return status;
}

StatusCode ImgClear(ImageHandle* handle, ProgressCallback progress, void* context)
{
  if (handle == nullptr || handle->set.volumes.empty()) return kImgInvalidParameter;
  if (handle->set.IsReadOnly()) return kImgReadOnly;
  try {
    handle->tableCache.reset();
    const StatusCode status =
        CreateStreamContent(handle->set, handle->capacity, handle->flags, progress, context);
    if (IsFailure(status)) return status;
    return LoadImageState(*handle);
  } catch (const std::bad_alloc&) {
    return kImgOutOfMemory;
  }
}

StatusCode ImgClose(ImageHandle* handle, uint32_t closeFlags)
{
  if (handle == nullptr) return kImgInvalidParameter;
  ImageSet& set = handle->set;
  const bool force = (closeFlags & kCloseForce) != 0;
  const bool discard = (closeFlags & kCloseDiscard) != 0;
  if (!set.IsReadOnly()) {
    StatusCode status = handle->tableCache ? handle->tableCache->Flush() : kStatusSuccess;
    if (!IsFailure(status)) status = FlushVolumes(set);
    if (IsFailure(status) && !force) return status;
    if (!discard) {
      // Clear the in-use mark; a failure here does not keep the image from closing.
      UnitBuffer unit;
      Descriptor d;
      if (unit.data != nullptr && !IsFailure(ReadStream(set, 0, unit.data, kUnitSize)) &&
          !IsFailure(DecodeDescriptor(unit.data, &d))) {
        d.flags &= ~kImageInUse;
        EncodeDescriptor(d, unit.data);
        WriteStream(set, 0, unit.data, kUnitSize);
      }
    }
  }
  const StatusCode status = CloseSet(set, discard);
  if (IsFailure(status) && !force) return status;
  DeleteHandle(handle);
  return kStatusSuccess;
}
