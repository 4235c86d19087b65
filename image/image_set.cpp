#include "image/image_set.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "image/bytes.h"
#include "image/volume_header.h"
#include "system/memory.h"

namespace {

uint32_t FileFlags(const ImageSet& set)
{
  uint32_t flags = set.IsReadOnly() ? 0 : kFileWritable;
  if ((set.flags & kSetUnbuffered) != 0) flags |= kFileUnbuffered;
  return flags;
}

StatusCode CheckRequest(const ImageSet& set, uint64_t offset, uint64_t length)
{
  if (offset % set.unitSize != 0 || length % set.unitSize != 0) return kImgMisaligned;
  if (set.volumes.empty()) return kImgInvalidParameter;
  return kStatusSuccess;
}

// The volume whose range covers `offset` (start <= offset <= start + data length),
// searched from the volume used last; false when no volume covers it.
bool FindVolume(ImageSet& set, uint64_t offset, size_t* index)
{
  size_t i = std::min(set.lastUsed, set.volumes.size() - 1);
  while (i > 0 && offset < set.volumes[i].start) --i;
  while (i < set.volumes.size()) {
    const Volume& v = set.volumes[i];
    if (offset >= v.start && offset <= v.start + v.dataLength) {
      set.lastUsed = i;
      *index = i;
      return true;
    }
    if (offset < v.start) break;
    ++i;
  }
  return false;
}

// Rewrites the header of volume `index` with its "further volume follows" bit changed.
StatusCode RewriteFollowFlag(ImageSet& set, size_t index, bool follows)
{
  uint8_t* header = set.headerBuffer + kHeaderSize;
  SysFile* file = set.volumes[index].file;
  StatusCode status = ReadVolumeHeader(set, file, header);
  if (IsFailure(status)) return status;
  SetFurtherVolumeFlag(header, follows);
  status = SealHeader(set, set.headerCipher, header);
  if (IsFailure(status)) return status;
  uint32_t done = 0;
  return SysWriteFile(file, 0, header, kHeaderSize, &done);
}

// Drops the last volume file of the set: closes and deletes it.
void DiscardLastVolume(ImageSet& set)
{
  const auto index = static_cast<uint32_t>(set.volumes.size() - 1);
  SysCloseFile(set.volumes.back().file);
  set.volumes.pop_back();
  SysDeleteFile(VolumeFilePath(set.path, index).c_str());
  set.lastUsed = std::min(set.lastUsed, set.volumes.empty() ? 0 : set.volumes.size() - 1);
}

// Writes a piece of data, behind (stable only at the next flush) or as the file writes.
StatusCode WriteData(SysFile* file, uint64_t offset, const uint8_t* bytes, uint32_t length,
                     bool behind, uint32_t* done)
{
  return behind ? SysWriteFileBehind(file, offset, bytes, length, done)
                : SysWriteFile(file, offset, bytes, length, done);
}

// The all-ones limit: a write that filled the disk although the directory still has
// room has met the file system's largest file size. Keeps the whole units stored, and
// writes the rest of the piece into a new volume file.
StatusCode ContinueInNewVolume(ImageSet& set, size_t index, uint64_t pos, const uint8_t* piece,
                               uint32_t length, uint32_t stored, StatusCode diskFull, bool behind)
{
  uint64_t freeBytes = 0;
  if (IsFailure(SysGetFreeSpace(set.directory.c_str(), &freeBytes)) || freeBytes <= length) {
    return diskFull;
  }
  const uint32_t kept = stored / set.unitSize * set.unitSize;
  Volume& volume = set.volumes[index];
  StatusCode status = SysSetFileSize(volume.file, kHeaderSize + pos + kept);
  if (IsFailure(status)) return status;
  volume.dataLength = std::max(volume.dataLength, pos + kept);
  status = CreateNextVolume(set, nullptr);
  if (IsFailure(status)) return status;
  uint32_t done = 0;
  status =
      WriteData(set.volumes.back().file, kHeaderSize, piece + kept, length - kept, behind, &done);
  if (IsFailure(status)) {
    // The set ends at volume `index` again; its header must no longer announce a follower,
    // or the set would not open. The disk-full failure stays the one reported.
    DiscardLastVolume(set);
    RewriteFollowFlag(set, index, false);
    return diskFull;
  }
  set.volumes.back().dataLength = length - kept;
  return kStatusSuccess;
}

// Writes one chunk's bytes (already enciphered) across the volume files.
StatusCode WriteAcrossVolumes(ImageSet& set, uint64_t offset, const uint8_t* bytes, uint32_t length,
                              bool behind)
{
  size_t index = 0;
  if (!FindVolume(set, offset, &index)) return kImgBeyondEnd;
  while (length > 0) {
    Volume* volume = &set.volumes[index];
    const uint64_t pos = offset - volume->start;
    const bool last = index + 1 == set.volumes.size();
    uint64_t piece = length;
    if (!last) piece = std::min(piece, volume->dataLength - pos);
    // With limit 0 the subtraction wraps around: the file never ends by size.
    const uint64_t room = set.volumeSizeLimit - kHeaderSize - pos;
    if (pos + piece > set.volumeSizeLimit - kHeaderSize) piece = room / set.unitSize * set.unitSize;
    if (piece == 0) {
      // This volume file is full: go on in the next one, making it if needed.
      if (last) {
        const StatusCode status = CreateNextVolume(set, nullptr);
        if (IsFailure(status)) return status;
      }
      ++index;
      set.lastUsed = index;
      continue;
    }
    const auto pieceLength = static_cast<uint32_t>(piece);
    uint32_t done = 0;
    const StatusCode status =
        WriteData(volume->file, kHeaderSize + pos, bytes, pieceLength, behind, &done);
    // Only a write that stored everything up to the file's old end can have met the file
    // system's largest file size; cutting the file behind any other would lose its data.
    const bool atCeiling = last && pos + done / set.unitSize * set.unitSize >= volume->dataLength;
    if (status == kSysDiskFull && set.volumeSizeLimit == kFileSystemLimit && atCeiling) {
      const StatusCode continued =
          ContinueInNewVolume(set, index, pos, bytes, pieceLength, done, status, behind);
      if (IsFailure(continued)) return continued;
      index = set.volumes.size() - 1;
      set.lastUsed = index;
      offset += pieceLength;
      bytes += pieceLength;
      length -= pieceLength;
      continue;
    }
    if (IsFailure(status)) return status;
    volume->dataLength = std::max(volume->dataLength, pos + pieceLength);
    offset += pieceLength;
    bytes += pieceLength;
    length -= pieceLength;
  }
  return kStatusSuccess;
}

// Reads one chunk's bytes across the volume files.
StatusCode ReadAcrossVolumes(ImageSet& set, uint64_t offset, uint8_t* bytes, uint32_t length)
{
  std::vector<StreamPiece> pieces;
  const StatusCode status = LocateStream(set, offset, length, &pieces);
  return IsFailure(status) ? status : ReadPieces(pieces, bytes);
}

}  // namespace

