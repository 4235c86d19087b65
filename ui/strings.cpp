#include "ui/strings.h"

#include "res/texts.h"

std::wstring LoadResourceString(UINT id)
{
  const std::u16string text = LoadText(id);
  return std::wstring(reinterpret_cast<const wchar_t*>(text.data()), text.size());
}
