// The virtual disk tests' image: one per case, made with the case's cipher, key length,
// creation flags and volume-file limit in a temporary directory, and opened with its keys.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "image/image_handle.h"
#include "support/image_fixture.h"

struct DiskCase {
  const char* name;
  uint32_t algorithm;
  uint32_t keyLength;
  uint32_t createFlags;
  uint64_t volumeLimit;
};

class DiskImageTest : public testing::TestWithParam<DiskCase> {
 protected:
  std::u16string Path() const { return dir_.File(u"disk.qvi"); }

  ImageHandle* Make(uint64_t capacity)
  {
    const DiskCase& c = GetParam();
    keys_ = ImageKeys(c.algorithm, c.keyLength, 5);
    EXPECT_EQ(CreateImage(Path(), keys_, CreateParams(capacity, c.createFlags, c.volumeLimit)),
              kStatusSuccess);
    return Open(0);
  }

  ImageHandle* Open(uint32_t flags)
  {
    ImageHandle* handle = nullptr;
    EXPECT_EQ(OpenImage(Path(), keys_, &handle, flags), kStatusSuccess);
    return handle;
  }

  TempDir dir_;
  ImageKeys keys_;
};
