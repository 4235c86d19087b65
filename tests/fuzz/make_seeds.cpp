// Writes the fuzz targets' seed inputs: a small dynamic image made with the fuzz keys,
// and its header and first record units in plain.
#include <cstdio>
#include <cstring>
#include <string>

#include "fuzz_keys.h"
#include "image/image.h"
#include "image/image_handle.h"
#include "system/utf.h"

namespace {

void Save(const std::string& path, const uint8_t* bytes, size_t size)
{
  FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return;
  std::fwrite(bytes, 1, size, file);
  std::fclose(file);
}

}  // namespace

int main(int argc, char** argv)
{
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_seeds DIRECTORY\n");
    return 2;
  }
  const std::string dir = argv[1];
  const std::string image = dir + "/open/dynamic.qvi";
  const std::u16string wide = Utf8ToUtf16(image);
  ImageCreateParams params;
  params.recordSize = sizeof params;
  params.capacity = 4u << 20;
  StatusCode status = ImgCreate(wide.c_str(), &params, kCipherAes, kCipherModeCbc, FuzzHeaderKey(),
                                FuzzDataKey(), kFuzzKeyLength, FuzzIdentityBlock(), 64);
  ImageHandle* handle = nullptr;
  if (!IsFailure(status))
    status = ImgOpen(wide.c_str(), kOpenReadOnly, FuzzHeaderKey(), 32, &handle);
  if (IsFailure(status)) {
    std::fprintf(stderr, "seed image: error code %X\n", status);
    return 1;
  }
  // The header as stored, and the plain descriptor, record and first table block.
  FILE* file = std::fopen(image.c_str(), "rb");
  uint8_t header[kHeaderSize];
  if (file != nullptr && std::fread(header, 1, sizeof header, file) == sizeof header) {
    Save(dir + "/header/volume0.bin", header, sizeof header);
  }
  if (file != nullptr) std::fclose(file);
  uint8_t units[3 * kUnitSize];
  if (!IsFailure(ReadStream(handle->set, 0, units, sizeof units))) {
    Save(dir + "/records/descriptor.bin", units, kUnitSize);
    Save(dir + "/records/info.bin", units + kUnitSize, kUnitSize);
    Save(dir + "/records/table.bin", units + 2 * kUnitSize, kUnitSize);
  }
  return IsFailure(ImgClose(handle, 0)) ? 1 : 0;
}
