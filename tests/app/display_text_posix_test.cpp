// The POSIX side of the display texts: the C library's locale and time zone. A German
// locale is compiled into the build tree (LOCPATH) so the test does not depend on which
// locales the machine has.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "app/display_text.h"

namespace {

class PosixDisplayText : public ::testing::Test {
 protected:
  void SetUp() override
  {
    ASSERT_EQ(setenv("LOCPATH", CRYPTELLE_TEST_LOCALES, 1), 0);
    unsetenv("LC_ALL");
    unsetenv("LC_NUMERIC");
    unsetenv("LC_TIME");
    ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }

  static void SetZone(const char* zone) { ASSERT_EQ(setenv("TZ", zone, 1), 0); }
};

}  // namespace

TEST_F(PosixDisplayText, EpochInTheCLocaleAndUtc)
{
  SetZone("UTC0");
  EXPECT_EQ(FormatDateTimeText(0), u"01/01/70 00:00:00");
  EXPECT_EQ(FormatDateTimeText(1700000000), u"11/14/23 22:13:20");
}

TEST_F(PosixDisplayText, EpochInTwoTimeZonesGivesTwoLocalTexts)
{
  SetZone("UTC0");
  const std::u16string utc = FormatDateTimeText(0);
  SetZone("JST-9");
  const std::u16string tokyo = FormatDateTimeText(0);
  EXPECT_NE(utc, tokyo);
  EXPECT_EQ(tokyo, u"01/01/70 09:00:00");
  SetZone("EST5");
  EXPECT_EQ(FormatDateTimeText(0), u"12/31/69 19:00:00");
}

TEST_F(PosixDisplayText, ValueBeyondTheCalendarGivesEmptyText)
{
  SetZone("UTC0");
  EXPECT_EQ(FormatDateTimeText(UINT64_MAX), u"");
}

TEST_F(PosixDisplayText, UserLocaleGivesItsDatePictureAndDecimalComma)
{
  ASSERT_EQ(setenv("LANG", "de_DE.UTF-8", 1), 0);
  EXPECT_EQ(SetupProcessLocale(), u"de_DE.UTF-8");
  SetZone("UTC0");
  EXPECT_EQ(FormatDateTimeText(0), u"01.01.1970 00:00:00");
  EXPECT_EQ(FormatSizeText(1610612736, true), u"1,5 GB");
  EXPECT_EQ(FormatSizeText(1ull << 40, true), u"1,00 TB");
  EXPECT_EQ(FormatSizeText(1024, true), u"1,0 KB");
}

TEST_F(PosixDisplayText, SetupProcessLocaleFollowsTheEnvironment)
{
  ASSERT_EQ(setenv("LANG", "C", 1), 0);
  EXPECT_EQ(SetupProcessLocale(), u"C");
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}
