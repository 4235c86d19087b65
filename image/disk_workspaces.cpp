#include "image/disk_workspaces.h"

#include <new>

#include "image/layout.h"
#include "system/memory.h"

DiskWorkspace::~DiskWorkspace()
{
  if (cipher != nullptr) CipherDestroy(cipher);
  SysRelease(chunk);
  SysRelease(edge);
}

StatusCode DiskWorkspaces::Take(uint32_t blockSize, std::unique_ptr<DiskWorkspace>* workspace)
{
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    if (!free_.empty()) {
      *workspace = std::move(free_.back());
      free_.pop_back();
      return kStatusSuccess;
    }
  }
  std::unique_ptr<DiskWorkspace> made(new (std::nothrow) DiskWorkspace);
  if (!made) return kImgOutOfMemory;
  made->chunk = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocPageable));
  made->edge = static_cast<uint8_t*>(SysAllocate(blockSize, kAllocPageable));
  if (made->chunk == nullptr || made->edge == nullptr) return kImgOutOfMemory;
  *workspace = std::move(made);
  return kStatusSuccess;
}

void DiskWorkspaces::Give(std::unique_ptr<DiskWorkspace> workspace)
{
  const std::lock_guard<SysMutex> lock(mutex_);
  free_.push_back(std::move(workspace));
}
