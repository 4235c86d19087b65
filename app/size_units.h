// The binary units in which the program shows and reads sizes: 1 KB = 1024 bytes, and each
// further unit 1024 of the one before.
#pragma once

#include <cstdint>

inline constexpr uint64_t kKilobyte = uint64_t{1} << 10;
inline constexpr uint64_t kMegabyte = uint64_t{1} << 20;
inline constexpr uint64_t kGigabyte = uint64_t{1} << 30;
inline constexpr uint64_t kTerabyte = uint64_t{1} << 40;
