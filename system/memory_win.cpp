#include <windows.h>

#include "system/memory_backend.h"

size_t SysPageSize()
{
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return info.dwPageSize;
}

void* BackendAllocate(size_t size, uint32_t flags)
{
  if (size == 0) return nullptr;
  // Committed pages from VirtualAlloc are zero-filled, so kAllocZeroed needs no further work.
  void* block = VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (block == nullptr) return nullptr;
  // Key material stays in RAM where the working-set limit allows; a refusal is not an error.
  if ((flags & kAllocPageable) == 0) VirtualLock(block, size);
  return block;
}

void BackendRelease(void* block)
{
  // Releasing the whole reservation also ends any lock on its pages.
  if (block != nullptr) VirtualFree(block, 0, MEM_RELEASE);
}
