#include "wizard/capacity.h"

#include <cmath>
#include <cwchar>

#include "res/resource.h"
#include "res/texts.h"

namespace {

bool IsSpace(char16_t c)
{
  return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f' || c == u'\v';
}

std::u16string_view Trim(std::u16string_view text)
{
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::u16string_view LastTwo(std::u16string_view text)
{
  return text.size() < 2 ? text : text.substr(text.size() - 2);
}

struct Unit {
  unsigned textId;
  uint64_t factor;
};

// In the order in which a text's end is compared with them.
constexpr Unit kUnits[] = {
    {IDS_UNIT_MB, kMegabyte}, {IDS_UNIT_GB, kGigabyte}, {IDS_UNIT_TB, kTerabyte}};

// The unit that the trimmed text ends with; null for none.
const Unit* UnitAtEnd(std::u16string_view trimmed)
{
  const std::u16string_view last = LastTwo(trimmed);
  for (const Unit& unit : kUnits) {
    const std::u16string text = LoadText(unit.textId);
    if (!text.empty() && last == text) return &unit;
  }
  return nullptr;
}

// The number at the start of the text, read by the C library's wide-string conversion.
double LeadingNumber(std::u16string_view text)
{
  const std::wstring wide(text.begin(), text.end());
  return std::wcstod(wide.c_str(), nullptr);
}

// A double product as bytes: truncated, with NaN and negatives 0 and values beyond 64 bits
// the top value (a plain conversion would leave those undefined).
uint64_t TruncateToBytes(double product)
{
  if (std::isnan(product) || product <= 0) return 0;
  if (product >= 18446744073709551616.0) return UINT64_MAX;
  return static_cast<uint64_t>(product);
}

}  // namespace

size_t CapacityStepPosition(uint64_t bytes)
{
  for (size_t position = 0; position < CapacitySteps.size(); ++position) {
    if (bytes <= CapacitySteps[position]) return position;
  }
  return CapacitySteps.size() - 1;
}

std::u16string CapacityUnitOf(std::u16string_view text)
{
  const Unit* unit = UnitAtEnd(Trim(text));
  return unit ? LoadText(unit->textId) : std::u16string();
}

uint64_t ParseCapacityText(std::u16string_view text)
{
  const std::u16string_view trimmed = Trim(text);
  const Unit* unit = UnitAtEnd(trimmed);
  if (unit == nullptr) return 0;
  return TruncateToBytes(LeadingNumber(trimmed) * static_cast<double>(unit->factor));
}

std::u16string CompleteCapacityUnit(std::u16string_view text, std::u16string_view rememberedSuffix)
{
  std::u16string completed(Trim(text));
  if (UnitAtEnd(completed) != nullptr) return completed;
  // The "B" that completes a unit is the second character of the terabyte text.
  const std::u16string terabytes = LoadText(IDS_UNIT_TB);
  for (const Unit& unit : kUnits) {
    const std::u16string name = LoadText(unit.textId);
    if (!completed.empty() && !name.empty() && terabytes.size() >= 2 &&
        completed.back() == name.front()) {
      return completed + terabytes[1];
    }
  }
  return completed + std::u16string(rememberedSuffix);
}

uint64_t ClampCapacity(uint64_t bytes)
{
  if (bytes > kMaximumCapacity) return kMaximumCapacity;
  if (bytes < kMinimumCapacity) return kMinimumCapacity;
  return bytes / kCapacityGranularity * kCapacityGranularity;
}
