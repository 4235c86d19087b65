#include "tree_probe.h"

#include <gtest/gtest.h>

void TreeProbe::Put(const std::u16string& keyPath, const std::u16string& name, uint32_t type,
                    const std::vector<uint8_t>& data)
{
  SettingsKeyPtr root;
  SettingsKeyPtr key;
  ASSERT_EQ(Backend()->OpenUserRoot(&root), kStatusSuccess);
  ASSERT_EQ(root->CreateSubKey(keyPath.c_str(), &key), kStatusSuccess);
  ASSERT_EQ(key->SetValue(name.c_str(), type, data.data(), static_cast<uint32_t>(data.size())),
            kStatusSuccess);
}

const SettingsNode* TreeProbe::Find(const std::u16string& keyPath)
{
  std::vector<std::u16string> names;
  if (IsFailure(SplitKeyPath(keyPath.c_str(), &names))) return nullptr;
  return FindKey(CurrentTree(), names);
}

std::optional<RawValue> TreeProbe::Get(const std::u16string& keyPath, const std::u16string& name)
{
  const SettingsNode* node = Find(keyPath);
  const SettingsValue* value = node != nullptr ? node->FindValue(name) : nullptr;
  if (value == nullptr) return std::nullopt;
  return RawValue{value->type, value->data};
}

bool TreeProbe::KeyExists(const std::u16string& keyPath)
{
  return Find(keyPath) != nullptr;
}

std::vector<std::u16string> TreeProbe::ValueNames(const std::u16string& keyPath)
{
  std::vector<std::u16string> names;
  const SettingsNode* node = Find(keyPath);
  if (node != nullptr) {
    for (const SettingsValue& value : node->values) names.push_back(value.name);
  }
  return names;
}
