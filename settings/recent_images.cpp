#include "settings/recent_images.h"

#include "settings/key_access.h"
#include "system/text_case.h"

namespace {

constexpr char16_t kListSubKey[] = u"Recent Document List";
constexpr uint32_t kHighestStoredNumber = 15;
constexpr uint32_t kEntryQueryBytes = 520;

std::u16string DocumentName(uint32_t number)
{
  std::u16string name = u"Document";
  for (const char c : std::to_string(number)) name += static_cast<char16_t>(c);
  return name;
}

// Opens the key of the list: `keyPath`, then its subkey, each created when `create`.
StatusCode OpenListKey(const char16_t* keyPath, bool create, SettingsKeyPtr* key)
{
  SettingsKeyPtr parent;
  const StatusCode status =
      create ? CreateUserKey(keyPath, &parent) : OpenUserKey(keyPath, &parent);
  if (IsFailure(status)) return status;
  return create ? parent->CreateSubKey(kListSubKey, key) : parent->OpenSubKey(kListSubKey, key);
}

// One stored entry, when it is acceptable as a path.
bool ReadEntry(SettingsKey& key, uint32_t number, std::u16string* path)
{
  char16_t text[kEntryQueryBytes / 2] = {};
  uint32_t size = sizeof text;
  uint32_t type = kValueNone;
  if (IsFailure(key.QueryValue(DocumentName(number).c_str(), &type, text, &size))) return false;
  if (type != kValueString && type != kValueExpandString) return false;
  if (size % 2 != 0) return false;
  const size_t length = size / 2;
  if (length != 0 && text[length - 1] != 0) return false;
  *path = TextBeforeTerminator(text, length);
  return true;
}

}  // namespace

StatusCode ReadRecentList(RecentImageList* list, const char16_t* keyPath)
{
  SettingsKeyPtr key;
  const StatusCode status = OpenListKey(keyPath, false, &key);
  if (IsFailure(status)) return status;
  uint32_t count = 0;
  uint32_t type = kValueNone;
  if (IsFailure(QueryInto(*key, u"DocumentCount", &count, sizeof count, &type)) ||
      type != kValueDword) {
    return kStatusSuccess;
  }
  if (count < kRecentListSmallestMaximum) count = kRecentListSmallestMaximum;
  if (count > kRecentListLargestMaximum) count = kRecentListLargestMaximum;
  list->maximum = count;
  list->entries.clear();
  for (uint32_t number = count; number >= 1; --number) {
    std::u16string path;
    if (ReadEntry(*key, number, &path)) list->entries.push_back(path);
  }
  return kStatusSuccess;
}

StatusCode WriteRecentList(const RecentImageList& list, const char16_t* keyPath)
{
  SettingsKeyPtr key;
  const StatusCode status = OpenListKey(keyPath, true, &key);
  if (IsFailure(status)) return status;
  WriteDword(*key, u"DocumentCount", list.maximum);
  const auto count = static_cast<uint32_t>(list.entries.size());
  for (uint32_t number = count; number >= 1; --number) {
    const std::u16string& path = list.entries[count - number];
    key->SetValue(DocumentName(number).c_str(), kValueString, path.c_str(),
                  static_cast<uint32_t>((path.size() + 1) * sizeof(char16_t)));
  }
  for (uint32_t number = count + 1; number <= kHighestStoredNumber; ++number) {
    key->DeleteValue(DocumentName(number).c_str());
  }
  return kStatusSuccess;
}

StatusCode AddRecentImage(RecentImageList* list, const char16_t* path)
{
  if (path == nullptr) return kSysInvalidParameter;
  const std::u16string image = path;
  if (image.size() > kMaxRecentPathLength) return kSysInvalidParameter;
  uint32_t privacy = 0;
  SettingsKeyPtr key;
  if (!IsFailure(CreateUserKey(kApplicationKeyPath, &key))) {
    ReadUncheckedDword(*key, u"PrivacyMode", &privacy);
    key.reset();
  }
  if (privacy != 0) return kStatusSuccess;
  std::vector<std::u16string>& entries = list->entries;
  for (auto it = entries.begin(); it != entries.end(); ++it) {
    if (SysTextEqualIgnoringCase(it->c_str(), path)) {
      entries.erase(it);
      break;
    }
  }
  if (!entries.empty() && entries.size() >= list->maximum) entries.erase(entries.begin());
  entries.push_back(image);
  return WriteRecentList(*list, kRecentListKeyPath);
}

StatusCode ClearRecentList(RecentImageList* list)
{
  while (!list->entries.empty()) list->entries.pop_back();
  return WriteRecentList(*list, kRecentListKeyPath);
}
