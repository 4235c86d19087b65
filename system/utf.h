// Conversions between the UTF-16 text of the product's interfaces and UTF-8.
//
// Both directions are total: a sequence that cannot be decoded (a lone surrogate, a
// malformed or overlong UTF-8 sequence, a code point beyond U+10FFFF) becomes U+FFFD.
#pragma once

#include <string>

// Converts zero-terminated UTF-16 text to UTF-8; a null pointer gives the empty string.
std::string Utf16ToUtf8(const char16_t* text);

// Converts UTF-8 text to UTF-16.
std::u16string Utf8ToUtf16(const std::string& text);
