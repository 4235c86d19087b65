// The allocation table cache of an open image: four slots of one table block each, and an
// order list naming the slots from the most recently favoured.
#pragma once

#include <cstdint>
#include <memory>

#include "image/image_set.h"
#include "system/status.h"

class TableCache {
 public:
  static constexpr int kSlots = 4;

  TableCache(ImageSet& set, uint64_t tableOffset, uint32_t tableBlocks);
  ~TableCache();
  TableCache(const TableCache&) = delete;
  TableCache& operator=(const TableCache&) = delete;

  // Allocates the slots' memory; kImgOutOfMemory if it cannot.
  StatusCode Allocate();

  // Loads table block `block` into a slot (written back first if that slot held a changed
  // block), checks its Adler-32, and tells which slot holds it.
  StatusCode Load(uint32_t block, int* slot);

  // The slot that holds table block `block` already, or else the slot Load puts it in.
  StatusCode Find(uint32_t block, int* slot);

  // Writes every changed slot back, in slot order, stopping at the first failure.
  StatusCode Flush();

  // A slot's table block, and the mark that it was changed and must be written back.
  uint8_t* SlotData(int slot) { return slots_[slot].data; }
  void MarkChanged(int slot) { slots_[slot].changed = true; }
  uint32_t TableBlocks() const { return tableBlocks_; }

 private:
  struct Slot {
    uint8_t* data = nullptr;  // one unit
    uint32_t block = 0;
    bool changed = false;
  };

  StatusCode WriteBack(int slot);

  ImageSet& set_;
  uint64_t tableOffset_;
  uint32_t tableBlocks_;
  Slot slots_[kSlots];
  int order_[kSlots] = {-1, -1, -1, -1};
};

// Returns a cache made by MakeTableCache to the allocation routine.
struct TableCacheRelease {
  void operator()(TableCache* cache) const;
};
using TableCachePtr = std::unique_ptr<TableCache, TableCacheRelease>;

// Makes a cache (without its slots' memory, see Allocate) in memory from the allocation
// routine; null when there is none.
TableCachePtr MakeTableCache(ImageSet& set, uint64_t tableOffset, uint32_t tableBlocks);