uint64_t ImageSet::StreamEnd() const
{
  return volumes.empty() ? 0 : volumes.back().start + volumes.back().dataLength;
}

namespace {

// How many units' chaining vectors CipherUnits makes at a time.
constexpr uint32_t kUnitGroup = 32;

// Deciphers `count` (at most kUnitGroup) units as one CBC run from the first unit's
// vector. Every block comes out as the unit's own run gives it but each later unit's
// first, which is chained from the last cipher block of the unit before instead of from
// its own vector; those blocks are corrected after by what the two differ in, taken before
// a run in place overwrites the cipher blocks. One call instead of one per unit, the same
// bytes.
StatusCode DecipherUnits(const ImageSet& set, CipherContext* cipher, const uint8_t* vectors,
                         uint32_t count, const uint8_t* input, uint8_t* output)
{
  CipherInfo info{};
  StatusCode status = CipherQuery(cipher, &info, sizeof info);
  if (IsFailure(status)) return status;
  const uint32_t blockSize = std::min(info.blockSize, kCipherVectorStride);
  uint8_t corrections[kUnitGroup * kCipherVectorStride];
  for (uint32_t i = 1; i < count; ++i) {
    const uint8_t* chainedFrom = input + size_t{i} * set.unitSize - blockSize;
    const uint8_t* vector = vectors + i * kCipherVectorStride;
    uint8_t* correction = corrections + i * kCipherVectorStride;
    for (uint32_t b = 0; b < blockSize; ++b) {
      correction[b] = static_cast<uint8_t>(chainedFrom[b] ^ (b < set.ivLength ? vector[b] : 0));
    }
  }
  status = CipherSetIv(cipher, vectors, set.ivLength);
  if (!IsFailure(status)) status = CipherDecrypt(cipher, input, output, count * set.unitSize);
  if (IsFailure(status)) return status;
  for (uint32_t i = 1; i < count; ++i) {
    uint8_t* first = output + size_t{i} * set.unitSize;
    const uint8_t* correction = corrections + i * kCipherVectorStride;
    for (uint32_t b = 0; b < blockSize; ++b) first[b] ^= correction[b];
  }
  return kStatusSuccess;
}

}  // namespace

