// Probes of the stores that hold a tree of keys (settings/settings_tree.h): values are
// seeded through the store itself and inspected in the tree.
#pragma once

#include "settings/settings_tree.h"
#include "store_probe.h"

class TreeProbe : public StoreProbe {
 public:
  void Put(const std::u16string& keyPath, const std::u16string& name, uint32_t type,
           const std::vector<uint8_t>& data) override;
  std::optional<RawValue> Get(const std::u16string& keyPath, const std::u16string& name) override;
  bool KeyExists(const std::u16string& keyPath) override;
  std::vector<std::u16string> ValueNames(const std::u16string& keyPath) override;

 protected:
  // The store's tree as it stands now.
  virtual SettingsNode& CurrentTree() = 0;

 private:
  const SettingsNode* Find(const std::u16string& keyPath);
};

std::unique_ptr<StoreProbe> MakeMemoryProbe();
// The file store on POSIX, the registry on Windows.
std::unique_ptr<StoreProbe> MakePlatformProbe();
