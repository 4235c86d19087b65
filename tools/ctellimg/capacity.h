// Capacities on the image tool's command line, read by the rules of the new-image wizard's
// capacity box (wizard/capacity.h), and shown in the tool's reports.
#pragma once

#include <cstdint>
#include <string>

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
