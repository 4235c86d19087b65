// The product's UTF-16 text (char16_t) is the Windows API's wide text (wchar_t): both are
// 16-bit code units of the same encoding, so a pointer to one is a pointer to the other.
// These are the one place that says so.
#pragma once

#include <string>

static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline const wchar_t* Wide(const char16_t* text)
{
  return reinterpret_cast<const wchar_t*>(text);
}

inline const wchar_t* Wide(const std::u16string& text)
{
  return Wide(text.c_str());
}

inline const char16_t* Utf16(const wchar_t* text)
{
  return reinterpret_cast<const char16_t*>(text);
}
