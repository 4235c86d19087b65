#include <algorithm>
#include <array>
#include <cstddef>

#include "res/resource.h"
#include "res/texts.h"

namespace {

// One entry per CRYPTELLE_TEXT line; the length comes from the literal's size, so
// embedded NUL characters stay part of the text.
template <size_t N>
constexpr TextEntry Entry(unsigned id, const char16_t (&text)[N])
{
  return TextEntry{id, std::u16string_view(text, N - 1)};
}

constexpr auto SortedTable()
{
  std::array table{
#define CRYPTELLE_TEXT(id, text) Entry(id, u"" text),
#include "res/texts.def"
#undef CRYPTELLE_TEXT
  };
  std::sort(table.begin(), table.end(),
            [](const TextEntry& a, const TextEntry& b) { return a.id < b.id; });
  return table;
}

constexpr auto kTable = SortedTable();

}  // namespace

std::span<const TextEntry> TextTable()
{
  return kTable;
}

const std::u16string_view* FindTableText(unsigned id)
{
  const auto* entry = std::lower_bound(kTable.begin(), kTable.end(), id,
                                       [](const TextEntry& e, unsigned key) { return e.id < key; });
  if (entry == kTable.end() || entry->id != id) return nullptr;
  return &entry->text;
}

std::vector<std::u16string> SplitTextList(std::u16string_view list)
{
  std::vector<std::u16string> names;
  if (list.empty()) return names;
  const char16_t separator = list.front();
  size_t start = 1;
  while (start < list.size()) {
    const size_t end = std::min(list.find(separator, start), list.size());
    if (end == start) break;
    names.emplace_back(list.substr(start, end - start));
    start = end + 1;
  }
  return names;
}
