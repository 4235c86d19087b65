// The encryption page's key lengths: per cipher its minimum, step and maximum in bits, the
// trackbar that offers them, and the length carried over when the cipher changes. The page
// offers AES, BLOWFISH and CAST, in the cipher engine's order; never RC4.
#pragma once

#include <array>
#include <cstdint>
#include <string>

struct KeyLengthRange {
  uint32_t minimum = 0;
  uint32_t step = 0;
  uint32_t maximum = 0;
};

// Indexed by the cipher engine's algorithm id: AES 128..256 by 64, Blowfish 128..448 by 8,
// CAST 64..128 by 8.
inline constexpr std::array<KeyLengthRange, 3> KeyLengthRanges{
    KeyLengthRange{128, 64, 256}, KeyLengthRange{128, 8, 448}, KeyLengthRange{64, 8, 128}};

// The trackbar of a cipher's lengths: positions 0..`lastPosition`, the current at
// `position`.
struct KeyLengthTrackbar {
  uint32_t lastPosition = 0;
  uint32_t position = 0;
};

// The trackbar after the cipher `algorithm` is chosen while `shownBits` was shown (0 when
// the page starts): the shown length is carried over (128 when it is 0), brought within the
// cipher's limits, and falls to the step below when it lies between two steps.
KeyLengthTrackbar CarryKeyLength(uint32_t algorithm, uint32_t shownBits);

// The length a trackbar position stands for.
constexpr uint32_t KeyLengthAt(uint32_t algorithm, uint32_t position)
{
  return KeyLengthRanges[algorithm].step * position + KeyLengthRanges[algorithm].minimum;
}

// The page's choice as it keeps it: the minimum and step of the cipher last applied (both 0
// before the first) and the trackbar's position; the length shown is always
// step * position + minimum.
class CKeyLengthChoice {
 public:
  // Applies the limits of `algorithm` (at the page's start and whenever the cipher
  // changes), carrying over the length shown; returns the trackbar to set.
  KeyLengthTrackbar Apply(uint32_t algorithm);
  // The trackbar moved.
  void Move(uint32_t position) { position_ = position; }

  uint32_t Bits() const { return step_ * position_ + minimum_; }
  uint32_t Minimum() const { return minimum_; }
  uint32_t Maximum() const { return maximum_; }

 private:
  uint32_t minimum_ = 0;
  uint32_t step_ = 0;
  uint32_t maximum_ = 0;
  uint32_t position_ = 0;
};

// "%u bits".
std::u16string KeyLengthText(uint32_t bits);

// The page warns about a key length below 64 bits. No cipher the page offers goes that low,
// so the warning stays hidden; the threshold is kept as it is.
constexpr bool KeyLengthTooSmall(uint32_t bits)
{
  return bits < 64;
}
