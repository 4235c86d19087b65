// Fills the string table's patterns: "%s" text, "%c" character, "%u" unsigned decimal,
// "%X" upper-case hexadecimal without leading zeros or prefix (how status codes are shown),
// "%i"/"%d" signed decimal, "%f"/"%.Nf" floating point with N decimals (default 6) and the
// decimal point of the process locale, and "%%" for a percent sign.
//
// Each directive takes the next argument of its own kind: text for "%s", a character for
// "%c", an integer for "%u", "%X", "%i" and "%d", a real for "%f". Arguments of one kind
// keep their order, and a text may leave out an insertion that the caller offers: a fallback
// text that shows only the code ("Operation failed.\nError code: %X") is filled from the
// same subject and code as one that shows both. A directive with no argument of its kind
// left, or with a negative number for "%u" or "%X", is copied as it stands (the number is
// used up); an unknown directive is copied and takes none. Inserted texts are never scanned
// for directives.
#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

class TextArg {
 public:
  enum class Kind { kText, kCharacter, kInteger, kReal };  // kReal stays the last

  TextArg(std::u16string_view text) : kind_(Kind::kText), text_(text) {}
  TextArg(const char16_t* text) : kind_(Kind::kText), text_(text) {}
  TextArg(const std::u16string& text) : kind_(Kind::kText), text_(text) {}
  TextArg(char16_t character) : kind_(Kind::kCharacter), character_(character) {}
  TextArg(double value) : kind_(Kind::kReal), real_(value) {}
  template <std::integral T>
  requires(!std::same_as<T, bool> && !std::same_as<T, char16_t> && !std::same_as<T, char>)
      TextArg(T value)
      : kind_(Kind::kInteger),
        negative_(value < 0),
        magnitude_(value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value))
  {
  }

  Kind kind() const { return kind_; }
  std::u16string_view text() const { return text_; }
  char16_t character() const { return character_; }
  bool negative() const { return negative_; }
  uint64_t magnitude() const { return magnitude_; }
  double real() const { return real_; }

 private:
  Kind kind_;
  std::u16string_view text_;
  char16_t character_ = 0;
  bool negative_ = false;
  uint64_t magnitude_ = 0;
  double real_ = 0;
};

std::u16string FormatText(std::u16string_view pattern, std::initializer_list<TextArg> args);

// Text in the process locale's multibyte encoding (what the C library's locale-aware
// functions print) as UTF-16; a byte sequence that does not decode becomes U+FFFD.
std::u16string LocaleTextToUtf16(std::string_view text);
