// The capacity of a new image: the capacity page's steps and limits, and its reading of the
// capacity text, a number (a decimal fraction is allowed) followed by one of the string
// table's unit texts "MB", "GB" or "TB" (binary units), exactly in that spelling.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/size_units.h"

inline constexpr uint64_t kMinimumCapacity = 4 * kMegabyte;
inline constexpr uint64_t kMaximumCapacity = 2 * kTerabyte;
// Capacities are whole megabytes.
inline constexpr uint64_t kCapacityGranularity = kMegabyte;

// The capacity of each trackbar position, 0 to 31. Positions 13 and 14 both hold 32 GB: the
// trackbar has two positions for it.
inline constexpr std::array<uint64_t, 32> CapacitySteps{
    4 * kMegabyte,    8 * kMegabyte,   16 * kMegabyte,  32 * kMegabyte,  64 * kMegabyte,
    128 * kMegabyte,  256 * kMegabyte, 512 * kMegabyte, 1 * kGigabyte,   2 * kGigabyte,
    4 * kGigabyte,    8 * kGigabyte,   16 * kGigabyte,  32 * kGigabyte,  32 * kGigabyte,
    40 * kGigabyte,   60 * kGigabyte,  80 * kGigabyte,  100 * kGigabyte, 120 * kGigabyte,
    160 * kGigabyte,  200 * kGigabyte, 250 * kGigabyte, 300 * kGigabyte, 320 * kGigabyte,
    400 * kGigabyte,  500 * kGigabyte, 640 * kGigabyte, 750 * kGigabyte, 1 * kTerabyte,
    1536 * kGigabyte, 2 * kTerabyte};

// The first trackbar position whose step is not smaller than `bytes`; the last position
// for a capacity above every step.
size_t CapacityStepPosition(uint64_t bytes);

// The unit text (the string table's "MB", "GB" or "TB") that the trimmed text ends with;
// empty when it ends with none.
std::u16string CapacityUnitOf(std::u16string_view text);

// Reads a capacity text: trims white space, takes the unit from the last two characters and
// the number from the start (with the decimal point of the process locale), and truncates
// the product to bytes. 0 when there is no unit or the number does not read; a number
// beyond what 64 bits hold gives UINT64_MAX, a negative one 0.
uint64_t ParseCapacityText(std::u16string_view text);

// The trimmed text with its unit completed, as the capacity box does when it loses the
// focus: unchanged when it ends with a unit; with "B" added when it ends with a unit's first
// letter ("900 M" becomes "900 MB"); else with `rememberedSuffix` added (the last unit the
// box showed, as " MB", " GB" or " TB"; may be empty).
std::u16string CompleteCapacityUnit(std::u16string_view text, std::u16string_view rememberedSuffix);

// A capacity brought within the limits: above 2 TB it is 2 TB, below 4 MB it is 4 MB, and
// otherwise it is rounded down to whole megabytes.
uint64_t ClampCapacity(uint64_t bytes);
