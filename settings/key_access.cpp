#include "settings/key_access.h"

#include <vector>

namespace {

StatusCode OpenBelowRoot(const char16_t* path, bool create, SettingsKeyPtr* key)
{
  SettingsKeyPtr root;
  const StatusCode status = CurrentSettingsBackend().OpenUserRoot(&root);
  if (IsFailure(status)) return status;
  return create ? root->CreateSubKey(path, key) : root->OpenSubKey(path, key);
}

}  // namespace

StatusCode CreateUserKey(const char16_t* path, SettingsKeyPtr* key)
{
  return OpenBelowRoot(path, true, key);
}

StatusCode OpenUserKey(const char16_t* path, SettingsKeyPtr* key)
{
  return OpenBelowRoot(path, false, key);
}

StatusCode QueryInto(SettingsKey& key, const char16_t* name, void* bytes, uint32_t size,
                     uint32_t* type)
{
  std::vector<uint8_t> buffer(size);
  uint32_t returned = size;
  uint32_t reported = kValueNone;
  const StatusCode status = key.QueryValue(name, &reported, buffer.data(), &returned);
  if (type != nullptr) *type = reported;
  if (!IsFailure(status)) std::memcpy(bytes, buffer.data(), returned < size ? returned : size);
  return status;
}

void ReadUncheckedDword(SettingsKey& key, const char16_t* name, uint32_t* value)
{
  QueryInto(key, name, value, sizeof *value, nullptr);
}

StatusCode WriteDword(SettingsKey& key, const char16_t* name, uint32_t value)
{
  return key.SetValue(name, kValueDword, &value, sizeof value);
}

std::u16string TextBeforeTerminator(const char16_t* text, size_t length)
{
  size_t end = 0;
  while (end < length && text[end] != 0) ++end;
  return std::u16string(text, end);
}
