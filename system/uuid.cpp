#include "system/uuid.h"

#include <mutex>

#include "system/uuid_backend.h"

namespace {

std::mutex sequenceMutex;
bool sequenceActive = false;
Guid nextInSequence{};

}  // namespace

void SysSetUuidSequence(const Guid* first)
{
  const std::lock_guard<std::mutex> lock(sequenceMutex);
  sequenceActive = first != nullptr;
  if (first != nullptr) nextInSequence = *first;
}

StatusCode SysCreateUuid(Guid* out)
{
  if (out == nullptr) return kSysInvalidParameter;
  {
    const std::lock_guard<std::mutex> lock(sequenceMutex);
    if (sequenceActive) {
      *out = nextInSequence;
      ++nextInSequence.data1;
      return kStatusSuccess;
    }
  }
  return BackendCreateUuid(out);
}
