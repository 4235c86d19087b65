// Where the running program lives.
#pragma once

#include <string>

#include "system/status.h"

// The character that separates the directories of a path on this system.
#ifdef _WIN32
inline constexpr char16_t kSysPathSeparator = u'\\';
#else
inline constexpr char16_t kSysPathSeparator = u'/';
#endif

// The full path of the running program's executable file. Windows asks for it with a
// buffer of 260 characters: a longer path fails with kSysBufferTooSmall.
StatusCode SysGetModulePath(std::u16string* path);
