// The recently mounted images in the main frame's File menu: one command per image, the
// newest first, and the image each command mounts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "settings/recent_images.h"

// The recent-image commands: the first opens the newest image.
inline constexpr uint32_t kFirstRecentCommand = 57616;
inline constexpr uint32_t kLastRecentCommand = 57631;

// Paths of this length or longer are not mounted from the menu.
inline constexpr size_t kRecentCommandPathLimit = 260;

// The list index (oldest first) that `command` opens in a list of `entryCount` images:
// entryCount - (command - 57615); none when that is not an index of the list.
std::optional<size_t> RecentEntryIndex(size_t entryCount, uint32_t command);

// The image path `command` mounts: the entry at its index, when there is one and its path
// is shorter than 260 characters.
std::optional<std::u16string> RecentImageOfCommand(const RecentImageList& list, uint32_t command);

struct RecentMenuItem {
  uint32_t command;
  std::u16string text;

  bool operator==(const RecentMenuItem&) const = default;
};

// The menu's items for the list, the newest first: "&1 path", "&2 path"... ("1&0" from the
// tenth on), each path shortened to RecentMenuPath.
std::vector<RecentMenuItem> RecentMenuItems(const RecentImageList& list);

// The longest path the menu shows whole.
inline constexpr size_t kRecentMenuPathWidth = 48;

// A path as the menu shows it: whole up to kRecentMenuPathWidth characters; longer ones keep
// their first component ("C:" or "\\server") and as many of their last components as fit,
// with "..." between them (the file name at least, however long).
std::u16string RecentMenuPath(const std::u16string& path);
