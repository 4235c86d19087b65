// Overwriting secrets before their memory is released: passwords and derived keys must not
// outlive the operation that needed them. The writes go through a volatile pointer so that
// the compiler cannot drop them as stores to memory that is about to die.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

inline void WipeBytes(void* data, size_t size)
{
  volatile auto* bytes = static_cast<volatile uint8_t*>(data);
  for (size_t i = 0; i < size; ++i) bytes[i] = 0;
}

// Overwrites every character the text holds (its whole capacity) and empties it.
inline void WipeText(std::u16string& text)
{
  text.resize(text.capacity());
  WipeBytes(text.data(), text.size() * sizeof(char16_t));
  text.clear();
}

inline void WipeText(std::string& text)
{
  text.resize(text.capacity());
  WipeBytes(text.data(), text.size());
  text.clear();
}
