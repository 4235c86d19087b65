// Decrypted image-stream records from untrusted bytes: descriptor, information record and
// allocation table blocks.
#include <cstring>

#include "image/layout.h"
#include "image/records.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
  uint8_t unit[kUnitSize] = {};
  std::memcpy(unit, data, size < kUnitSize ? size : kUnitSize);
  Descriptor descriptor;
  DecodeDescriptor(unit, &descriptor);
  InfoRecord info;
  DecodeInfoRecord(unit, &info);
  CheckTableBlock(unit);
  return 0;
}
