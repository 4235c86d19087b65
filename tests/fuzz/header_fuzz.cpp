// Volume file headers from untrusted bytes: unmasking, decryption and verification.
#include <cstring>

#include "fuzz_keys.h"
#include "image/image_set.h"
#include "image/volume_header.h"
#include "system/memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
  static uint8_t* header = static_cast<uint8_t*>(SysAllocate(kHeaderSize, kAllocPageable));
  std::memset(header, 0, kHeaderSize);
  std::memcpy(header, data, size < kHeaderSize ? size : kHeaderSize);

  PlainHeaderFields fields{};
  if (IsFailure(ReadPlainFields(header, &fields))) return 0;
  ImageSet set;
  set.flags = (fields.outerFlags & header::kFlagEncrypted) != 0 ? kSetEncrypted : 0;
  std::memcpy(set.identityBlock, header, kIdentityBlockSize);
  set.algorithm = fields.algorithm;
  set.mode = fields.mode;
  // Decrypt with a fixed key of the header's algorithm when that key length suits it.
  CipherContext* cipher = nullptr;
  if (set.IsEncrypted() && IsFailure(CipherCreate(fields.algorithm, fields.mode, FuzzHeaderKey(),
                                                  fields.keyLength, &cipher))) {
    return 0;
  }
  CipherInfo info{};
  if (cipher != nullptr) CipherQuery(cipher, &info, sizeof info);
  set.ivLength = info.blockSize;
  if (set.ivLength != 1) UnsealHeader(set, cipher, header);
  if (cipher != nullptr) CipherDestroy(cipher);
  return 0;
}
