#include "image/unit_encryptor.h"

#include <algorithm>
#include <system_error>

UnitEncryptor::~UnitEncryptor()
{
  Stop();
}

StatusCode UnitEncryptor::Start(const ImageSet& set, unsigned helpers)
{
  set_ = &set;
  for (unsigned i = 0; i <= helpers; ++i) {
    CipherContext* copy = nullptr;
    const StatusCode status = CipherDuplicate(set.dataCipher, &copy);
    if (IsFailure(status)) return status;
    ciphers_.push_back(copy);
  }
  try {
    for (size_t i = 1; i < ciphers_.size(); ++i)
      helpers_.emplace_back(&UnitEncryptor::Help, this, i);
  } catch (const std::system_error&) {
    return kImgOutOfMemory;
  }
  return kStatusSuccess;
}

StatusCode UnitEncryptor::Encipher(uint64_t offset, const uint8_t* input, uint8_t* output,
                                   uint32_t length)
{
  const Job job{offset, input, output, length};
  if (!helpers_.empty()) {
    const std::lock_guard<SysMutex> lock(mutex_);
    job_ = job;
    busy_ = helpers_.size();
    status_ = kStatusSuccess;
    ++generation_;
    begun_.notify_all();
  }
  const StatusCode own = EncipherShare(job, 0);
  if (helpers_.empty()) return own;
  std::unique_lock<SysMutex> lock(mutex_);
  finished_.wait(lock, [this] { return busy_ == 0; });
  return IsFailure(own) ? own : status_;
}

StatusCode UnitEncryptor::EncipherShare(const Job& job, size_t index) const
{
  const uint32_t units = job.length / set_->unitSize;
  const auto count = static_cast<uint32_t>(ciphers_.size());
  const uint32_t perShare = (units + count - 1) / count;
  const uint32_t first = std::min(units, static_cast<uint32_t>(index) * perShare);
  const uint32_t last = std::min(units, first + perShare);
  if (last == first) return kStatusSuccess;
  const uint32_t skip = first * set_->unitSize;
  return CipherUnits(*set_, ciphers_[index], job.offset + skip, job.input + skip, job.output + skip,
                     (last - first) * set_->unitSize, true);
}

void UnitEncryptor::Help(size_t index)
{
  uint64_t seen = 0;
  std::unique_lock<SysMutex> lock(mutex_);
  for (;;) {
    begun_.wait(lock, [&] { return generation_ != seen || stopping_; });
    if (stopping_) return;
    seen = generation_;
    const Job job = job_;
    lock.unlock();
    const StatusCode status = EncipherShare(job, index);
    lock.lock();
    if (IsFailure(status) && !IsFailure(status_)) status_ = status;
    if (--busy_ == 0) finished_.notify_all();
  }
}

void UnitEncryptor::Stop()
{
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    stopping_ = true;
  }
  begun_.notify_all();
  for (std::thread& helper : helpers_) helper.join();
  for (CipherContext* cipher : ciphers_) CipherDestroy(cipher);
  helpers_.clear();
  ciphers_.clear();
}
