#include "res/format_text.h"

#include <cstdio>
#include <cuchar>
#include <cwchar>

namespace {

constexpr char16_t kReplacement = 0xFFFD;
// More decimals than a double carries are never useful; the bound keeps the buffer small.
constexpr int kMaxPrecision = 40;

std::u16string Digits(uint64_t value, unsigned base)
{
  std::u16string digits;
  do {
    digits.insert(digits.begin(), u"0123456789ABCDEF"[value % base]);
    value /= base;
  } while (value != 0);
  return digits;
}

std::u16string Real(double value, int precision)
{
  char buffer[400];
  const int length = std::snprintf(buffer, sizeof buffer, "%.*f", precision, value);
  if (length < 0 || static_cast<size_t>(length) >= sizeof buffer) return std::u16string();
  return LocaleTextToUtf16(std::string_view(buffer, static_cast<size_t>(length)));
}

// The kind of argument a conversion letter takes; false for a letter that is no directive.
bool KindOf(char16_t conversion, TextArg::Kind* kind)
{
  switch (conversion) {
    case u's': *kind = TextArg::Kind::kText; return true;
    case u'c': *kind = TextArg::Kind::kCharacter; return true;
    case u'u':
    case u'X':
    case u'i':
    case u'd': *kind = TextArg::Kind::kInteger; return true;
    case u'f': *kind = TextArg::Kind::kReal; return true;
    default: return false;
  }
}

// The text of one directive for an argument of its kind; false when the number does not
// fit (a negative one for "%u" or "%X").
bool Convert(char16_t conversion, int precision, const TextArg& arg, std::u16string& out)
{
  switch (conversion) {
    case u's': out += arg.text(); return true;
    case u'c': out += arg.character(); return true;
    case u'u':
    case u'X':
      if (arg.negative()) return false;
      out += Digits(arg.magnitude(), conversion == u'u' ? 10 : 16);
      return true;
    case u'i':
    case u'd':
      if (arg.negative()) out += u'-';
      out += Digits(arg.magnitude(), 10);
      return true;
    default: out += Real(arg.real(), precision < 0 ? 6 : precision); return true;
  }
}

// Hands out the arguments of each kind in their order.
class ArgumentsByKind {
 public:
  explicit ArgumentsByKind(std::initializer_list<TextArg> args) : args_(args) {}

  // The next argument of `kind`, or null when none is left.
  const TextArg* Next(TextArg::Kind kind)
  {
    size_t& at = next_[static_cast<size_t>(kind)];
    while (at < args_.size() && args_.begin()[at].kind() != kind) ++at;
    if (at == args_.size()) return nullptr;
    return &args_.begin()[at++];
  }

 private:
  // The position from which to look for the next argument, one per kind.
  static constexpr size_t kKinds = static_cast<size_t>(TextArg::Kind::kReal) + 1;
  std::initializer_list<TextArg> args_;
  size_t next_[kKinds] = {};
};

bool IsDigit(char16_t c)
{
  return c >= u'0' && c <= u'9';
}

}  // namespace

std::u16string FormatText(std::u16string_view pattern, std::initializer_list<TextArg> args)
{
  std::u16string out;
  ArgumentsByKind byKind(args);
  size_t i = 0;
  while (i < pattern.size()) {
    if (pattern[i] != u'%') {
      out += pattern[i++];
      continue;
    }
    // A directive: '%', an optional ".digits" precision, one conversion letter.
    size_t j = i + 1;
    int precision = -1;
    if (j < pattern.size() && pattern[j] == u'.') {
      ++j;
      precision = 0;
      while (j < pattern.size() && IsDigit(pattern[j])) {
        if (precision <= kMaxPrecision) precision = precision * 10 + (pattern[j] - u'0');
        ++j;
      }
      if (precision > kMaxPrecision) precision = kMaxPrecision;
    }
    if (j >= pattern.size()) {
      out += pattern.substr(i);
      break;
    }
    const char16_t conversion = pattern[j];
    const std::u16string_view directive = pattern.substr(i, j + 1 - i);
    i = j + 1;
    if (conversion == u'%' && precision < 0) {
      out += u'%';
      continue;
    }
    TextArg::Kind kind;
    if (!KindOf(conversion, &kind) || (precision >= 0 && conversion != u'f')) {
      out += directive;
      continue;
    }
    const TextArg* arg = byKind.Next(kind);
    if (arg == nullptr || !Convert(conversion, precision, *arg, out)) out += directive;
  }
  return out;
}

std::u16string LocaleTextToUtf16(std::string_view text)
{
  std::u16string out;
  std::mbstate_t state{};
  const char* at = text.data();
  const char* const end = text.data() + text.size();
  while (at < end) {
    char16_t unit = 0;
    const size_t used = std::mbrtoc16(&unit, at, static_cast<size_t>(end - at), &state);
    if (used == static_cast<size_t>(-3)) {
      out += unit;  // the second half of a surrogate pair; no input was used
    } else if (used == static_cast<size_t>(-1) || used == static_cast<size_t>(-2)) {
      out += kReplacement;
      state = std::mbstate_t{};
      ++at;
    } else {
      out += unit;
      at += used == 0 ? 1 : used;
    }
  }
  return out;
}
