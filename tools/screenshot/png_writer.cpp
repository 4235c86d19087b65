#include "tools/screenshot/png_writer.h"

#include <zlib.h>

#include <array>
#include <string_view>

namespace {

void PutBigEndian(std::vector<uint8_t>& out, uint32_t value)
{
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(value >> shift));
}

// A chunk: length, type, data, and the CRC-32 of type and data.
void PutChunk(std::vector<uint8_t>& out, std::string_view type, const std::vector<uint8_t>& data)
{
  PutBigEndian(out, static_cast<uint32_t>(data.size()));
  const size_t typeStart = out.size();
  out.insert(out.end(), type.begin(), type.end());
  out.insert(out.end(), data.begin(), data.end());
  const uLong crc = crc32(0, out.data() + typeStart, static_cast<uInt>(out.size() - typeStart));
  PutBigEndian(out, static_cast<uint32_t>(crc));
}

}  // namespace

std::vector<uint8_t> EncodePng(const RgbImage& image)
{
  const size_t rowBytes = static_cast<size_t>(image.width) * 3;
  if (image.width == 0 || image.height == 0 || image.pixels.size() != rowBytes * image.height) {
    return {};
  }
  // Every row starts with its filter type; 0 (none) keeps the encoder simple.
  std::vector<uint8_t> raw;
  raw.reserve((rowBytes + 1) * image.height);
  for (uint32_t row = 0; row < image.height; ++row) {
    raw.push_back(0);
    const auto start = image.pixels.begin() + static_cast<std::ptrdiff_t>(rowBytes * row);
    raw.insert(raw.end(), start, start + static_cast<std::ptrdiff_t>(rowBytes));
  }
  uLongf packedSize = compressBound(static_cast<uLong>(raw.size()));
  std::vector<uint8_t> packed(packedSize);
  if (compress2(packed.data(), &packedSize, raw.data(), static_cast<uLong>(raw.size()),
                Z_BEST_COMPRESSION) != Z_OK) {
    return {};
  }
  packed.resize(packedSize);

  std::vector<uint8_t> header;
  PutBigEndian(header, image.width);
  PutBigEndian(header, image.height);
  const std::array<uint8_t, 5> format = {8, 2, 0, 0, 0};  // depth, RGB, deflate, filters, plain
  header.insert(header.end(), format.begin(), format.end());

  std::vector<uint8_t> file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  PutChunk(file, "IHDR", header);
  PutChunk(file, "IDAT", packed);
  PutChunk(file, "IEND", {});
  return file;
}
