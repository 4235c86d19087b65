// Which drive letters are free for a mount: the rule by which the mount dialog fills its
// drive list and the creation worker picks the letter of its temporary mount.
//
// The facts come from the system: on Windows the logical-drive mask (GetLogicalDrives),
// the shell's hidden-drives restriction (SHRestricted with REST_NODRIVES) and the local
// names of the connected network disk resources (WNetOpenEnumW over RESOURCE_CONNECTED,
// RESOURCETYPE_DISK, one entry per call in 4096-byte buffers). Gathering them is the
// window side's part; the rule here is portable.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct DriveLetterFacts {
  uint32_t lettersInUse = 0;   // the logical-drive mask: bit 0 is A, bit 25 is Z
  uint32_t hiddenLetters = 0;  // the shell's hidden-drives mask, same bits
  // The local names of the connected network disk resources, e.g. "Z:" (a remembered but
  // disconnected drive is not among them).
  std::vector<std::u16string> networkLocalNames;
};

// The letters A to Z, ascending, whose bit is clear in both masks and which no network
// local name claims: a local name claims its first character when its second one is ":".
std::u16string FreeDriveLetters(const DriveLetterFacts& facts);

// The mount dialog's entries for `letters`: "X:" each, in the same order.
std::vector<std::u16string> DriveListEntries(std::u16string_view letters);
