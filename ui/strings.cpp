#include "ui/strings.h"

#include "ui/window.h"

namespace {

// With a zero buffer size LoadStringW points into the loaded resource instead of copying,
// and returns the full length, so no length limit applies and embedded NULs survive.
int FindString(UINT id, const wchar_t** text)
{
  return LoadStringW(ResourceModule(), id, reinterpret_cast<LPWSTR>(text), 0);
}

}  // namespace

std::wstring LoadResourceString(UINT id)
{
  const wchar_t* text = nullptr;
  const int length = FindString(id, &text);
  if (length <= 0 || text == nullptr) return {};
  return std::wstring(text, static_cast<size_t>(length));
}
