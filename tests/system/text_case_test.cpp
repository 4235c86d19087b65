#include "system/text_case.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

TEST(TextCaseTest, AsciiLettersCompareIgnoringCase)
{
  EXPECT_TRUE(SysTextEqualIgnoringCase(u"C:\\Images\\Disk.QVI", u"c:\\images\\disk.qvi"));
  EXPECT_TRUE(SysTextEqualIgnoringCase(u"", u""));
}

TEST(TextCaseTest, DifferentTextIsNotEqual)
{
  EXPECT_FALSE(SysTextEqualIgnoringCase(u"disk1.qvi", u"disk2.qvi"));
  EXPECT_FALSE(SysTextEqualIgnoringCase(u"disk.qvi", u"disk.qv"));
  EXPECT_FALSE(SysTextEqualIgnoringCase(u"", u"a"));
}

TEST(TextCaseTest, LettersBeyondAsciiCompareIgnoringCaseInTheCLocale)
{
  std::setlocale(LC_ALL, "C");
  EXPECT_TRUE(SysTextEqualIgnoringCase(u"Ärger Öl Ünd Σ", u"ärger öl ünd σ"));
  EXPECT_FALSE(SysTextEqualIgnoringCase(u"Ärger", u"Arger"));
}

}  // namespace
