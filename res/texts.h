// The program's texts: the string table by resource id, as UTF-16.
//
// On Windows the texts come from the module's string-table resource; elsewhere from the
// same table compiled into the program. Both are built from res/texts.def.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

struct TextEntry {
  unsigned id;
  std::u16string_view text;  // may hold NUL characters (the file dialogs' filter list)
};

// Every entry of the compiled table, in ascending id order.
std::span<const TextEntry> TextTable();

// The compiled table's text for `id`; null when the table has no such entry.
const std::u16string_view* FindTableText(unsigned id);

// The text of string `id`, empty when the string table has no such entry.
std::u16string LoadText(unsigned id);

// Splits a text list whose first character is the separator: "|Create|Mount||" gives
// "Create" and "Mount". Each name ends at the next separator; an empty name or the end of
// the text ends the list.
std::vector<std::u16string> SplitTextList(std::u16string_view list);
