// What a disk request needs of its own to run beside others: a copy of the data cipher
// (whose chaining vector each unit sets), memory for one chunk as it lies on disk and for
// one partial block, and the list of where a read's run lies. Requests take one from the pool and
// give it back, so that the copies and the memory are made once for as many requests as ever ran at
// the same time.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "crypto/cipher.h"
#include "image/image_set.h"
#include "system/status.h"
#include "system/sync.h"

struct DiskWorkspace {
  CipherContext* cipher = nullptr;  // null until a request of an encrypted image makes it
  uint8_t* chunk = nullptr;         // kChunkSize bytes, page-aligned
  uint8_t* edge = nullptr;          // one block, for the read-modify-write at the edges
  std::vector<StreamPiece> pieces;  // where a read's run lies in the volume files
  DiskWorkspace() = default;
  DiskWorkspace(const DiskWorkspace&) = delete;
  DiskWorkspace& operator=(const DiskWorkspace&) = delete;
  ~DiskWorkspace();
};

class DiskWorkspaces {
 public:
  // A free workspace, or a new one with its memory for blocks of `blockSize` bytes
  // (without a cipher copy); kImgOutOfMemory when the memory cannot be had.
  StatusCode Take(uint32_t blockSize, std::unique_ptr<DiskWorkspace>* workspace);

  // Returns a workspace for later requests.
  void Give(std::unique_ptr<DiskWorkspace> workspace);

 private:
  SysMutex mutex_;
  std::vector<std::unique_ptr<DiskWorkspace>> free_;
};
