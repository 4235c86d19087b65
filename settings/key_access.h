// How the settings open their keys and read and write values: each call opens the key it
// needs from the current store and closes it again; nothing is kept between calls.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#include "settings/settings_backend.h"

static_assert(std::endian::native == std::endian::little, "stored numbers are little-endian");

// The application key, under the current user's root.
inline constexpr char16_t kApplicationKeyPath[] = u"Software\\Pellmora\\Cryptelle\\1.0";

// Opens `path` under the current user's root, creating it and its parents when missing
// (the registry's RegCreateKeyExW with read and write access).
StatusCode CreateUserKey(const char16_t* path, SettingsKeyPtr* key);

// Opens `path` under the current user's root only when it exists (RegOpenKeyExW).
StatusCode OpenUserKey(const char16_t* path, SettingsKeyPtr* key);

// Queries `name` with a buffer of `size` bytes and, when the query succeeds, copies what it
// returned over the first bytes of `bytes` (a shorter value changes only its first bytes;
// a failed query changes nothing). Returns the query's status; `*type` gets the reported
// type when not null.
StatusCode QueryInto(SettingsKey& key, const char16_t* name, void* bytes, uint32_t size,
                     uint32_t* type);

// Reads a 32-bit value the way every option is read: a 4-byte query whose type is not
// checked; a failed query leaves `*value` as it was.
void ReadUncheckedDword(SettingsKey& key, const char16_t* name, uint32_t* value);

// Stores a REG_DWORD of 4 bytes.
StatusCode WriteDword(SettingsKey& key, const char16_t* name, uint32_t value);

// The text of a string value read as `length` characters: up to its first terminator.
std::u16string TextBeforeTerminator(const char16_t* text, size_t length);

// Keeps the first failure of a sequence of writes that all go ahead.
inline void KeepFirstFailure(StatusCode* first, StatusCode status)
{
  if (!IsFailure(*first)) *first = status;
}
