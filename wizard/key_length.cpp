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

KeyLengthTrackbar CKeyLengthChoice::Apply(uint32_t algorithm)
{
  const KeyLengthTrackbar trackbar = CarryKeyLength(algorithm, Bits());
  minimum_ = KeyLengthRanges[algorithm].minimum;
  step_ = KeyLengthRanges[algorithm].step;
  maximum_ = KeyLengthRanges[algorithm].maximum;
  position_ = trackbar.position;
  return trackbar;
}

std::u16string KeyLengthText(uint32_t bits)
{
  return FormatText(LoadText(IDS_KEY_BITS), {bits});
}
