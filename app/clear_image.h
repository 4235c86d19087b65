// The clear command's question before a long job: clearing a fixed-size image rewrites every
// data block, so from 256 MB on the user is asked whether to proceed; sparse images and
// smaller ones are cleared without asking.
#pragma once

#include <cstdint>

#include "app/size_units.h"

inline constexpr uint64_t kLongClearCapacity = 256 * kMegabyte;

constexpr bool ClearTakesLong(bool fixedSize, uint64_t capacity)
{
  return fixedSize && capacity >= kLongClearCapacity;
}
