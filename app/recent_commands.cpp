#include "app/recent_commands.h"

std::optional<size_t> RecentEntryIndex(size_t entryCount, uint32_t command)
{
  if (command < kFirstRecentCommand || command > kLastRecentCommand) return std::nullopt;
  const size_t position = command - (kFirstRecentCommand - 1);  // 1 for the newest
  if (position > entryCount) return std::nullopt;
  return entryCount - position;
}

std::optional<std::u16string> RecentImageOfCommand(const RecentImageList& list, uint32_t command)
{
  const std::optional<size_t> index = RecentEntryIndex(list.entries.size(), command);
  if (!index) return std::nullopt;
  const std::u16string& path = list.entries[*index];
  if (path.size() >= kRecentCommandPathLimit) return std::nullopt;
  return path;
}

namespace {

// "&1".."&9", then "1&0", "1&1"...: the last digit is the mnemonic.
std::u16string MenuNumber(size_t number)
{
  std::u16string digits;
  for (size_t rest = number; rest > 0; rest /= 10) {
    digits.insert(digits.begin(), static_cast<char16_t>(u'0' + rest % 10));
  }
  digits.insert(digits.size() - 1, u"&");
  return digits;
}

}  // namespace

std::vector<RecentMenuItem> RecentMenuItems(const RecentImageList& list)
{
  std::vector<RecentMenuItem> items;
  const size_t count = list.entries.size();
  for (size_t position = 0; position < count; ++position) {
    const uint32_t command = kFirstRecentCommand + static_cast<uint32_t>(position);
    if (command > kLastRecentCommand) break;
    items.push_back({command, MenuNumber(position + 1) + u" " +
                                  RecentMenuPath(list.entries[count - 1 - position])});
  }
  return items;
}

std::u16string RecentMenuPath(const std::u16string& path)
{
  if (path.size() <= kRecentMenuPathWidth) return path;
  // The first component: up to the first separator after the drive or server name.
  const size_t nameStart = path.starts_with(u"\\\\") ? 2 : 0;
  const size_t firstEnd = path.find(u'\\', nameStart);
  const size_t lastStart = path.rfind(u'\\');
  if (firstEnd == std::u16string::npos || firstEnd == lastStart) return path;
  const std::u16string head = path.substr(0, firstEnd) + u"\\...";
  // Whole trailing components while they fit beside the head; the file name always.
  size_t tailStart = lastStart;
  while (tailStart > firstEnd) {
    const size_t previous = path.rfind(u'\\', tailStart - 1);
    if (previous <= firstEnd || head.size() + (path.size() - previous) > kRecentMenuPathWidth) {
      break;
    }
    tailStart = previous;
  }
  return head + path.substr(tailStart);
}
