// Where the running program lives.
#pragma once

#include <string>
#include <string_view>

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

// `fileName` in the folder of `executablePath`: everything after the path's last separator
// replaced by it. A path without a separator is left unchanged.
std::u16string PathBeside(const std::u16string& executablePath, std::u16string_view fileName);

// `fileName` in the running program's folder.
StatusCode SysGetPathBesideModule(std::u16string_view fileName, std::u16string* path);
