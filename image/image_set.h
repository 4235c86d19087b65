// An open set of volume files and the image stream that they hold together.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "crypto/cipher.h"
#include "image/layout.h"
#include "system/file.h"
#include "system/status.h"
#include "system/uuid.h"

// Set flags.
inline constexpr uint32_t kSetReadOnly = 0x1;
inline constexpr uint32_t kSetUnbuffered = 0x2;  // write-through, unbuffered volume files
inline constexpr uint32_t kSetEncrypted = 0x4;

struct Volume {
  SysFile* file = nullptr;
  uint64_t start = 0;       // image-stream offset of its first data byte
  uint64_t dataLength = 0;  // file size minus the header
};

struct ImageSet {
  uint32_t flags = 0;
  std::vector<Volume> volumes;
  size_t lastUsed = 0;  // where the search for an offset's volume starts
  Guid setIdentifier{};
  uint64_t creationTime = 0;  // 0 while the set is being created
  uint32_t unitSize = kUnitSize;
  uint64_t volumeSizeLimit = kNoVolumeLimit;
  std::u16string path;
  std::u16string directory;  // kept only for the file-system limit
  uint32_t algorithm = 0;
  uint32_t keyLength = 0;
  uint32_t mode = 0;
  uint8_t identityBlock[kIdentityBlockSize] = {};
  CipherContext* dataCipher = nullptr;
  CipherContext* headerCipher = nullptr;
  uint32_t ivLength = 0;
  uint8_t* workBuffer = nullptr;    // kChunkSize bytes, page-aligned
  uint8_t* headerBuffer = nullptr;  // 2 x kHeaderSize bytes for header rewrites, page-aligned

  bool IsEncrypted() const { return (flags & kSetEncrypted) != 0; }
  bool IsReadOnly() const { return (flags & kSetReadOnly) != 0; }
  uint64_t StreamEnd() const;
};

// Allocates the work and header buffers; kImgOutOfMemory if it cannot.
StatusCode AllocateSetBuffers(ImageSet& set);

// The name of volume file `index` of the image at `path`.
std::u16string VolumeFilePath(const std::u16string& path, uint32_t index);

// The directory part of a path, up to and including its last backslash or slash.
std::u16string VolumeDirectory(const std::u16string& path);

// Creates volume file `volumes.size()` with its header (holding `dataKey` when given), marks
// the previous one as followed, and links the new one behind the others.
StatusCode CreateNextVolume(ImageSet& set, const uint8_t* dataKey);

// Opens the volume files behind volume 0 (already open and verified) while their headers
// say that a further file follows.
StatusCode LinkFurtherVolumes(ImageSet& set, uint32_t firstInnerFlags);

// Image-stream I/O: whole units, at unit-aligned offsets, through the work buffer.
StatusCode ReadStream(ImageSet& set, uint64_t offset, uint8_t* buffer, uint64_t length);
StatusCode WriteStream(ImageSet& set, uint64_t offset, const uint8_t* buffer, uint64_t length);

// Enciphers or deciphers `length` bytes of whole units that belong at stream offset
// `offset`, each unit chained from its own vector, with `cipher` (the set's data cipher
// or a copy of it).
StatusCode CipherUnits(const ImageSet& set, CipherContext* cipher, uint64_t offset,
                       const uint8_t* input, uint8_t* output, uint32_t length, bool encrypt);

// How WriteEnciphered writes.
enum class EncipheredWrite {
  // Behind: stable after FlushVolumes, past the system's cache where the transfer allows it,
  // so no other transfer on the set's files may run meanwhile. For the bulk of the content
  // that creation writes and one flush closes; headers still write as the files do.
  kBehind,
  // As the volume files write (into the system's cache unless the set is unbuffered).
  kAsFilesWrite,
};

// Writes at most one chunk of bytes that are already as they go on disk (enciphered by
// CipherUnits when the set is encrypted).
StatusCode WriteEnciphered(ImageSet& set, uint64_t offset, const uint8_t* bytes, uint32_t length,
                           EncipheredWrite how);

// A run of the image stream as it lies in one volume file.
struct StreamPiece {
  SysFile* file = nullptr;
  uint64_t fileOffset = 0;
  uint32_t length = 0;
};

// The pieces of the volume files that hold `length` bytes (whole units, at most one chunk)
// of the stream from `offset`, in order. kImgReadPastEnd when the stream ends before.
StatusCode LocateStream(ImageSet& set, uint64_t offset, uint32_t length,
                        std::vector<StreamPiece>* pieces);

// Reads located pieces one after the other into `bytes`, as they lie on disk (still
// enciphered when the set is). It touches nothing of the set: a caller that located them
// under a lock may read them outside it, since volume files stay open until CloseSet.
StatusCode ReadPieces(const std::vector<StreamPiece>& pieces, uint8_t* bytes);

// Cuts the stream at `offset`, deleting every volume file behind the one that covers it.
StatusCode TruncateStream(ImageSet& set, uint64_t offset);

// Flushes every volume file to disk.
StatusCode FlushVolumes(ImageSet& set);

// Closes every volume file, last first; with `discard` deletes them too. Destroys the
// cipher contexts and releases the work buffer. Returns the first failure.
StatusCode CloseSet(ImageSet& set, bool discard);
