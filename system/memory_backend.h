// The operating-system half of the allocation routine (system/memory.h). The portable half
// (memory.cpp) applies the test seam; each backend (memory_posix.cpp, memory_win.cpp) only
// talks to its system's page allocator.
#pragma once

#include "system/memory.h"

// SysAllocate without the seam: a zero-filled, page-aligned block or nullptr.
void* BackendAllocate(size_t size, uint32_t flags);

// SysRelease without the seam. A null block is ignored.
void BackendRelease(void* block);
