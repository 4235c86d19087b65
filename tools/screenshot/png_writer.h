// Encodes pictures as PNG files: 8-bit RGB, no interlacing, one zlib stream. Portable, so
// the encoder is tested natively as well as in the Windows screenshot tool.
#pragma once

#include <cstdint>
#include <vector>

struct RgbImage {
  uint32_t width = 0;
  uint32_t height = 0;
  std::vector<uint8_t> pixels;  // red, green, blue per pixel; rows from top to bottom
};

// The PNG file's bytes; empty when the image is empty or its pixel count does not match.
std::vector<uint8_t> EncodePng(const RgbImage& image);