StatusCode CipherUnits(const ImageSet& set, CipherContext* cipher, uint64_t offset,
                       const uint8_t* input, uint8_t* output, uint32_t length, bool encrypt)
{
  // The units' chaining vectors, a group at a time: each unit's stream offset, the unit
  // size minus one, and four bytes of the identity block; the first ivLength bytes count.
  uint8_t vectors[kUnitGroup * kCipherVectorStride];
  const uint32_t units = length / set.unitSize;
  for (uint32_t first = 0; first < units; first += kUnitGroup) {
    const uint32_t count = std::min(kUnitGroup, units - first);
    for (uint32_t i = 0; i < count; ++i) {
      uint8_t* vector = vectors + i * kCipherVectorStride;
      Store<uint64_t>(vector, offset + uint64_t{first + i} * set.unitSize);
      Store<uint32_t>(vector + 8, set.unitSize - 1);
      std::memcpy(vector + 12, set.identityBlock + identity::kUnitVectorTail, 4);
    }
    const size_t skip = size_t{first} * set.unitSize;
    // Units are independent: they are enciphered side by side. Deciphering CBC is parallel
    // within a run already, so the group is deciphered as one run.
    const StatusCode status =
        encrypt ? CipherEncryptUnits(cipher, vectors, set.ivLength, input + skip, output + skip,
                                     set.unitSize, count)
                : DecipherUnits(set, cipher, vectors, count, input + skip, output + skip);
    if (IsFailure(status)) return status;
  }
  return kStatusSuccess;
}

StatusCode AllocateSetBuffers(ImageSet& set)
{
  set.workBuffer = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocPageable));
  set.headerBuffer = static_cast<uint8_t*>(SysAllocate(2 * kHeaderSize, kAllocZeroed));
  return set.workBuffer != nullptr && set.headerBuffer != nullptr ? kStatusSuccess
                                                                  : kImgOutOfMemory;
}

std::u16string VolumeFilePath(const std::u16string& path, uint32_t index)
{
  if (index == 0) return path;
  std::u16string number;
  for (const char c : "-" + std::to_string(index)) number += static_cast<char16_t>(c);
  const size_t dot = path.rfind(u'.');
  if (dot == std::u16string::npos) return path + number;
  return path.substr(0, dot) + number + path.substr(dot);
}

std::u16string VolumeDirectory(const std::u16string& path)
{
  size_t separator = path.rfind(u'\\');
  if (separator == std::u16string::npos) separator = path.rfind(u'/');
  return separator == std::u16string::npos ? std::u16string() : path.substr(0, separator + 1);
}

