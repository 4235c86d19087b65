// Passwords do not outlive the operation that needed them: their characters are
// overwritten in place before the text is emptied and its memory released.
#pragma once

#include <string>

// Overwrites every character of `text` with zero, then empties it (its buffer stays
// allocated and overwritten until the string is destroyed).
inline void WipeSecretText(std::u16string& text)
{
  volatile char16_t* characters = text.data();
  for (size_t i = 0; i < text.size(); ++i) characters[i] = 0;
  text.clear();
}
