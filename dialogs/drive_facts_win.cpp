#include "dialogs/drive_facts_win.h"

#include <windows.h>

#include <shlobj.h>
#include <winnetwk.h>

#include <cstdint>
#include <vector>

#include "system/wide_text_win.h"

namespace {

// The shell's hidden-drives mask (SHRestricted with REST_NODRIVES): a bit per letter, bit 0
// is A.
uint32_t HiddenDriveLetters()
{
  return static_cast<uint32_t>(SHRestricted(REST_NODRIVES));
}

// The local names of the connected network disk resources, fetched one entry at a time.
std::vector<std::u16string> ConnectedNetworkDriveNames()
{
  std::vector<std::u16string> names;
  HANDLE enumeration = nullptr;
  if (WNetOpenEnumW(RESOURCE_CONNECTED, RESOURCETYPE_DISK, 0, nullptr, &enumeration) != NO_ERROR) {
    return names;
  }
  // A buffer of 4096 bytes, aligned for the NETRESOURCEW at its start.
  std::vector<uint64_t> buffer(4096 / sizeof(uint64_t));
  for (;;) {
    DWORD count = 1;
    DWORD size = static_cast<DWORD>(buffer.size() * sizeof(uint64_t));
    if (WNetEnumResourceW(enumeration, &count, buffer.data(), &size) != NO_ERROR) break;
    const auto* resource = reinterpret_cast<const NETRESOURCEW*>(buffer.data());
    if (count == 1 && resource->lpLocalName != nullptr) {
      names.emplace_back(Utf16(resource->lpLocalName));
    }
  }
  WNetCloseEnum(enumeration);
  return names;
}

}  // namespace

DriveLetterFacts GatherDriveFacts()
{
  DriveLetterFacts facts;
  facts.lettersInUse = static_cast<uint32_t>(GetLogicalDrives());
  facts.hiddenLetters = HiddenDriveLetters();
  facts.networkLocalNames = ConnectedNetworkDriveNames();
  return facts;
}
