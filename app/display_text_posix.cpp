// The locale-dependent display texts on POSIX systems: the C library's locale, taken from
// the environment (LC_ALL, LC_TIME, LANG, ...), and its date and time conventions.
#include <langinfo.h>

#include <clocale>
#include <cstdint>
#include <ctime>
#include <limits>
#include <string>

#include "app/display_text.h"
#include "res/format_text.h"

std::u16string FormatDateTimeText(uint64_t seconds)
{
  if (seconds > static_cast<uint64_t>(std::numeric_limits<time_t>::max())) return u"";
  const time_t value = static_cast<time_t>(seconds);
  tzset();  // follow a time zone changed since the last call
  tm local{};
  if (localtime_r(&value, &local) == nullptr) return u"";
  const std::string picture = std::string(nl_langinfo(D_FMT)) + " " + nl_langinfo(T_FMT);
  char text[256];
  const size_t length = std::strftime(text, sizeof text, picture.c_str(), &local);
  return LocaleTextToUtf16(std::string_view(text, length));
}

std::u16string SetupProcessLocale()
{
  const char* name = std::setlocale(LC_ALL, "");
  return name ? LocaleTextToUtf16(name) : u"";
}
