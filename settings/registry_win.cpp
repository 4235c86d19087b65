// The Windows store: the current user's registry, each key opened with read and write
// access and closed when its object goes.
#include <windows.h>

#include <new>

#include "settings/settings_backend.h"
#include "system/error_map.h"
#include "system/wide_text_win.h"

namespace {

constexpr REGSAM kAccess = KEY_READ | KEY_WRITE;

StatusCode Mapped(LSTATUS result)
{
  return MapSystemError(static_cast<uint32_t>(result));
}

class RegistryKey : public SettingsKey {
 public:
  // `owned` keys are closed by the destructor; the predefined root is not.
  RegistryKey(HKEY key, bool owned) : key_(key), owned_(owned) {}

  ~RegistryKey() override
  {
    if (owned_) RegCloseKey(key_);
  }

  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  StatusCode OpenSubKey(const char16_t* path, SettingsKeyPtr* key) override
  {
    HKEY opened = nullptr;
    const LSTATUS result = RegOpenKeyExW(key_, Wide(path), 0, kAccess, &opened);
    return Hand(result, opened, key);
  }

  StatusCode CreateSubKey(const char16_t* path, SettingsKeyPtr* key) override
  {
    HKEY opened = nullptr;
    const LSTATUS result = RegCreateKeyExW(key_, Wide(path), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                           kAccess, nullptr, &opened, nullptr);
    return Hand(result, opened, key);
  }

  StatusCode QueryValue(const char16_t* name, uint32_t* type, void* data, uint32_t* size) override
  {
    DWORD valueType = REG_NONE;
    DWORD bytes = size != nullptr ? *size : 0;
    const LSTATUS result =
        RegQueryValueExW(key_, Wide(name), nullptr, &valueType, static_cast<BYTE*>(data),
                         size != nullptr ? &bytes : nullptr);
    if (result == ERROR_SUCCESS || result == ERROR_MORE_DATA) {
      if (type != nullptr) *type = valueType;
      if (size != nullptr) *size = bytes;
    }
    return Mapped(result);
  }

  StatusCode SetValue(const char16_t* name, uint32_t type, const void* data, uint32_t size) override
  {
    return Mapped(RegSetValueExW(key_, Wide(name), 0, type, static_cast<const BYTE*>(data), size));
  }

  StatusCode DeleteValue(const char16_t* name) override
  {
    return Mapped(RegDeleteValueW(key_, Wide(name)));
  }

 private:
  static StatusCode Hand(LSTATUS result, HKEY opened, SettingsKeyPtr* key)
  {
    if (result != ERROR_SUCCESS) return Mapped(result);
    auto* made = new (std::nothrow) RegistryKey(opened, true);
    if (made == nullptr) {
      RegCloseKey(opened);
      return kSysOutOfMemory;
    }
    key->reset(made);
    return kStatusSuccess;
  }

  HKEY key_;
  bool owned_;
};

class RegistryBackend : public SettingsBackend {
 public:
  StatusCode OpenUserRoot(SettingsKeyPtr* root) override
  {
    auto* made = new (std::nothrow) RegistryKey(HKEY_CURRENT_USER, false);
    if (made == nullptr) return kSysOutOfMemory;
    root->reset(made);
    return kStatusSuccess;
  }
};

}  // namespace

SettingsBackend& PlatformSettingsBackend()
{
  static RegistryBackend registry;
  return registry;
}
