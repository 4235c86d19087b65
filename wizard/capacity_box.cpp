#include "wizard/capacity_box.h"

#include "app/display_text.h"
#include "wizard/capacity.h"

std::u16string CapacityStepText(size_t position)
{
  const uint64_t bytes = CapacitySteps[position];
  return FormatSizeText(bytes, bytes >= kGigabyte);
}

std::u16string MinimumCapacityText()
{
  return FormatSizeText(kMinimumCapacity, false);
}

std::u16string MaximumCapacityText()
{
  return FormatSizeText(kMaximumCapacity, false);
}

void CCapacityBox::FocusGained(std::u16string_view text)
{
  const std::u16string unit = CapacityUnitOf(text);
  if (!unit.empty()) rememberedSuffix_ = u" " + unit;
}

CapacityBoxLeft CCapacityBox::FocusLost(std::u16string_view text, size_t position) const
{
  CapacityBoxLeft left;
  if (!CapacityUnitOf(text).empty()) {
    left.capacity = ParseCapacityText(text);
  } else {
    left.capacity = ParseCapacityText(CompleteCapacityUnit(text, rememberedSuffix_));
    if (left.capacity == 0) left.capacity = CapacitySteps[position];
    left.rewrite = FormatSizeText(left.capacity, true);
  }
  const uint64_t clamped = ClampCapacity(left.capacity);
  if (clamped != left.capacity) {
    left.capacity = clamped;
    left.rewrite = FormatSizeText(clamped, true);
  }
  left.position = CapacityStepPosition(left.capacity);
  return left;
}