StatusCode CreateNextVolume(ImageSet& set, const uint8_t* dataKey)
{
  const auto index = static_cast<uint32_t>(set.volumes.size());
  if (index == 0) {
    const StatusCode status = SysCreateUuid(&set.setIdentifier);
    if (IsFailure(status)) return status;
  }
  const std::u16string name = VolumeFilePath(set.path, index);
  SysFile* file = nullptr;
  StatusCode status = SysOpenFile(name.c_str(), FileFlags(set) | kFileCreate, &file);
  if (IsFailure(status)) return status;
  uint8_t* header = set.headerBuffer;
  status = BuildVolumeHeader(set, set.headerCipher, index, 0, dataKey, header);
  uint32_t done = 0;
  if (!IsFailure(status)) status = SysWriteFile(file, 0, header, kHeaderSize, &done);
  if (!IsFailure(status) && index > 0) status = RewriteFollowFlag(set, index - 1, true);
  if (IsFailure(status)) {
    SysCloseFile(file);
    SysDeleteFile(name.c_str());
    return status;
  }
  set.volumes.push_back(Volume{file, set.StreamEnd(), 0});
  return kStatusSuccess;
}

StatusCode LinkFurtherVolumes(ImageSet& set, uint32_t firstInnerFlags)
{
  uint32_t innerFlags = firstInnerFlags;
  uint8_t* header = set.headerBuffer;
  while ((innerFlags & header::kFlagFurtherVolume) != 0) {
    const auto index = static_cast<uint32_t>(set.volumes.size());
    SysFile* file = nullptr;
    StatusCode status = SysOpenFile(VolumeFilePath(set.path, index).c_str(), FileFlags(set), &file);
    if (status == kSysNotFound) return kImgVolumeMissing;
    if (IsFailure(status)) return status;
    uint64_t size = 0;
    status = ReadVolumeHeader(set, file, header);
    PlainHeaderFields fields{};
    if (!IsFailure(status)) status = ReadPlainFields(header, &fields);
    const bool agrees =
        fields.algorithm == set.algorithm && fields.keyLength == set.keyLength &&
        fields.mode == set.mode &&
        std::memcmp(header, set.identityBlock, kIdentityBlockSize) == 0 &&
        std::memcmp(header + header::kSetIdentifier, &set.setIdentifier, sizeof(Guid)) == 0 &&
        Load<uint32_t>(header + header::kIndex) == index;
    if (!IsFailure(status) && !agrees) status = kImgWrongPassword;
    if (!IsFailure(status)) status = SysGetFileSize(file, &size);
    if (!IsFailure(status) && size < kHeaderSize) status = kImgWrongPassword;
    if (IsFailure(status)) {
      SysCloseFile(file);
      return status;
    }
    set.volumes.push_back(Volume{file, set.StreamEnd(), size - kHeaderSize});
    innerFlags = Load<uint32_t>(header + header::kInnerFlags);
  }
  return kStatusSuccess;
}

StatusCode ReadStream(ImageSet& set, uint64_t offset, uint8_t* buffer, uint64_t length)
{
  StatusCode status = CheckRequest(set, offset, length);
  for (uint64_t done = 0; !IsFailure(status) && done < length;) {
    const auto chunk = static_cast<uint32_t>(std::min<uint64_t>(length - done, kChunkSize));
    uint8_t* target = set.IsEncrypted() ? set.workBuffer : buffer + done;
    status = ReadAcrossVolumes(set, offset + done, target, chunk);
    if (!IsFailure(status) && set.IsEncrypted()) {
      status = CipherUnits(set, set.dataCipher, offset + done, target, buffer + done, chunk, false);
    }
    done += chunk;
  }
  return status;
}

StatusCode WriteEnciphered(ImageSet& set, uint64_t offset, const uint8_t* bytes, uint32_t length,
                           EncipheredWrite how)
{
  const StatusCode status = CheckRequest(set, offset, length);
  if (IsFailure(status)) return status;
  return WriteAcrossVolumes(set, offset, bytes, length, how == EncipheredWrite::kBehind);
}

