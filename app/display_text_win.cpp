// The locale-dependent display texts on Windows: the user's default locale through the
// system's locale functions, and the C runtime's locale named after it.
#include <windows.h>

#include <clocale>
#include <string>

#include "app/display_text.h"
#include "system/clock.h"
#include "system/wide_text_win.h"

namespace {

// Runs a locale function twice: for the length, then into a buffer of that length.
template <typename Format>
std::u16string LocaleText(Format format)
{
  const int length = format(nullptr, 0);
  if (length <= 0) return u"";
  std::wstring text(static_cast<size_t>(length), L'\0');
  const int written = format(text.data(), length);
  if (written <= 0) return u"";
  text.resize(static_cast<size_t>(written - 1));  // without the terminator
  return std::u16string(text.begin(), text.end());
}

// One item of the user's default locale, read into a buffer of 127 characters.
std::optional<std::u16string> LocaleItem(LCTYPE item)
{
  wchar_t text[127];
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, item, text, 127);
  if (length <= 0) return std::nullopt;
  return std::u16string(text, text + length - 1);
}

}  // namespace

std::u16string FormatDateTimeText(uint64_t seconds)
{
  const uint64_t ticks = (seconds + kFileTimeEpochOffsetSeconds) * kFileTimeTicksPerSecond;
  const FILETIME utc{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  FILETIME local;
  SYSTEMTIME fields;
  if (!FileTimeToLocalFileTime(&utc, &local) || !FileTimeToSystemTime(&local, &fields)) {
    return u"";
  }
  const std::u16string date = LocaleText([&](wchar_t* text, int size) {
    return GetDateFormatW(LOCALE_USER_DEFAULT, 0, &fields, nullptr, text, size);
  });
  const std::u16string time = LocaleText([&](wchar_t* text, int size) {
    return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &fields, nullptr, text, size);
  });
  return date + u" " + time;
}

std::u16string SetupProcessLocale()
{
  const std::u16string name = ProcessLocaleName(
      LocaleItem(LOCALE_SENGLANGUAGE).value_or(u""), LocaleItem(LOCALE_SENGCOUNTRY).value_or(u""),
      LocaleItem(LOCALE_IDEFAULTANSICODEPAGE), LocaleItem(LOCALE_IDEFAULTCODEPAGE));
  SetThreadLocale(LOCALE_USER_DEFAULT);
  const wchar_t* set = _wsetlocale(LC_ALL, Wide(name));
  return set ? std::u16string(Utf16(set)) : u"";
}
