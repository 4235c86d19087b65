#include "settings/settings_tree.h"

#include <cstring>

#include "settings/settings_backend.h"
#include "system/error_map.h"
#include "system/text_case.h"

namespace {

bool SameName(const std::u16string& first, const std::u16string& second)
{
  return SysTextEqualIgnoringCase(first.c_str(), second.c_str());
}

std::u16string ValueName(const char16_t* name)
{
  return name != nullptr ? std::u16string(name) : std::u16string();
}

}  // namespace

SettingsNode* SettingsNode::FindSubKey(const std::u16string& subkeyName) const
{
  for (const std::unique_ptr<SettingsNode>& subkey : subkeys) {
    if (SameName(subkey->name, subkeyName)) return subkey.get();
  }
  return nullptr;
}

SettingsValue* SettingsNode::FindValue(const std::u16string& valueName)
{
  for (SettingsValue& value : values) {
    if (SameName(value.name, valueName)) return &value;
  }
  return nullptr;
}

const SettingsValue* SettingsNode::FindValue(const std::u16string& valueName) const
{
  return const_cast<SettingsNode*>(this)->FindValue(valueName);
}

SettingsNode* SettingsNode::AddSubKey(const std::u16string& subkeyName)
{
  SettingsNode* found = FindSubKey(subkeyName);
  if (found != nullptr) return found;
  subkeys.push_back(std::make_unique<SettingsNode>());
  subkeys.back()->name = subkeyName;
  return subkeys.back().get();
}

bool SameTree(const SettingsNode& first, const SettingsNode& second)
{
  if (first.name != second.name || first.values != second.values ||
      first.subkeys.size() != second.subkeys.size()) {
    return false;
  }
  for (size_t i = 0; i < first.subkeys.size(); ++i) {
    if (!SameTree(*first.subkeys[i], *second.subkeys[i])) return false;
  }
  return true;
}

StatusCode SplitKeyPath(const char16_t* path, std::vector<std::u16string>* names)
{
  names->clear();
  if (path == nullptr || *path == 0) return kStatusSuccess;
  std::u16string name;
  for (const char16_t* at = path;; ++at) {
    if (*at == u'\\' || *at == 0) {
      if (name.empty() || name.size() > kMaxKeyNameLength) {
        return MapSystemError(kErrorInvalidParameter);
      }
      names->push_back(name);
      name.clear();
      if (*at == 0) return kStatusSuccess;
    } else {
      name += *at;
    }
  }
}

SettingsNode* FindKey(SettingsNode& root, const std::vector<std::u16string>& names)
{
  SettingsNode* node = &root;
  for (const std::u16string& name : names) {
    node = node->FindSubKey(name);
    if (node == nullptr) return nullptr;
  }
  return node;
}

SettingsNode* CreateKey(SettingsNode& root, const std::vector<std::u16string>& names, bool* created)
{
  *created = false;
  SettingsNode* node = &root;
  for (const std::u16string& name : names) {
    SettingsNode* next = node->FindSubKey(name);
    if (next == nullptr) {
      next = node->AddSubKey(name);
      *created = true;
    }
    node = next;
  }
  return node;
}

StatusCode QueryNodeValue(const SettingsNode& node, const char16_t* name, uint32_t* type,
                          void* data, uint32_t* size)
{
  if (data != nullptr && size == nullptr) return MapSystemError(kErrorInvalidParameter);
  const SettingsValue* value = node.FindValue(ValueName(name));
  if (value == nullptr) return MapSystemError(kErrorFileNotFound);
  const auto stored = static_cast<uint32_t>(value->data.size());
  if (type != nullptr) *type = value->type;
  if (data != nullptr && *size < stored) {
    *size = stored;
    return MapSystemError(kErrorMoreData);
  }
  if (data != nullptr && stored != 0) std::memcpy(data, value->data.data(), stored);
  if (size != nullptr) *size = stored;
  return kStatusSuccess;
}

StatusCode SetNodeValue(SettingsNode& node, const char16_t* name, uint32_t type, const void* data,
                        uint32_t size)
{
  const std::u16string valueName = ValueName(name);
  if (valueName.size() > kMaxValueNameLength || (data == nullptr && size != 0)) {
    return MapSystemError(kErrorInvalidParameter);
  }
  const auto* bytes = static_cast<const uint8_t*>(data);
  SettingsValue* value = node.FindValue(valueName);
  if (value == nullptr) {
    node.values.push_back(SettingsValue{valueName, 0, {}});
    value = &node.values.back();
  }
  value->type = type;
  value->data.assign(bytes, bytes + size);
  return kStatusSuccess;
}

StatusCode DeleteNodeValue(SettingsNode& node, const char16_t* name)
{
  const std::u16string valueName = ValueName(name);
  for (auto it = node.values.begin(); it != node.values.end(); ++it) {
    if (SameName(it->name, valueName)) {
      node.values.erase(it);
      return kStatusSuccess;
    }
  }
  return MapSystemError(kErrorFileNotFound);
}
