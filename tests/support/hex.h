// Hexadecimal test data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using Bytes = std::vector<uint8_t>;

// Parses hex digits; spaces are ignored so vectors can be copied as published.
inline Bytes FromHex(std::string_view text)
{
  Bytes bytes;
  int high = -1;
  for (char c : text) {
    int digit = -1;
    if (c >= '0' && c <= '9') digit = c - '0';
    if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
    if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
    if (digit < 0) continue;
    if (high < 0) {
      high = digit;
    } else {
      bytes.push_back(static_cast<uint8_t>(high * 16 + digit));
      high = -1;
    }
  }
  return bytes;
}

inline std::string ToHex(const uint8_t* data, size_t length)
{
  static const char kDigits[] = "0123456789abcdef";
  std::string text;
  for (size_t i = 0; i < length; ++i) {
    text += kDigits[data[i] >> 4];
    text += kDigits[data[i] & 15];
  }
  return text;
}

inline std::string ToHex(const Bytes& bytes)
{
  return ToHex(bytes.data(), bytes.size());
}
