// Equality of UTF-16 text ignoring letter case, the way the system compares names the user
// typed (file paths, settings names).
#pragma once

// True when the two zero-terminated texts are equal ignoring case. Windows compares them
// with the user's locale (lstrcmpiW); POSIX compares code point by code point after Unicode
// upper-casing, independent of the process's locale.
bool SysTextEqualIgnoringCase(const char16_t* first, const char16_t* second);
