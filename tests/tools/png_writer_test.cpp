// The screenshot tool's PNG encoder: signature, chunk layout and checksums, and pixels that
// come back unchanged through zlib.
#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tools/screenshot/png_writer.h"

namespace {

uint32_t BigEndian(const std::vector<uint8_t>& bytes, size_t at)
{
  return (uint32_t{bytes[at]} << 24) | (uint32_t{bytes[at + 1]} << 16) |
         (uint32_t{bytes[at + 2]} << 8) | uint32_t{bytes[at + 3]};
}

struct Chunk {
  std::string type;
  std::vector<uint8_t> data;
};

// Splits a PNG file into its chunks, checking every chunk's CRC on the way.
std::vector<Chunk> Chunks(const std::vector<uint8_t>& file)
{
  std::vector<Chunk> chunks;
  size_t at = 8;
  while (at + 12 <= file.size()) {
    const uint32_t length = BigEndian(file, at);
    Chunk chunk{std::string(file.begin() + static_cast<std::ptrdiff_t>(at + 4),
                            file.begin() + static_cast<std::ptrdiff_t>(at + 8)),
                std::vector<uint8_t>(file.begin() + static_cast<std::ptrdiff_t>(at + 8),
                                     file.begin() + static_cast<std::ptrdiff_t>(at + 8 + length))};
    const uLong crc = crc32(0, file.data() + at + 4, length + 4);
    EXPECT_EQ(BigEndian(file, at + 8 + length), static_cast<uint32_t>(crc)) << chunk.type;
    chunks.push_back(chunk);
    at += 12 + length;
  }
  EXPECT_EQ(at, file.size());
  return chunks;
}

RgbImage Gradient(uint32_t width, uint32_t height)
{
  RgbImage image{width, height, {}};
  for (uint32_t y = 0; y < height; ++y) {
    for (uint32_t x = 0; x < width; ++x) {
      image.pixels.push_back(static_cast<uint8_t>(x * 7));
      image.pixels.push_back(static_cast<uint8_t>(y * 13));
      image.pixels.push_back(static_cast<uint8_t>(x ^ y));
    }
  }
  return image;
}

TEST(PngWriterTest, FileHasSignatureHeaderDataAndEnd)
{
  const std::vector<uint8_t> file = EncodePng(Gradient(5, 3));
  ASSERT_GE(file.size(), 8u);
  EXPECT_EQ(std::vector<uint8_t>(file.begin(), file.begin() + 8),
            (std::vector<uint8_t>{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'}));
  const std::vector<Chunk> chunks = Chunks(file);
  ASSERT_EQ(chunks.size(), 3u);
  EXPECT_EQ(chunks[0].type, "IHDR");
  EXPECT_EQ(chunks[1].type, "IDAT");
  EXPECT_EQ(chunks[2].type, "IEND");
  EXPECT_TRUE(chunks[2].data.empty());
  // Width 5, height 3, 8-bit RGB, deflate, adaptive filters, no interlacing.
  EXPECT_EQ(chunks[0].data, (std::vector<uint8_t>{0, 0, 0, 5, 0, 0, 0, 3, 8, 2, 0, 0, 0}));
}

TEST(PngWriterTest, PixelsSurviveWithAFilterBytePerRow)
{
  const RgbImage image = Gradient(17, 9);
  const std::vector<Chunk> chunks = Chunks(EncodePng(image));
  ASSERT_EQ(chunks.size(), 3u);
  std::vector<uint8_t> raw((17 * 3 + 1) * 9);
  uLongf rawSize = static_cast<uLongf>(raw.size());
  ASSERT_EQ(uncompress(raw.data(), &rawSize, chunks[1].data.data(),
                       static_cast<uLong>(chunks[1].data.size())),
            Z_OK);
  ASSERT_EQ(rawSize, raw.size());
  std::vector<uint8_t> pixels;
  for (size_t row = 0; row < 9; ++row) {
    EXPECT_EQ(raw[row * 52], 0);  // filter type none
    pixels.insert(pixels.end(), raw.begin() + static_cast<std::ptrdiff_t>(row * 52 + 1),
                  raw.begin() + static_cast<std::ptrdiff_t>(row * 52 + 52));
  }
  EXPECT_EQ(pixels, image.pixels);
}

TEST(PngWriterTest, EmptyOrMismatchedImagesGiveNoFile)
{
  EXPECT_TRUE(EncodePng(RgbImage{}).empty());
  RgbImage wrong = Gradient(4, 4);
  wrong.pixels.pop_back();
  EXPECT_TRUE(EncodePng(wrong).empty());
}

}  // namespace
