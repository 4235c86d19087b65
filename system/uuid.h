// Unique identifiers, laid out like the Windows GUID (and stored that way on disk).
#pragma once

#include <cstdint>

#include "system/status.h"

struct Guid {
  uint32_t data1;
  uint16_t data2;
  uint16_t data3;
  uint8_t data4[8];
};
static_assert(sizeof(Guid) == 16);

// Makes a new unique identifier; kSysUuidFailed if the system cannot.
StatusCode SysCreateUuid(Guid* out);

// A test seam: while a sequence is set, SysCreateUuid hands out `*first`, then the same
// identifier with data1 counted up by one each time; null gives real identifiers back.
// Production code never sets a sequence.
void SysSetUuidSequence(const Guid* first);
