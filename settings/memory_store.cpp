#include "settings/memory_store.h"

#include <new>

#include "system/error_map.h"

class MemoryKey : public SettingsKey {
 public:
  MemoryKey(MemorySettingsBackend* store, SettingsNode* node, std::u16string path)
      : store_(store), node_(node), path_(std::move(path))
  {
  }

  StatusCode OpenSubKey(const char16_t* path, SettingsKeyPtr* key) override
  {
    return Open(path, false, key);
  }

  StatusCode CreateSubKey(const char16_t* path, SettingsKeyPtr* key) override
  {
    return Open(path, true, key);
  }

  StatusCode QueryValue(const char16_t* name, uint32_t* type, void* data, uint32_t* size) override
  {
    return QueryNodeValue(*node_, name, type, data, size);
  }

  StatusCode SetValue(const char16_t* name, uint32_t type, const void* data, uint32_t size) override
  {
    Record(u"set ", name);
    return SetNodeValue(*node_, name, type, data, size);
  }

  StatusCode DeleteValue(const char16_t* name) override
  {
    Record(u"delete ", name);
    return DeleteNodeValue(*node_, name);
  }

 private:
  StatusCode Open(const char16_t* path, bool create, SettingsKeyPtr* key)
  {
    std::vector<std::u16string> names;
    StatusCode status = SplitKeyPath(path, &names);
    if (IsFailure(status)) return status;
    std::u16string full = path_;
    for (const std::u16string& name : names) full += (full.empty() ? u"" : u"\\") + name;
    if (create) store_->journal_.push_back(u"create " + full);
    if (store_->failingOpens_ != 0) return MapSystemError(store_->failingOpens_);
    bool created = false;
    SettingsNode* node = create ? CreateKey(*node_, names, &created) : FindKey(*node_, names);
    if (node == nullptr) return MapSystemError(kErrorFileNotFound);
    auto* opened = new (std::nothrow) MemoryKey(store_, node, full);
    if (opened == nullptr) return kSysOutOfMemory;
    key->reset(opened);
    return kStatusSuccess;
  }

  void Record(const char16_t* operation, const char16_t* name)
  {
    store_->journal_.push_back(operation + path_ + u":" + (name != nullptr ? name : u""));
  }

  MemorySettingsBackend* store_;
  SettingsNode* node_;
  std::u16string path_;
};

StatusCode MemorySettingsBackend::OpenUserRoot(SettingsKeyPtr* root)
{
  auto* opened = new (std::nothrow) MemoryKey(this, &root_, std::u16string());
  if (opened == nullptr) return kSysOutOfMemory;
  root->reset(opened);
  return kStatusSuccess;
}
