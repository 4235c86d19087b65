#include "image/table_cache.h"

#include <new>
#include <utility>

#include "image/records.h"
#include "system/memory.h"

TableCache::TableCache(ImageSet& set, uint64_t tableOffset, uint32_t tableBlocks)
    : set_(set), tableOffset_(tableOffset), tableBlocks_(tableBlocks)
{
}

TableCache::~TableCache()
{
  for (Slot& slot : slots_) SysRelease(slot.data);
}

StatusCode TableCache::Allocate()
{
  for (Slot& slot : slots_) {
    slot.data = static_cast<uint8_t*>(SysAllocate(kUnitSize, kAllocZeroed | kAllocPageable));
    if (slot.data == nullptr) return kImgOutOfMemory;
  }
  return kStatusSuccess;
}

StatusCode TableCache::WriteBack(int slot)
{
  Slot& s = slots_[slot];
  SealTableBlock(s.data);
  const StatusCode status =
      WriteStream(set_, tableOffset_ + uint64_t{s.block} * kUnitSize, s.data, kUnitSize);
  if (!IsFailure(status)) s.changed = false;
  return status;
}

StatusCode TableCache::Load(uint32_t block, int* slot)
{
  int position = 0;
  while (position < kSlots && order_[position] != -1) ++position;
  const bool fromLast = position == kSlots;
  // An empty position takes the slot of its own number; else the last position's slot.
  const int taken = fromLast ? order_[kSlots - 1] : position;
  if (slots_[taken].changed) {
    const StatusCode status = WriteBack(taken);
    if (IsFailure(status)) return status;
  }
  Slot& s = slots_[taken];
  StatusCode status =
      ReadStream(set_, tableOffset_ + uint64_t{block} * kUnitSize, s.data, kUnitSize);
  if (!IsFailure(status)) status = CheckTableBlock(s.data);
  if (IsFailure(status)) return status;
  s.block = block;
  s.changed = false;
  if (fromLast) {
    std::swap(order_[kSlots - 1], order_[kSlots - 2]);
  } else {
    order_[position] = taken;
  }
  *slot = taken;
  return kStatusSuccess;
}

StatusCode TableCache::Find(uint32_t block, int* slot)
{
  for (const int held : order_) {
    if (held != -1 && slots_[held].block == block) {
      *slot = held;
      return kStatusSuccess;
    }
  }
  return Load(block, slot);
}

StatusCode TableCache::Flush()
{
  for (int slot = 0; slot < kSlots; ++slot) {
    if (!slots_[slot].changed) continue;
    const StatusCode status = WriteBack(slot);
    if (IsFailure(status)) return status;
  }
  return kStatusSuccess;
}

void TableCacheRelease::operator()(TableCache* cache) const
{
  cache->~TableCache();
  SysRelease(cache);
}

TableCachePtr MakeTableCache(ImageSet& set, uint64_t tableOffset, uint32_t tableBlocks)
{
  void* memory = SysAllocate(sizeof(TableCache), kAllocZeroed | kAllocPageable);
  if (memory == nullptr) return nullptr;
  return TableCachePtr(new (memory) TableCache(set, tableOffset, tableBlocks));
}
