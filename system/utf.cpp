#include "system/utf.h"

#include <cstdint>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit)
{
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char32_t unit)
{
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& out, char32_t point)
{
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0 | (point >> 6));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    out += static_cast<char>(0xE0 | (point >> 12));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (point >> 18));
    out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  }
}

void AppendUtf16(std::u16string& out, char32_t point)
{
  if (point < 0x10000) {
    out += static_cast<char16_t>(point);
  } else {
    point -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (point >> 10));
    out += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
  }
}

}  // namespace

std::string Utf16ToUtf8(const char16_t* text)
{
  std::string out;
  if (text == nullptr) return out;
  for (const char16_t* p = text; *p != 0; ++p) {
    char32_t point = *p;
    if (IsHighSurrogate(point)) {
      if (IsLowSurrogate(p[1])) {
        point = 0x10000 + ((point - 0xD800) << 10) + (static_cast<char32_t>(p[1]) - 0xDC00);
        ++p;
      } else {
        point = kReplacement;
      }
    } else if (IsLowSurrogate(point)) {
      point = kReplacement;
    }
    AppendUtf8(out, point);
  }
  return out;
}

std::u16string Utf8ToUtf16(const std::string& text)
{
  std::u16string out;
  const size_t size = text.size();
  size_t i = 0;
  while (i < size) {
    const auto lead = static_cast<uint8_t>(text[i]);
    if (lead < 0x80) {
      out += static_cast<char16_t>(lead);
      ++i;
      continue;
    }
    // The length of the sequence and the smallest code point it may encode (anything
    // smaller is an overlong form).
    size_t length = 0;
    char32_t point = 0;
    char32_t smallest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2;
      point = lead & 0x1Fu;
      smallest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
      point = lead & 0x0Fu;
      smallest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
      point = lead & 0x07u;
      smallest = 0x10000;
    } else {
      // A continuation byte without a lead, or a lead that cannot start valid text.
      out += static_cast<char16_t>(kReplacement);
      ++i;
      continue;
    }
    size_t taken = 1;
    while (taken < length && i + taken < size) {
      const auto next = static_cast<uint8_t>(text[i + taken]);
      if ((next & 0xC0) != 0x80) break;
      point = (point << 6) | (next & 0x3Fu);
      ++taken;
    }
    i += taken;
    if (taken < length || point < smallest || point > 0x10FFFF ||
        (point >= 0xD800 && point <= 0xDFFF)) {
      // A truncated sequence becomes one replacement; the byte that cut it short starts
      // the next sequence.
      out += static_cast<char16_t>(kReplacement);
      continue;
    }
    AppendUtf16(out, point);
  }
  return out;
}
