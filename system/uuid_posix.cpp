#include <sys/random.h>

#include <cstring>

#include "system/uuid_backend.h"

// A random (version 4) identifier from the kernel's generator.
StatusCode BackendCreateUuid(Guid* out)
{
  uint8_t bytes[sizeof(Guid)];
  if (getrandom(bytes, sizeof bytes, 0) != static_cast<ssize_t>(sizeof bytes))
    return kSysUuidFailed;
  Guid id;
  std::memcpy(&id, bytes, sizeof id);
  id.data3 = static_cast<uint16_t>((id.data3 & 0x0FFF) | 0x4000);
  id.data4[0] = static_cast<uint8_t>((id.data4[0] & 0x3F) | 0x80);
  *out = id;
  return kStatusSuccess;
}
