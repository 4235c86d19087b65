// The Windows side of the display texts: the user's locale through the system's locale
// functions and the C runtime's locale.
#include <windows.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "app/display_text.h"
#include "system/wide_text_win.h"

namespace {

std::u16string CurrentRuntimeLocale()
{
  const wchar_t* name = _wsetlocale(LC_ALL, nullptr);
  return name ? std::u16string(Utf16(name)) : u"";
}

// The user's default date and time pictures applied to fields, as the display text
// builds them from the system's calls.
std::u16string UserDateTime(const SYSTEMTIME& fields)
{
  wchar_t date[128];
  wchar_t time[128];
  EXPECT_GT(GetDateFormatW(LOCALE_USER_DEFAULT, 0, &fields, nullptr, date, 128), 0);
  EXPECT_GT(GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &fields, nullptr, time, 128), 0);
  const std::wstring text = std::wstring(date) + L" " + time;
  return std::u16string(text.begin(), text.end());
}

}  // namespace

TEST(WindowsDisplayText, SetupProcessLocaleSetsTheRuntimeAndThreadLocale)
{
  const std::u16string name = SetupProcessLocale();
  ASSERT_FALSE(name.empty());
  EXPECT_EQ(CurrentRuntimeLocale(), name);
  EXPECT_NE(name.find(u'_'), std::u16string::npos);
  EXPECT_EQ(GetThreadLocale(), GetUserDefaultLCID());
  _wsetlocale(LC_ALL, L"C");
}

TEST(WindowsDisplayText, DecimalPointFollowsTheRuntimeLocale)
{
  ASSERT_NE(_wsetlocale(LC_ALL, L"German_Germany.1252"), nullptr);
  EXPECT_EQ(FormatSizeText(1610612736, true), u"1,5 GB");
  EXPECT_EQ(FormatSizeText(1ull << 40, true), u"1,00 TB");
  _wsetlocale(LC_ALL, L"C");
  EXPECT_EQ(FormatSizeText(1610612736, true), u"1.5 GB");
}

// The epoch converted with the system's rule for the current zone, then printed with the
// user's pictures.
TEST(WindowsDisplayText, DateTimeIsTheLocalTimeInTheUsersPictures)
{
  SYSTEMTIME utc{};
  utc.wYear = 1970;
  utc.wMonth = 1;
  utc.wDay = 1;
  utc.wDayOfWeek = 4;
  SYSTEMTIME local;
  ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local));
  EXPECT_EQ(FormatDateTimeText(0), UserDateTime(local));
}

// A file time of 2^63 or more has no calendar date.
TEST(WindowsDisplayText, ValueBeyondTheFileTimeRangeGivesEmptyText)
{
  EXPECT_EQ(FormatDateTimeText(910692731086), u"");
}
