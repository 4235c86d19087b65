// Capacity texts of the image tool, read by the same rules as the new-image wizard's
// capacity box: a number (a decimal fraction is allowed) followed by the binary unit
// "MB", "GB" or "TB", exactly in that spelling.
#pragma once

#include <cstdint>
#include <string>

inline constexpr uint64_t kMegabyte = 1ull << 20;
inline constexpr uint64_t kGigabyte = 1ull << 30;
inline constexpr uint64_t kTerabyte = 1ull << 40;
inline constexpr uint64_t kMinimumCapacity = 4 * kMegabyte;
inline constexpr uint64_t kMaximumCapacity = 2 * kTerabyte;

// Reads a capacity text: trims white space, takes the unit from the last two characters
// ("MB", "GB", "TB", case-sensitive) and the number from the start, and truncates the
// product to bytes. 0 when there is no unit or the number does not read; a number beyond
// what 64 bits hold gives UINT64_MAX, a negative one 0.
uint64_t ParseCapacityText(const std::string& text);

struct CapacityChoice {
  uint64_t bytes = 0;     // 0 when the text is refused
  bool adjusted = false;  // clamped to the limits or rounded down to whole megabytes
};

// Turns a command-line capacity into the bytes to create. A text ending in a unit's first
// letter gets its "B" ("900 M" reads as 900 MB). The result is clamped to 4 MB .. 2 TB and
// rounded down to a whole number of megabytes, as the wizard does when its box loses the
// focus. Unlike the wizard, which falls back to its slider, a text that reads as 0 is
// refused: a script that passes a wrong capacity must not get some other size.
CapacityChoice ChooseCapacity(const std::string& text);

// A byte count as the largest binary unit that divides it, or as bytes: "8 MB", "1.5 TB" is
// shown as "1536 GB", "4097 bytes".
std::string CapacityText(uint64_t bytes);
