// Writes the frozen images into a directory (normally tests/image/frozen). Run it only
// when the image format changes on purpose; the tests say when the files no longer match.
//
//   make_frozen_images DIRECTORY
#include <cstdio>

#include "frozen_images.h"
#include "system/utf.h"

int main(int argc, char** argv)
{
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_frozen_images DIRECTORY\n");
    return 2;
  }
  const std::u16string directory = Utf8ToUtf16(argv[1]) + u"/";
  for (const FrozenImage& image : kFrozenImages) {
    const StatusCode status = MakeFrozenImage(image, directory + image.name);
    std::printf("%s: %X\n", Utf16ToUtf8(image.name).c_str(), status);
    if (IsFailure(status)) return 1;
  }
  return 0;
}
