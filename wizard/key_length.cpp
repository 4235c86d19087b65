#include "wizard/key_length.h"

#include <algorithm>

#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"

KeyLengthTrackbar CarryKeyLength(uint32_t algorithm, uint32_t shownBits)
{
  const KeyLengthRange& range = KeyLengthRanges[algorithm];
  const uint32_t carried =
      std::clamp(shownBits == 0 ? 128u : shownBits, range.minimum, range.maximum);
  return KeyLengthTrackbar{(range.maximum - range.minimum) / range.step,
                           (carried - range.minimum) / range.step};
}

std::u16string KeyLengthText(uint32_t bits)
{
  return FormatText(LoadText(IDS_KEY_BITS), {bits});
}
