// The recently mounted images: an ordered list of image paths kept under
// "Software\Pellmora\Cryptelle\1.0\MRU", subkey "Recent Document List", as "DocumentCount"
// (the list's maximum length, REG_DWORD) and "Document1" (the newest) … "Document15"
// (REG_SZ, terminator included).
//
// The list itself is one object of the process, owned by whoever shows it (the main
// window's menu); these functions load it, store it, and add to it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "system/status.h"

inline constexpr char16_t kRecentListKeyPath[] = u"Software\\Pellmora\\Cryptelle\\1.0\\MRU";

inline constexpr uint32_t kRecentListDefaultMaximum = 4;
inline constexpr uint32_t kRecentListSmallestMaximum = 2;
inline constexpr uint32_t kRecentListLargestMaximum = 16;
// Paths longer than this are not kept.
inline constexpr size_t kMaxRecentPathLength = 259;

struct RecentImageList {
  uint32_t maximum = kRecentListDefaultMaximum;
  std::vector<std::u16string> entries;  // the oldest first, the newest last
};

// Loads the list from `keyPath` and its subkey "Recent Document List", neither created.
// When either key is missing, or "DocumentCount" is missing or not a REG_DWORD, the list
// stays as it was. Otherwise the maximum becomes "DocumentCount" clamped into 2..16 and the
// entries are "Document<maximum>" down to "Document1", each taken only when it reads with a
// 520-byte query, is REG_SZ or REG_EXPAND_SZ, has an even size and (when not empty) ends in
// a terminator. Returns the status of opening the keys.
StatusCode ReadRecentList(RecentImageList* list, const char16_t* keyPath);

// Stores the list under `keyPath` (keys created when missing): "DocumentCount" = the
// maximum, "Document1" = the newest entry and so on, and deletes the numbers from the
// entry count + 1 to 15. Succeeds once the keys opened; failures of single values are not
// reported.
StatusCode WriteRecentList(const RecentImageList& list, const char16_t* keyPath);

// Records an image after a successful mount, unless "PrivacyMode" of the application key
// is non-zero (then neither the list nor the store changes). An entry equal to `path`
// ignoring case is taken out; a full list drops its oldest entry; `path` becomes the newest
// entry and the list is written under kRecentListKeyPath. A path longer than
// kMaxRecentPathLength characters is refused with kSysInvalidParameter. The caller shows
// the list anew afterwards (the menu section).
StatusCode AddRecentImage(RecentImageList* list, const char16_t* path);

// Empties the list (from the newest entry backwards) and writes it under kRecentListKeyPath,
// which keeps "DocumentCount" and deletes every stored entry.
StatusCode ClearRecentList(RecentImageList* list);
