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
    flusher_ = std::thread(&ChunkWriter::FlushBehind, this);
  } catch (const std::system_error&) {
    return kImgOutOfMemory;
  }
  return kStatusSuccess;
}

void ChunkWriter::Submit(uint64_t offset, const uint8_t* bytes, uint32_t length)
{
  Hand(Chunk{offset, bytes, length});
}

void ChunkWriter::SubmitFailed(StatusCode status)
{
  Chunk chunk;
  chunk.failure = status;
  Hand(chunk);
}

void ChunkWriter::Hand(const Chunk& chunk)
{
  const std::lock_guard<SysMutex> lock(mutex_);
  chunks_[submitted_ % kMostOutstanding] = chunk;
  ++submitted_;
  changed_.notify_all();
}

StatusCode ChunkWriter::WaitFor(uint64_t index)
{
  std::unique_lock<SysMutex> lock(mutex_);
  changed_.wait(lock, [&] { return written_ > index; });
  return failedAt_ <= index ? failure_ : kStatusSuccess;
}

void ChunkWriter::Work()
{
  std::unique_lock<SysMutex> lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return written_ < submitted_ || stopping_; });
    if (written_ == submitted_) return;  // stopping, with nothing left
    const Chunk chunk = chunks_[written_ % kMostOutstanding];
    const bool skip = stopping_ || IsFailure(failure_);
    lock.unlock();

    StatusCode status = chunk.failure;
    if (skip) {
      status = kStatusSuccess;
    } else if (!IsFailure(status)) {
      status =
          WriteEnciphered(*set_, chunk.offset, chunk.bytes, chunk.length, EncipheredWrite::kBehind);
    }

    lock.lock();
    if (IsFailure(status)) Fail(status);
    ++written_;
    // The set's volumes change only on this thread, between writes: the flusher gets the
    // files as they are now. A flush still under way lets this interval's go.
    if (!skip && written_ % kFlushInterval == 0 && !flushAsked_) {
      filesToFlush_.clear();
      for (const Volume& volume : set_->volumes) filesToFlush_.push_back(volume.file);
      flushAsked_ = true;
    }
    changed_.notify_all();
  }
}

void ChunkWriter::FlushBehind()
{
  std::unique_lock<SysMutex> lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return flushAsked_ || stopping_; });
    if (!flushAsked_) return;  // stopping, with no flush asked for
    const std::vector<SysFile*> files = filesToFlush_;
    lock.unlock();

    StatusCode status = kStatusSuccess;
    for (SysFile* file : files) {
      if (!IsFailure(status)) status = SysFlushFile(file);
    }

    lock.lock();
    if (IsFailure(status)) Fail(status);
    flushAsked_ = false;
    changed_.notify_all();
  }
}

void ChunkWriter::Fail(StatusCode status)
{
  if (IsFailure(failure_)) return;
  failure_ = status;
  failedAt_ = written_;
}

void ChunkWriter::Stop()
{
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
  if (flusher_.joinable()) flusher_.join();
}
