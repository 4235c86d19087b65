// Keys and values held in memory, with the registry's rules for names and values. The
// in-memory store works on one tree; the file store loads a tree from its file for every
// operation and saves it back after a change.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "system/status.h"

struct SettingsValue {
  std::u16string name;
  uint32_t type = 0;
  std::vector<uint8_t> data;

  bool operator==(const SettingsValue&) const = default;
};

// One key: its name, its values and its subkeys, each in the order they were created.
struct SettingsNode {
  std::u16string name;
  std::vector<SettingsValue> values;
  std::vector<std::unique_ptr<SettingsNode>> subkeys;

  // Names compare ignoring case; null when absent.
  SettingsNode* FindSubKey(const std::u16string& subkeyName) const;
  SettingsValue* FindValue(const std::u16string& valueName);
  const SettingsValue* FindValue(const std::u16string& valueName) const;

  // The subkey of the name, added when absent.
  SettingsNode* AddSubKey(const std::u16string& subkeyName);
};

// Deep equality: names, types, data and order.
bool SameTree(const SettingsNode& first, const SettingsNode& second);

// Splits a backslash-separated key path into its key names. An empty path has no names;
// an empty or over-long name fails with kSysInvalidParameter.
StatusCode SplitKeyPath(const char16_t* path, std::vector<std::u16string>* names);

// The key at `names` below `root`, or null.
SettingsNode* FindKey(SettingsNode& root, const std::vector<std::u16string>& names);

// The key at `names` below `root`, created with every missing key on the way; `*created`
// tells whether any key was added.
SettingsNode* CreateKey(SettingsNode& root, const std::vector<std::u16string>& names,
                        bool* created);

// The value operations of SettingsKey (settings/settings_backend.h) on one key.
StatusCode QueryNodeValue(const SettingsNode& node, const char16_t* name, uint32_t* type,
                          void* data, uint32_t* size);
StatusCode SetNodeValue(SettingsNode& node, const char16_t* name, uint32_t type, const void* data,
                        uint32_t size);
StatusCode DeleteNodeValue(SettingsNode& node, const char16_t* name);
