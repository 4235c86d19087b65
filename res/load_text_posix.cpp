#include "res/texts.h"

// Without Windows resources the compiled table is the string table.
std::u16string LoadText(unsigned id)
{
  const std::u16string_view* text = FindTableText(id);
  return text ? std::u16string(*text) : std::u16string();
}
