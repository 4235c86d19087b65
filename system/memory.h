// The one allocation routine of the crypto engine and the image container.
//
// Memory comes from the operating system's page allocator in whole pages, always
// zero-filled and page-aligned (so it also serves unbuffered file I/O). Memory without
// the pageable flag holds key material: it is locked in physical memory where the system
// allows and kept out of core dumps. Blocks go back to the system without being
// overwritten; the system clears pages before it reuses them.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr uint32_t kAllocZeroed = 0x1;    // the block must start zero-filled
inline constexpr uint32_t kAllocPageable = 0x4;  // bulk data that may be paged out

// Returns a block of at least `size` bytes, or nullptr when the system refuses or size is 0.
void* SysAllocate(size_t size, uint32_t flags);

// Returns a block from SysAllocate to the system. A null block is ignored.
void SysRelease(void* block);

// The system's page size in bytes.
size_t SysPageSize();

// A test seam that makes SysAllocate refuse on purpose, so that tests reach every
// out-of-memory path. While a plan is installed, every allocation consults it; production
// code never installs one.
struct SysAllocationFaults {
  // The allocation (counted from 1, refused ones included) that fails; 0 = none.
  uint64_t failingAllocation = 0;
  // Counters kept by the seam: allocations asked for, and blocks handed out while this
  // plan is installed that have not been released yet (a leak check).
  uint64_t allocationsSeen = 0;
  uint64_t blocksLive = 0;
};

// Installs a plan (the seam updates its counters), or removes it with nullptr.
void SysSetAllocationFaults(SysAllocationFaults* faults);
