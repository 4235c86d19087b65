// The capacity page's edit box and trackbar as they work together: the text a trackbar
// position shows, the unit the box remembers when it gains the focus, and the normalisation
// of a typed text when the box loses the focus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The text of trackbar position `position`: its step as a size text, precise from 1 GB up.
std::u16string CapacityStepText(size_t position);

// The page's two limit labels: 4 MB and 2 TB in the plain form.
std::u16string MinimumCapacityText();
std::u16string MaximumCapacityText();

// What leaving the box gives: the capacity, the text the box is rewritten with (none when
// the text stays as typed) and the trackbar's new position.
struct CapacityBoxLeft {
  uint64_t capacity = 0;
  std::optional<std::u16string> rewrite;
  size_t position = 0;
};

class CCapacityBox {
 public:
  // The box gains the focus holding `text`: a text ending with one of the unit texts makes
  // that unit the remembered suffix (" MB", " GB", " TB"); any other leaves it as it is.
  void FocusGained(std::u16string_view text);

  // The box loses the focus holding `text` while the trackbar is at `position`. A text
  // without a unit gets one: "B" after a unit's first letter, else the remembered suffix;
  // such a text that then reads as 0 takes the trackbar's step. The capacity is clamped to
  // 4 MB..2 TB and rounded down to whole megabytes, and the trackbar goes to the first
  // step not smaller than it. The box is rewritten in the precise size text whenever the
  // unit was completed or a limit changed the value.
  CapacityBoxLeft FocusLost(std::u16string_view text, size_t position) const;

  const std::u16string& RememberedSuffix() const { return rememberedSuffix_; }

 private:
  std::u16string rememberedSuffix_;
};
