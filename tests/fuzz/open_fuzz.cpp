// A whole open over an untrusted volume file: the bytes become the image's only volume
// file, which is opened with the fuzz key, queried, its table read, and closed. The file
// lives in memory (files_in_memory), so each input costs no system call for its file.
#include <string>

#include "fuzz_keys.h"
#include "image/image_handle.h"
#include "system/files_in_memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
  static const std::u16string path = u"/fuzz/open.qvi";
  PutFileInMemory(path, data, size);

  ImageKeyInfo keyInfo;
  keyInfo.recordSize = sizeof keyInfo;
  ImgGetKeyInfo(path.c_str(), &keyInfo);
  ImageHandle* handle = nullptr;
  if (!IsFailure(ImgOpen(path.c_str(), kOpenReadOnly, FuzzHeaderKey(), kFuzzKeyLength, &handle))) {
    ImageProperties properties;
    properties.recordSize = sizeof properties;
    ImgGetProperties(handle, &properties);
    if (handle->tableCache) {
      int slot = 0;
      for (uint32_t block = 0; block < handle->tableCache->TableBlocks() && block < 64; ++block) {
        handle->tableCache->Load(block, &slot);
      }
    }
    ImgClose(handle, 0);
  }
  ClearFilesInMemory();
  return 0;
}
