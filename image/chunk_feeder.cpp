#include "image/chunk_feeder.h"

#include <system_error>

#include "system/memory.h"

namespace {

constexpr uint64_t kSlots = ChunkWriter::kMostOutstanding;

}  // namespace

ChunkFeeder::~ChunkFeeder()
{
  Stop();
  SysRelease(ring_);
}

StatusCode ChunkFeeder::Start(const ImageSet& set, unsigned helpers, ChunkWriter& writer)
{
  set_ = &set;
  writer_ = &writer;
  if (set.IsEncrypted()) {
    ring_ = static_cast<uint8_t*>(SysAllocate(kSlots * kChunkSize, kAllocPageable));
    if (ring_ == nullptr) return kImgOutOfMemory;
    const StatusCode status = encryptor_.Start(set, helpers);
    if (IsFailure(status)) return status;
  }
  try {
    thread_ = std::thread(&ChunkFeeder::Work, this);
  } catch (const std::system_error&) {
    return kImgOutOfMemory;
  }
  return kStatusSuccess;
}

void ChunkFeeder::Feed(uint64_t start, const uint8_t* content, uint64_t total)
{
  const std::lock_guard<SysMutex> lock(mutex_);
  bulk_ = Bulk{start, content, total};
  fed_ = true;
  changed_.notify_all();
}

void ChunkFeeder::Reported(uint64_t count)
{
  const std::lock_guard<SysMutex> lock(mutex_);
  reported_ = count;
  changed_.notify_all();
}

void ChunkFeeder::Stop()
{
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

bool ChunkFeeder::MayMake(uint64_t index)
{
  {
    std::unique_lock<SysMutex> lock(mutex_);
    changed_.wait(lock, [&] { return index < reported_ + kMostUnreported || stopping_; });
    if (stopping_) return false;
  }
  // The slot's chunk before is written before anything is enciphered over it; writes that
  // stopped on a failure need no further chunks.
  return index < kSlots || !IsFailure(writer_->WaitFor(index - kSlots));
}

void ChunkFeeder::Work()
{
  Bulk bulk;
  {
    std::unique_lock<SysMutex> lock(mutex_);
    changed_.wait(lock, [this] { return fed_ || stopping_; });
    if (!fed_) return;
    bulk = bulk_;
  }
  const uint64_t chunks = BulkChunkCount(bulk.total);
  for (uint64_t index = 0; index < chunks && MayMake(index); ++index) {
    const uint64_t offset = bulk.start + index * kChunkSize;
    const uint32_t length = BulkChunkLength(bulk.total, index);
    if (!set_->IsEncrypted()) {
      writer_->Submit(offset, bulk.content, length);
      continue;
    }
    uint8_t* slot = ring_ + (index % kSlots) * kChunkSize;
    const StatusCode status = encryptor_.Encipher(offset, bulk.content, slot, length);
    if (IsFailure(status)) {
      writer_->SubmitFailed(status);
      return;
    }
    writer_->Submit(offset, slot, length);
  }
}
