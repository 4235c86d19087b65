#include "ui/strings.h"

#include "res/texts.h"
#include "system/wide_text_win.h"

std::wstring LoadResourceString(UINT id)
{
  const std::u16string text = LoadText(id);
  return std::wstring(Wide(text.data()), text.size());
}
