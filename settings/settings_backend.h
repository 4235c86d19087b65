// The typed hierarchical store under the settings: keys named by paths, each holding named
// values of a type and a size, with the registry's type codes and rules.
//
// Three backends implement it: the current user's registry on Windows, a file store on
// POSIX, and an in-memory store for tests. Every failure is a facility-0 status through the
// system-error map, from the number Windows reports in the same situation: a missing key or
// value is 2 (kSysNotFound), a value larger than the caller's buffer 234 (general failure).
// Key and value names compare ignoring case and keep the spelling they were created with.
#pragma once

#include <cstdint>
#include <memory>

#include "system/status.h"

// Value types, with the registry's numbers.
inline constexpr uint32_t kValueNone = 0;          // REG_NONE
inline constexpr uint32_t kValueString = 1;        // REG_SZ
inline constexpr uint32_t kValueExpandString = 2;  // REG_EXPAND_SZ
inline constexpr uint32_t kValueBinary = 3;        // REG_BINARY
inline constexpr uint32_t kValueDword = 4;         // REG_DWORD (little-endian)
inline constexpr uint32_t kValueMultiString = 7;   // REG_MULTI_SZ
inline constexpr uint32_t kValueQword = 11;        // REG_QWORD

// Windows system error numbers that the portable backends report.
inline constexpr uint32_t kErrorFileNotFound = 2;       // ERROR_FILE_NOT_FOUND
inline constexpr uint32_t kErrorInvalidParameter = 87;  // ERROR_INVALID_PARAMETER
inline constexpr uint32_t kErrorMoreData = 234;         // ERROR_MORE_DATA

// The longest key name (one path component) and value name, in UTF-16 units.
inline constexpr size_t kMaxKeyNameLength = 255;
inline constexpr size_t kMaxValueNameLength = 16383;

class SettingsKey;
using SettingsKeyPtr = std::unique_ptr<SettingsKey>;

// One open key; destroying it closes it. Paths are relative to the key, components joined
// by backslashes; an empty path names the key itself. A null value name is the empty name.
class SettingsKey {
 public:
  virtual ~SettingsKey() = default;

  // Opens an existing key below this one.
  virtual StatusCode OpenSubKey(const char16_t* path, SettingsKeyPtr* key) = 0;

  // Opens a key below this one, creating it and every missing key on its path.
  virtual StatusCode CreateSubKey(const char16_t* path, SettingsKeyPtr* key) = 0;

  // Reads a value as the registry does. `*size` holds the buffer's size in bytes and
  // becomes the value's size. A null `data` asks for type and size only. A value larger
  // than the buffer fails with the status of error 234 and reports its type and the size
  // the buffer would need (the registry may count room for a terminator a string value
  // lacks); the buffer's contents are then undefined (the portable stores leave it
  // untouched). `type` may be null.
  virtual StatusCode QueryValue(const char16_t* name, uint32_t* type, void* data,
                                uint32_t* size) = 0;

  // Stores `size` bytes as the value of `name` with `type`, replacing any value of the
  // name (which keeps its first spelling). The bytes are stored as given, whatever the type.
  virtual StatusCode SetValue(const char16_t* name, uint32_t type, const void* data,
                              uint32_t size) = 0;

  // Removes a value; a missing one fails with kSysNotFound.
  virtual StatusCode DeleteValue(const char16_t* name) = 0;
};

// A store: hands out the root key, the current user's part of the store.
class SettingsBackend {
 public:
  virtual ~SettingsBackend() = default;
  virtual StatusCode OpenUserRoot(SettingsKeyPtr* root) = 0;
};

// The store the settings use: the one installed by SetSettingsBackend, else the system's
// own (the registry on Windows, the file store under the user's configuration directory on
// POSIX).
SettingsBackend& CurrentSettingsBackend();

// The system's own store.
SettingsBackend& PlatformSettingsBackend();

// A test seam: installs another store for the settings (nullptr restores the system's own)
// and returns the one installed before.
SettingsBackend* SetSettingsBackend(SettingsBackend* backend);
