// How close creating and clearing a fixed image come to the disk: unbuffered,
// write-through 1 MiB writes of the same size through the file layer are the limit.
//
//   image_create_bench DIRECTORY [MEBIBYTES]     (default 1024)
//
// Prints MB/s for the raw writes, for enciphering alone on one thread, for ImgCreate of a
// fixed AES-256 image and for ImgClear of it, and the ratios to the raw writes.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>

#include "crypto/cipher.h"
#include "image/image.h"
#include "image/image_handle.h"
#include "image/layout.h"
#include "system/file.h"
#include "system/memory.h"
#include "system/utf.h"

namespace {

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

StatusCode RawWrites(const std::u16string& path, uint64_t bytes)
{
  auto* buffer = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocPageable));
  for (uint32_t i = 0; i < kChunkSize; ++i) buffer[i] = static_cast<uint8_t>(i * 151 + 7);
  SysFile* file = nullptr;
  StatusCode status =
      SysOpenFile(path.c_str(), kFileWritable | kFileCreate | kFileUnbuffered, &file);
  for (uint64_t done = 0; !IsFailure(status) && done < bytes; done += kChunkSize) {
    uint32_t written = 0;
    status = SysWriteFile(file, done, buffer, kChunkSize, &written);
  }
  if (!IsFailure(status)) status = SysFlushFile(file);
  SysCloseFile(file);
  SysDeleteFile(path.c_str());
  SysRelease(buffer);
  return status;
}

// Enciphers `bytes` of zero units in 1 MiB chunks on the calling thread.
StatusCode EncipherOnly(const uint8_t* key, uint64_t bytes)
{
  ImageSet set;
  StatusCode status = CipherCreate(kCipherAes, kCipherModeCbc, key, 32, &set.dataCipher);
  set.ivLength = 16;
  auto* input = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocZeroed | kAllocPageable));
  auto* output = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocPageable));
  for (uint64_t done = 0; !IsFailure(status) && done < bytes; done += kChunkSize) {
    status = CipherUnits(set, set.dataCipher, done, input, output, kChunkSize, true);
  }
  CipherDestroy(set.dataCipher);
  SysRelease(input);
  SysRelease(output);
  return status;
}

void PrintRow(const char* what, uint64_t bytes, double seconds, double rawSeconds)
{
  const double megabytesPerSecond = static_cast<double>(bytes) / 1e6 / seconds;
  std::printf("%-34s %8.0f MB/s   %5.2f x raw\n", what, megabytesPerSecond, rawSeconds / seconds);
}

}  // namespace

int main(int argc, char** argv)
{
  if (argc < 2) {
    std::fprintf(stderr, "usage: image_create_bench DIRECTORY [MEBIBYTES]\n");
    return 2;
  }
  const uint64_t bytes = (argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1024) << 20;
  const std::u16string directory = Utf8ToUtf16(argv[1]) + u"/";
  const std::u16string rawPath = directory + u"raw-writes.bin";
  const std::u16string imagePath = directory + u"bench.qvi";

  uint8_t key[32];
  uint8_t identity[64];
  for (int i = 0; i < 32; ++i) key[i] = static_cast<uint8_t>(i * 29 + 3);
  for (int i = 0; i < 64; ++i) identity[i] = static_cast<uint8_t>(i * 17 + 5);
  const ImageCreateParams params{
      sizeof(ImageCreateParams), kCreateFixed, bytes, 0, nullptr, nullptr};

  const double raw = Seconds([&] { return RawWrites(rawPath, bytes); });
  const double encipher = Seconds([&] { return EncipherOnly(key, bytes); });
  const double create = Seconds([&] {
    return ImgCreate(imagePath.c_str(), &params, kCipherAes, kCipherModeCbc, key, key, 32, identity,
                     64);
  });
  ImageHandle* handle = nullptr;
  const StatusCode opened = ImgOpen(imagePath.c_str(), 0, key, 32, &handle);
  const double clear =
      Seconds([&] { return IsFailure(opened) ? opened : ImgClear(handle, nullptr, nullptr); });
  ImgClose(handle, kCloseDiscard);

  std::printf("fixed AES-256 image of %llu MiB in %s\n",
              static_cast<unsigned long long>(bytes >> 20), argv[1]);
  PrintRow("raw unbuffered 1 MiB writes", bytes, raw, raw);
  PrintRow("enciphering alone, one thread", bytes, encipher, raw);
  PrintRow("ImgCreate, fixed", bytes, create, raw);
  PrintRow("ImgClear, fixed", bytes, clear, raw);
  return 0;
}
