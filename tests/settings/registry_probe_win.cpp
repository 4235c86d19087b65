// The registry under test. Each test process gets a scratch key that stands in for the
// current user's hive (RegOverridePredefKey), so tests neither see nor touch the real
// settings, and every value is checked through the registry's own API.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "system/wide_text_win.h"
#include "tree_probe.h"

namespace {

class RegistryProbe : public StoreProbe {
 public:
  RegistryProbe()
  {
    static int counter = 0;
    scratchPath_ = L"Software\\CryptelleTests\\" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                   std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(counter++);
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, scratchPath_.c_str(), 0, nullptr,
                              REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &scratch_, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, scratch_), ERROR_SUCCESS);
  }

  ~RegistryProbe() override
  {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(scratch_);
    RegDeleteTreeW(HKEY_CURRENT_USER, scratchPath_.c_str());
  }

  RegistryProbe(const RegistryProbe&) = delete;
  RegistryProbe& operator=(const RegistryProbe&) = delete;

  SettingsBackend* Backend() override { return nullptr; }

  void Put(const std::u16string& keyPath, const std::u16string& name, uint32_t type,
           const std::vector<uint8_t>& data) override
  {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(scratch_, Wide(keyPath), 0, nullptr, REG_OPTION_NON_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(
        RegSetValueExW(key, Wide(name), 0, type, data.data(), static_cast<DWORD>(data.size())),
        ERROR_SUCCESS);
    RegCloseKey(key);
  }

  std::optional<RawValue> Get(const std::u16string& keyPath, const std::u16string& name) override
  {
    HKEY key = Open(keyPath);
    if (key == nullptr) return std::nullopt;
    DWORD type = 0;
    DWORD size = 0;
    std::optional<RawValue> value;
    if (RegQueryValueExW(key, Wide(name), nullptr, &type, nullptr, &size) == ERROR_SUCCESS) {
      value = RawValue{type, std::vector<uint8_t>(size)};
      EXPECT_EQ(RegQueryValueExW(key, Wide(name), nullptr, &type, value->data.data(), &size),
                ERROR_SUCCESS);
      value->data.resize(size);
    }
    RegCloseKey(key);
    return value;
  }

  bool KeyExists(const std::u16string& keyPath) override
  {
    HKEY key = Open(keyPath);
    if (key != nullptr) RegCloseKey(key);
    return key != nullptr;
  }

  std::vector<std::u16string> ValueNames(const std::u16string& keyPath) override
  {
    std::vector<std::u16string> names;
    HKEY key = Open(keyPath);
    if (key == nullptr) return names;
    DWORD count = 0;
    EXPECT_EQ(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    for (DWORD index = 0; index < count; ++index) {
      wchar_t name[16384];
      DWORD length = 16384;
      if (RegEnumValueW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) ==
          ERROR_SUCCESS) {
        names.emplace_back(Utf16(name), length);
      }
    }
    RegCloseKey(key);
    return names;
  }

 private:
  HKEY Open(const std::u16string& keyPath)
  {
    HKEY key = nullptr;
    if (RegOpenKeyExW(scratch_, Wide(keyPath), 0, KEY_READ, &key) != ERROR_SUCCESS) return nullptr;
    return key;
  }

  std::wstring scratchPath_;
  HKEY scratch_ = nullptr;
};

}  // namespace

std::unique_ptr<StoreProbe> MakePlatformProbe()
{
  return std::make_unique<RegistryProbe>();
}
