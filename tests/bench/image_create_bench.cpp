// How close creating and clearing a fixed AES-256 image come to the disk's limit, measured
// in the same run on the same file system (disk_limit.h), and how long changing an image's
// password takes at two sizes.
//
//   image_create_bench DIRECTORY [MEBIBYTES] [RUNS]     (defaults 1024 and 3)
//
// Each run deletes the image of the run before (untimed, as the limit's own file is deleted
// outside its time, and each deletion waits until the file system has freed the blocks, so
// that no measurement pays for the one before), then measures the limit, ImgCreate, and ImgClear of
// the image just made (opened as the clear command opens it; timed up to its ImgClose, which ends
// the clear's flushing), and prints their speeds and ratios, and how long deleting the limit's file
// took: the file system's price for freeing that many blocks, which the clear pays when it cuts the
// old content off (the last column compares the clear with the limit and that price together). Then
// the spread of the ratios over the runs. Last, the change-password flow (key information, two key
// derivations, open, change of key, close) on a 64 MiB and on the benchmark's image, the median of
// five.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "crypto/cipher.h"
#include "crypto/keys.h"
#include "dialogs/change_password.h"
#include "disk_limit.h"
#include "image/image.h"
#include "system/file.h"
#include "system/utf.h"

namespace {

const std::u16string kPasswords[2] = {u"benchmark password one", u"benchmark password two"};

double Seconds(const std::function<StatusCode()>& body)
{
  const auto start = std::chrono::steady_clock::now();
  const StatusCode status = body();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  if (IsFailure(status)) {
    std::fprintf(stderr, "failed with %X\n", status);
    std::exit(1);
  }
  return elapsed.count();
}

// An image's keys: the header key from the first password, salted with its identity block.
struct BenchKeys {
  uint8_t identity[64];
  uint8_t headerKey[32];
  uint8_t dataKey[32];
  BenchKeys()
  {
    for (int i = 0; i < 64; ++i) identity[i] = static_cast<uint8_t>(i * 17 + 5);
    for (int i = 0; i < 32; ++i) dataKey[i] = static_cast<uint8_t>(i * 29 + 3);
    const std::u16string& password = kPasswords[0];
    CryptoDeriveKey(password.c_str(), static_cast<uint32_t>(password.size()), identity, 64,
                    headerKey, 32);
  }
};

StatusCode Create(const std::u16string& path, uint64_t bytes, const BenchKeys& keys)
{
  const ImageCreateParams params{
      sizeof(ImageCreateParams), kCreateFixed, bytes, 0, nullptr, nullptr};
  return ImgCreate(path.c_str(), &params, kCipherAes, kCipherModeCbc, keys.headerKey, keys.dataKey,
                   32, keys.identity, 64);
}

// Opens as the clear command does (flags 0), then times the clear up to its close.
double ClearSeconds(const std::u16string& path, const BenchKeys& keys)
{
  ImageHandle* handle = nullptr;
  const StatusCode opened = ImgOpen(path.c_str(), 0, keys.headerKey, 32, &handle);
  return Seconds([&] {
    if (IsFailure(opened)) return opened;
    const StatusCode cleared = ImgClear(handle, nullptr, nullptr);
    const StatusCode closed = ImgClose(handle, 0);
    return IsFailure(cleared) ? cleared : closed;
  });
}

// The median of five password changes, milliseconds; the image ends under the first
// password again.
double ChangePasswordMilliseconds(const std::u16string& path)
{
  std::vector<double> times;
  for (int i = 0; i < 5; ++i) {
    const std::u16string& from = kPasswords[i % 2];
    const std::u16string& to = kPasswords[(i + 1) % 2];
    times.push_back(Seconds([&] { return ChangeImagePassword(path, from, to); }) * 1e3);
  }
  Seconds([&] { return ChangeImagePassword(path, kPasswords[1], kPasswords[0]); });
  std::sort(times.begin(), times.end());
  return times[2];
}

double MegabytesPerSecond(uint64_t bytes, double seconds)
{
  return static_cast<double>(bytes) / 1e6 / seconds;
}

void PrintSpread(const char* what, std::vector<double> ratios)
{
  std::sort(ratios.begin(), ratios.end());
  std::printf("%-22s min %.2f  median %.2f  max %.2f\n", what, ratios.front(),
              ratios[ratios.size() / 2], ratios.back());
}

}  // namespace

int main(int argc, char** argv)
{
  if (argc < 2) {
    std::fprintf(stderr, "usage: image_create_bench DIRECTORY [MEBIBYTES] [RUNS]\n");
    return 2;
  }
  const std::string directory = argv[1];
  const uint64_t bytes = (argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1024) << 20;
  const int runs = argc > 3 ? std::max(1, std::atoi(argv[3])) : 3;
  const std::u16string imagePath = Utf8ToUtf16(directory) + u"/bench.qvi";
  const std::u16string smallPath = Utf8ToUtf16(directory) + u"/bench-64.qvi";
  const BenchKeys keys;

  std::printf("fixed AES-256 image of %llu MiB in %s, %d runs\n",
              static_cast<unsigned long long>(bytes >> 20), directory.c_str(), runs);
  std::printf("limit: %s\n", DiskLimitMethod());
  std::printf("%-4s %14s %16s %6s %16s %6s %14s %14s\n", "run", "limit", "ImgCreate", "ratio",
              "ImgClear", "ratio", "delete limit", "clear ratio 2");
  std::vector<double> createRatios;
  std::vector<double> clearRatios;
  for (int run = 1; run <= runs; ++run) {
    SysDeleteFile(imagePath.c_str());
    SettleFreedBlocks(directory);
    const DiskLimit measured = MeasureDiskLimit(directory, bytes);
    const double limit = measured.writeSeconds;
    if (limit < 0) {
      std::fprintf(stderr, "the limit's writes failed\n");
      return 1;
    }
    const double create = Seconds([&] { return Create(imagePath, bytes, keys); });
    const double clear = ClearSeconds(imagePath, keys);
    createRatios.push_back(limit / create);
    clearRatios.push_back(limit / clear);
    std::printf("%-4d %9.0f MB/s %11.0f MB/s %6.2f %11.0f MB/s %6.2f %12.3f s %14.2f\n", run,
                MegabytesPerSecond(bytes, limit), MegabytesPerSecond(bytes, create),
                createRatios.back(), MegabytesPerSecond(bytes, clear), clearRatios.back(),
                measured.deleteSeconds, (limit + measured.deleteSeconds) / clear);
  }
  PrintSpread("ImgCreate / limit:", createRatios);
  PrintSpread("ImgClear / limit:", clearRatios);
  std::printf(
      "clear ratio 2 = (limit + delete limit) / ImgClear: the limit with the price of\n"
      "freeing the old content's blocks, which the clear's cut pays first\n");

  Seconds([&] { return Create(smallPath, 64ull << 20, keys); });
  const double small = ChangePasswordMilliseconds(smallPath);
  const double large = ChangePasswordMilliseconds(imagePath);
  std::printf("change-password flow, median of 5: 64 MiB %.1f ms, %llu MiB %.1f ms\n", small,
              static_cast<unsigned long long>(bytes >> 20), large);

  for (const std::u16string& path : {imagePath, smallPath}) {
    ImageHandle* handle = nullptr;
    if (!IsFailure(ImgOpen(path.c_str(), 0, keys.headerKey, 32, &handle))) {
      ImgClose(handle, kCloseDiscard);
    }
  }
  return 0;
}
