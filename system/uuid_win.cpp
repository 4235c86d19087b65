#include <rpc.h>
#include <windows.h>

#include <cstring>

#include "system/uuid_backend.h"

StatusCode BackendCreateUuid(Guid* out)
{
  UUID id;
  const RPC_STATUS status = UuidCreate(&id);
  if (status != RPC_S_OK && status != RPC_S_UUID_LOCAL_ONLY) return kSysUuidFailed;
  static_assert(sizeof id == sizeof *out);
  std::memcpy(out, &id, sizeof id);
  return kStatusSuccess;
}