StatusCode LocateStream(ImageSet& set, uint64_t offset, uint32_t length,
                        std::vector<StreamPiece>* pieces)
{
  pieces->clear();
  const StatusCode status = CheckRequest(set, offset, length);
  if (IsFailure(status)) return status;
  size_t index = 0;
  if (!FindVolume(set, offset, &index)) return kImgBeyondEnd;
  while (length > 0) {
    if (index >= set.volumes.size()) return kImgReadPastEnd;
    const Volume& volume = set.volumes[index];
    const uint64_t pos = offset - volume.start;
    const auto piece = static_cast<uint32_t>(std::min<uint64_t>(length, volume.dataLength - pos));
    if (piece > 0) {
      pieces->push_back(StreamPiece{volume.file, kHeaderSize + pos, piece});
      set.lastUsed = index;
    }
    offset += piece;
    length -= piece;
    ++index;
  }
  return kStatusSuccess;
}

StatusCode ReadPieces(const std::vector<StreamPiece>& pieces, uint8_t* bytes)
{
  for (const StreamPiece& piece : pieces) {
    uint32_t done = 0;
    const StatusCode status = SysReadFile(piece.file, piece.fileOffset, bytes, piece.length, &done);
    if (IsFailure(status)) return status;
    if (done != piece.length) return kImgReadPastEnd;
    bytes += piece.length;
  }
  return kStatusSuccess;
}

StatusCode WriteStream(ImageSet& set, uint64_t offset, const uint8_t* buffer, uint64_t length)
{
  StatusCode status = CheckRequest(set, offset, length);
  for (uint64_t done = 0; !IsFailure(status) && done < length;) {
    const auto chunk = static_cast<uint32_t>(std::min<uint64_t>(length - done, kChunkSize));
    const uint8_t* source = buffer + done;
    if (set.IsEncrypted()) {
      status = CipherUnits(set, set.dataCipher, offset + done, source, set.workBuffer, chunk, true);
      source = set.workBuffer;
    }
    if (!IsFailure(status)) status = WriteAcrossVolumes(set, offset + done, source, chunk, false);
    done += chunk;
  }
  return status;
}

StatusCode TruncateStream(ImageSet& set, uint64_t offset)
{
  StatusCode status = CheckRequest(set, offset, 0);
  if (IsFailure(status)) return status;
  size_t index = 0;
  if (!FindVolume(set, offset, &index)) return kImgBeyondEnd;
  const bool cutVolumes = index + 1 < set.volumes.size();
  while (index + 1 < set.volumes.size()) DiscardLastVolume(set);
  Volume& volume = set.volumes[index];
  volume.dataLength = offset - volume.start;
  status = SysSetFileSize(volume.file, kHeaderSize + volume.dataLength);
  // The now-last volume file must no longer announce a follower, or the set would not open.
  if (!IsFailure(status) && cutVolumes) status = RewriteFollowFlag(set, index, false);
  return status;
}

StatusCode FlushVolumes(ImageSet& set)
{
  for (const Volume& volume : set.volumes) {
    const StatusCode status = SysFlushFile(volume.file);
    if (IsFailure(status)) return status;
  }
  return kStatusSuccess;
}

StatusCode CloseSet(ImageSet& set, bool discard)
{
  StatusCode first = kStatusSuccess;
  while (!set.volumes.empty()) {
    const auto index = static_cast<uint32_t>(set.volumes.size() - 1);
    const StatusCode status = SysCloseFile(set.volumes.back().file);
    if (IsFailure(status) && !IsFailure(first)) first = status;
    set.volumes.pop_back();
    if (discard) SysDeleteFile(VolumeFilePath(set.path, index).c_str());
  }
  if (set.dataCipher != nullptr) CipherDestroy(set.dataCipher);
  if (set.headerCipher != nullptr) CipherDestroy(set.headerCipher);
  set.dataCipher = nullptr;
  set.headerCipher = nullptr;
  SysRelease(set.workBuffer);
  SysRelease(set.headerBuffer);
  set.workBuffer = nullptr;
  set.headerBuffer = nullptr;
  return first;
}
