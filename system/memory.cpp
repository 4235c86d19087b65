#include <mutex>
#include <unordered_set>

#include "system/memory_backend.h"

namespace {

// The installed allocation plan and the blocks handed out under it. The mutex makes each
// allocation's use of the plan one step, so a plan also works while several threads
// allocate; without a plan the routines take no lock.
SysAllocationFaults* g_faults = nullptr;
std::unordered_set<void*>* g_planBlocks = nullptr;
std::mutex g_faultsMutex;

}  // namespace

void SysSetAllocationFaults(SysAllocationFaults* faults)
{
  std::lock_guard<std::mutex> lock(g_faultsMutex);
  g_faults = faults;
  delete g_planBlocks;
  g_planBlocks = faults != nullptr ? new std::unordered_set<void*> : nullptr;
}

void* SysAllocate(size_t size, uint32_t flags)
{
  std::unique_lock<std::mutex> lock(g_faultsMutex);
  if (g_faults == nullptr) {
    lock.unlock();
    return BackendAllocate(size, flags);
  }
  ++g_faults->allocationsSeen;
  if (g_faults->allocationsSeen == g_faults->failingAllocation) return nullptr;
  void* block = BackendAllocate(size, flags);
  if (block != nullptr) {
    g_planBlocks->insert(block);
    ++g_faults->blocksLive;
  }
  return block;
}

void SysRelease(void* block)
{
  if (block == nullptr) return;
  {
    std::lock_guard<std::mutex> lock(g_faultsMutex);
    if (g_faults != nullptr && g_planBlocks->erase(block) != 0) --g_faults->blocksLive;
  }
  BackendRelease(block);
}
