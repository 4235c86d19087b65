// The virtual disk's requests from several threads at once on one handle: writes of
// neighbouring unaligned pieces that share units lose none of each other's bytes, writes
// over the same range leave one of them whole, reads see one write whole, and all of it
// holds after the image is closed and opened again; over fixed, dynamic and split images.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <thread>
#include <vector>

#include "image/disk_access.h"
#include "support/disk_image_test.h"
#include "support/image_fixture.h"

namespace {

constexpr uint64_t kMiB = 1 << 20;
constexpr unsigned kThreads = 4;

class DiskAccessThreads : public DiskImageTest {
 protected:
  // Closes the handle, opens the image read-only and returns `length` bytes at `offset`.
  std::vector<uint8_t> ReadAfterReopen(ImageHandle* handle, uint64_t offset, uint64_t length)
  {
    EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
    std::vector<uint8_t> bytes(length);
    handle = Open(kOpenReadOnly);
    if (handle == nullptr) return {};
    EXPECT_EQ(ImgReadDisk(handle, offset, bytes.data(), length), kStatusSuccess);
    EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
    return bytes;
  }
};

// The bytes of write `version` of a piece of `length` bytes; versions below 256 differ in
// every byte.
std::vector<uint8_t> Pattern(uint32_t version, uint64_t length)
{
  std::vector<uint8_t> bytes(length);
  for (uint64_t i = 0; i < length; ++i) {
    bytes[i] = static_cast<uint8_t>(version * 37 + i * 11 + (i >> 9) + 1);
  }
  return bytes;
}

struct Piece {
  uint64_t offset;
  uint64_t length;
};

// Cuts [start, start + total) into pieces at unaligned places: mostly shorter than three
// units, so that neighbours share units, and a few longer than a chunk.
std::vector<Piece> CutIntoPieces(uint64_t start, uint64_t total, std::mt19937_64& random)
{
  std::vector<Piece> pieces;
  for (uint64_t at = start; at < start + total;) {
    uint64_t length = 1 + random() % (3 * kUnitSize);
    if (pieces.size() % 97 == 50) length = kChunkSize + 1 + random() % kUnitSize;
    length = std::min(length, start + total - at);
    pieces.push_back({at, length});
    at += length;
  }
  return pieces;
}

TEST_P(DiskAccessThreads, NeighbouringPiecesThatShareUnitsAreAllKept)
{
  const uint64_t capacity = 8 * kMiB;
  ImageHandle* handle = Make(capacity);
  ASSERT_NE(handle, nullptr);
  std::mt19937_64 random(0xC0FFEE);
  const uint64_t start = kUnitSize + 123;
  const uint64_t total = 5 * kMiB + 777;
  const std::vector<Piece> pieces = CutIntoPieces(start, total, random);
  constexpr uint32_t kRounds = 3;

  // Piece p belongs to thread p % kThreads, which writes each of its pieces once a round in
  // an order of its own; the last round's bytes must stand. One more thread flushes.
  std::atomic<int> failures{0};
  std::atomic<bool> writing{true};
  std::vector<std::thread> threads;
  for (unsigned t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      std::mt19937_64 order(t);
      std::vector<size_t> mine;
      for (size_t p = t; p < pieces.size(); p += kThreads) mine.push_back(p);
      for (uint32_t round = 0; round < kRounds; ++round) {
        std::shuffle(mine.begin(), mine.end(), order);
        for (const size_t p : mine) {
          const std::vector<uint8_t> bytes = Pattern(round, pieces[p].length);
          if (IsFailure(ImgWriteDisk(handle, pieces[p].offset, bytes.data(), bytes.size()))) {
            ++failures;
          }
        }
      }
    });
  }
  std::thread flusher([&] {
    while (writing) {
      if (IsFailure(ImgFlushDisk(handle))) ++failures;
      std::this_thread::yield();
    }
  });
  for (std::thread& thread : threads) thread.join();
  writing = false;
  flusher.join();
  EXPECT_EQ(failures, 0);

  std::vector<uint8_t> expected(total);
  for (const Piece& piece : pieces) {
    const std::vector<uint8_t> bytes = Pattern(kRounds - 1, piece.length);
    std::copy(bytes.begin(), bytes.end(),
              expected.begin() + static_cast<ptrdiff_t>(piece.offset - start));
  }
  std::vector<uint8_t> disk(total);
  ASSERT_EQ(ImgReadDisk(handle, start, disk.data(), total), kStatusSuccess);
  for (const Piece& piece : pieces) {
    const auto at = static_cast<ptrdiff_t>(piece.offset - start);
    ASSERT_TRUE(std::equal(expected.begin() + at,
                           expected.begin() + at + static_cast<ptrdiff_t>(piece.length),
                           disk.begin() + at))
        << "piece at " << piece.offset << "+" << piece.length;
  }
  EXPECT_TRUE(ReadAfterReopen(handle, start, total) == expected);
}

