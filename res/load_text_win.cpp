#include <windows.h>

#include "res/texts.h"
#include "system/wide_text_win.h"

// Reads the string from the program's own string-table resource. With a buffer size of 0,
// LoadStringW hands out a pointer into the resource and the full length, embedded NUL
// characters included.
std::u16string LoadText(unsigned id)
{
  const wchar_t* text = nullptr;
  const int length = LoadStringW(GetModuleHandleW(nullptr), id, reinterpret_cast<LPWSTR>(&text), 0);
  if (length <= 0 || text == nullptr) return std::u16string();
  return std::u16string(Utf16(text), static_cast<size_t>(length));
}
