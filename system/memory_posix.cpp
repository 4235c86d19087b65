#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "system/memory_backend.h"

namespace {

// Every block starts one page before the address handed out; that page records the
// mapping's length so the release needs nothing but the address.
struct BlockHeader {
  size_t mappedBytes;
  bool locked;
};

}  // namespace

size_t SysPageSize()
{
  static const size_t pageSize = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  return pageSize;
}

void* BackendAllocate(size_t size, uint32_t flags)
{
  if (size == 0) return nullptr;
  const size_t page = SysPageSize();
  if (size > SIZE_MAX - 2 * page) return nullptr;
  const size_t mappedBytes = (size + page - 1) / page * page + page;
  // Anonymous mappings are zero-filled, so kAllocZeroed needs no further work.
  void* base =
      mmap(nullptr, mappedBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base == MAP_FAILED) return nullptr;
  auto* header = static_cast<BlockHeader*>(base);
  header->mappedBytes = mappedBytes;
  void* block = static_cast<char*>(base) + page;
  if ((flags & kAllocPageable) == 0) {
    // Key material: keep it in RAM where the limits allow, and out of core dumps. The
    // system call is made directly because the sanitizer runtimes turn mlock into a no-op.
    header->locked = syscall(SYS_mlock, block, mappedBytes - page) == 0;
    madvise(block, mappedBytes - page, MADV_DONTDUMP);
  }
  return block;
}

void BackendRelease(void* block)
{
  if (block == nullptr) return;
  const size_t page = SysPageSize();
  void* base = static_cast<char*>(block) - page;
  const auto* header = static_cast<const BlockHeader*>(base);
  const size_t mappedBytes = header->mappedBytes;
  if (header->locked) syscall(SYS_munlock, block, mappedBytes - page);
  munmap(base, mappedBytes);
}