TEST_P(DiskAccessThreads, WritesOverOneRangeLeaveOneOfThemWholeAndReadsSeeOneWhole)
{
  const uint64_t capacity = 8 * kMiB;
  ImageHandle* handle = Make(capacity);
  ASSERT_NE(handle, nullptr);
  // Unaligned at both ends and longer than a chunk, so one write is several transfers.
  const uint64_t offset = 3 * kMiB - 5000;
  const uint64_t length = kChunkSize + 3 * kUnitSize + 333;
  constexpr uint32_t kRounds = 6;
  std::vector<std::vector<uint8_t>> versions;
  for (uint32_t v = 0; v < kThreads * kRounds; ++v) versions.push_back(Pattern(v, length));
  const std::vector<uint8_t> zeros(length, 0);
  const auto isOneWrite = [&](const std::vector<uint8_t>& bytes) {
    return bytes == zeros || std::find(versions.begin(), versions.end(), bytes) != versions.end();
  };

  std::atomic<int> failures{0};
  std::atomic<int> mixed{0};
  std::atomic<bool> writing{true};
  std::vector<std::thread> threads;
  for (unsigned t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (uint32_t round = 0; round < kRounds; ++round) {
        const std::vector<uint8_t>& bytes = versions[t * kRounds + round];
        if (IsFailure(ImgWriteDisk(handle, offset, bytes.data(), length))) ++failures;
      }
    });
  }
  std::thread reader([&] {
    std::vector<uint8_t> bytes(length);
    while (writing) {
      if (IsFailure(ImgReadDisk(handle, offset, bytes.data(), length))) ++failures;
      if (!isOneWrite(bytes)) ++mixed;
    }
  });
  for (std::thread& thread : threads) thread.join();
  writing = false;
  reader.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(mixed, 0);

  std::vector<uint8_t> disk(length);
  ASSERT_EQ(ImgReadDisk(handle, offset, disk.data(), length), kStatusSuccess);
  EXPECT_TRUE(isOneWrite(disk) && disk != zeros);
  // The bytes around the range stay zero.
  uint8_t around[2] = {0xAA, 0xAA};
  ASSERT_EQ(ImgReadDisk(handle, offset - 1, around, 1), kStatusSuccess);
  ASSERT_EQ(ImgReadDisk(handle, offset + length, around + 1, 1), kStatusSuccess);
  EXPECT_EQ(around[0], 0);
  EXPECT_EQ(around[1], 0);
  ASSERT_EQ(ImgFlushDisk(handle), kStatusSuccess);
  EXPECT_TRUE(ReadAfterReopen(handle, offset, length) == disk);
}

const DiskCase kDiskCases[] = {
    {"AesFixed", kCipherAes, 16, kCreateFixed, 0},
    {"AesDynamic", kCipherAes, 16, 0, 0},
    {"BlowfishDynamicSplit", kCipherBlowfish, 16, 0, kHeaderSize + 3 * kMiB},
};

INSTANTIATE_TEST_SUITE_P(Images, DiskAccessThreads, testing::ValuesIn(kDiskCases),
                         [](const testing::TestParamInfo<DiskCase>& item) {
                           return std::string(item.param.name);
                         });

}  // namespace
