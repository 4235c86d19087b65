#include "tools/ctellimg/capacity.h"

#include "app/size_units.h"
#include "system/utf.h"
#include "wizard/capacity.h"

CapacityChoice ChooseCapacity(const std::string& text)
{
  // No unit is remembered on the command line: a bare number stays without one and is refused.
  const uint64_t parsed = ParseCapacityText(CompleteCapacityUnit(Utf8ToUtf16(text), u""));
  CapacityChoice choice;
  if (parsed == 0) return choice;
  choice.bytes = ClampCapacity(parsed);
  choice.adjusted = choice.bytes != parsed;
  return choice;
}

std::string CapacityText(uint64_t bytes)
{
  if (bytes != 0 && bytes % kTerabyte == 0) return std::to_string(bytes / kTerabyte) + " TB";
  if (bytes != 0 && bytes % kGigabyte == 0) return std::to_string(bytes / kGigabyte) + " GB";
  if (bytes != 0 && bytes % kMegabyte == 0) return std::to_string(bytes / kMegabyte) + " MB";
  return std::to_string(bytes) + " bytes";
}
