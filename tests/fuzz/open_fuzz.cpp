// A whole open over an untrusted volume file: the bytes become the image's only volume
// file, which is opened with the fuzz key, queried, its table read, and closed.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "fuzz_keys.h"
#include "image/image_handle.h"
#include "system/utf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
  static const std::string path = "/tmp/cryptelle-open-fuzz-" + std::to_string(getpid()) + ".qvi";
  FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return 0;
  std::fwrite(data, 1, size, file);
  std::fclose(file);

  const std::u16string widePath = Utf8ToUtf16(path);
  ImageKeyInfo keyInfo;
  keyInfo.recordSize = sizeof keyInfo;
  ImgGetKeyInfo(widePath.c_str(), &keyInfo);
  ImageHandle* handle = nullptr;
  if (!IsFailure(
          ImgOpen(widePath.c_str(), kOpenReadOnly, FuzzHeaderKey(), kFuzzKeyLength, &handle))) {
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
  std::remove(path.c_str());
  return 0;
}
