#include <locale.h>
#include <wctype.h>

#include "system/text_case.h"

namespace {

// The case tables of Unicode, whatever locale the process has set: the "C" locale
// upper-cases ASCII only. Null where the system lacks a UTF-8 locale.
locale_t CaseLocale()
{
  static const locale_t locale =
      newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
  return locale;
}

// Decodes the code point at `*text` and advances past it; a lone surrogate stands for itself.
char32_t NextPoint(const char16_t** text)
{
  const char32_t unit = **text;
  ++*text;
  if (unit >= 0xD800 && unit <= 0xDBFF && **text >= 0xDC00 && **text <= 0xDFFF) {
    const char32_t low = **text;
    ++*text;
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
  }
  return unit;
}

wint_t Upper(char32_t point)
{
  const locale_t locale = CaseLocale();
  if (locale == static_cast<locale_t>(nullptr)) return towupper(static_cast<wint_t>(point));
  return towupper_l(static_cast<wint_t>(point), locale);
}

}  // namespace

bool SysTextEqualIgnoringCase(const char16_t* first, const char16_t* second)
{
  while (*first != 0 && *second != 0) {
    if (Upper(NextPoint(&first)) != Upper(NextPoint(&second))) return false;
  }
  return *first == *second;
}
