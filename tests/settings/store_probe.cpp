#include "store_probe.h"

#include <cstring>

#include "settings/memory_store.h"
#include "settings/settings_tree.h"
#include "tree_probe.h"

std::vector<uint8_t> DwordBytes(uint32_t value)
{
  std::vector<uint8_t> bytes(4);
  std::memcpy(bytes.data(), &value, 4);
  return bytes;
}

std::vector<uint8_t> StringBytes(const std::u16string& text, bool terminated)
{
  const size_t size = (text.size() + (terminated ? 1 : 0)) * sizeof(char16_t);
  std::vector<uint8_t> bytes(size);
  std::memcpy(bytes.data(), text.c_str(), size);
  return bytes;
}

uint32_t DwordOf(const RawValue& value)
{
  uint32_t number = 0;
  std::memcpy(&number, value.data.data(), value.data.size() < 4 ? value.data.size() : 4);
  return number;
}

std::u16string TextOf(const RawValue& value)
{
  std::u16string text(value.data.size() / 2, u'\0');
  std::memcpy(text.data(), value.data.data(), text.size() * 2);
  while (!text.empty() && text.back() == 0) text.pop_back();
  return text;
}

namespace {

class MemoryProbe : public TreeProbe {
 public:
  SettingsBackend* Backend() override { return &store_; }
  MemorySettingsBackend* Memory() override { return &store_; }

 protected:
  SettingsNode& CurrentTree() override { return store_.Root(); }

 private:
  MemorySettingsBackend store_;
};

}  // namespace

std::unique_ptr<StoreProbe> MakeMemoryProbe()
{
  return std::make_unique<MemoryProbe>();
}

std::vector<std::string> ProbeNames()
{
#ifdef _WIN32
  return {"Memory", "Registry"};
#else
  return {"Memory", "File"};
#endif
}

std::unique_ptr<StoreProbe> MakeProbe(const std::string& name)
{
  if (name == "Memory") return MakeMemoryProbe();
  return MakePlatformProbe();
}
