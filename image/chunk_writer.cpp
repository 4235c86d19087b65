#include "image/chunk_writer.h"

#include <system_error>

ChunkWriter::~ChunkWriter()
{
  Stop();
}

StatusCode ChunkWriter::Start(ImageSet& set)
{
  set_ = &set;
  try {
    thread_ = std::thread(&ChunkWriter::Work, this);
  } catch (const std::system_error&) {
    return kImgOutOfMemory;
  }
  return kStatusSuccess;
}

void ChunkWriter::Submit(uint64_t offset, const uint8_t* bytes, uint32_t length)
{
  const std::lock_guard<std::mutex> lock(mutex_);
  chunks_[submitted_ % kMostOutstanding] = Chunk{offset, bytes, length};
  ++submitted_;
  changed_.notify_all();
}

StatusCode ChunkWriter::WaitFor(uint64_t index)
{
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [&] { return written_ > index; });
  return failedAt_ <= index ? failure_ : kStatusSuccess;
}

void ChunkWriter::Work()
{
  std::unique_lock<std::mutex> lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return written_ < submitted_ || stopping_; });
    if (written_ == submitted_) return;  // stopping, with nothing left
    const Chunk chunk = chunks_[written_ % kMostOutstanding];
    const bool skip = stopping_ || IsFailure(failure_);
    lock.unlock();

    const StatusCode status = skip ? kStatusSuccess
                                   : WriteEnciphered(*set_, chunk.offset, chunk.bytes, chunk.length,
                                                     EncipheredWrite::kBehind);

    lock.lock();
    if (IsFailure(status)) {
      failure_ = status;
      failedAt_ = written_;
    }
    ++written_;
    changed_.notify_all();
  }
}

void ChunkWriter::Stop()
{
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
}
