// A store as a test sees it: the backend the settings run on during the test, and a way
// to seed and inspect stored values that does not go through the settings' own readers
// (the registry through its API, the file store through its file, the memory store through
// its tree).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "settings/settings_backend.h"

class MemorySettingsBackend;

struct RawValue {
  uint32_t type = 0;
  std::vector<uint8_t> data;
};

class StoreProbe {
 public:
  virtual ~StoreProbe() = default;

  // The store to install for the settings; null for the system's own store.
  virtual SettingsBackend* Backend() = 0;

  // The in-memory store, when that is the one under test.
  virtual MemorySettingsBackend* Memory() { return nullptr; }

  // Stores a value as given, creating its key.
  virtual void Put(const std::u16string& keyPath, const std::u16string& name, uint32_t type,
                   const std::vector<uint8_t>& data) = 0;

  virtual std::optional<RawValue> Get(const std::u16string& keyPath,
                                      const std::u16string& name) = 0;
  virtual bool KeyExists(const std::u16string& keyPath) = 0;
  virtual std::vector<std::u16string> ValueNames(const std::u16string& keyPath) = 0;
};

// The stores of this platform by name: "Memory" and "File" on POSIX, "Memory" and
// "Registry" on Windows.
std::vector<std::string> ProbeNames();
std::unique_ptr<StoreProbe> MakeProbe(const std::string& name);

// Helpers for building and reading raw values.
std::vector<uint8_t> DwordBytes(uint32_t value);
std::vector<uint8_t> StringBytes(const std::u16string& text, bool terminated = true);
uint32_t DwordOf(const RawValue& value);
std::u16string TextOf(const RawValue& value);  // without the terminator
