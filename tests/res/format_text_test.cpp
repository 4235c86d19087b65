#include "res/format_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <string>

TEST(FormatText, TextWithoutDirectivesIsCopied)
{
  EXPECT_EQ(FormatText(u"Warning", {}), u"Warning");
  EXPECT_EQ(FormatText(u"", {}), u"");
}

TEST(FormatText, FillsTextCharacterAndNumbers)
{
  EXPECT_EQ(FormatText(u"Cannot mount %s.", {u"C:\\disk.qvi"}), u"Cannot mount C:\\disk.qvi.");
  EXPECT_EQ(FormatText(u"Virtual disk %c: is", {u'E'}), u"Virtual disk E: is");
  EXPECT_EQ(FormatText(u"%u bits", {256u}), u"256 bits");
  EXPECT_EQ(FormatText(u"Document%i", {15}), u"Document15");
  EXPECT_EQ(FormatText(u"%d", {-42}), u"-42");
  EXPECT_EQ(FormatText(u"%s-%u", {std::u16string(u"AES"), 128u}), u"AES-128");
}

TEST(FormatText, HexIsUpperCaseWithoutLeadingZerosOrPrefix)
{
  EXPECT_EQ(FormatText(u"Error code: %X", {uint32_t{0x4005000C}}), u"Error code: 4005000C");
  EXPECT_EQ(FormatText(u"%X", {uint32_t{0x0000abcd}}), u"ABCD");
  EXPECT_EQ(FormatText(u"%X", {0u}), u"0");
  EXPECT_EQ(FormatText(u"%X", {UINT64_MAX}), u"FFFFFFFFFFFFFFFF");
}

TEST(FormatText, UnsignedLimits)
{
  EXPECT_EQ(FormatText(u"%u", {0u}), u"0");
  EXPECT_EQ(FormatText(u"%u", {UINT32_MAX}), u"4294967295");
  EXPECT_EQ(FormatText(u"%u", {UINT64_MAX}), u"18446744073709551615");
  EXPECT_EQ(FormatText(u"%i", {INT64_MIN}), u"-9223372036854775808");
}

TEST(FormatText, RealsTakeTheirPrecision)
{
  ASSERT_NE(std::setlocale(LC_NUMERIC, "C"), nullptr);
  EXPECT_EQ(FormatText(u"%.2f TB", {1.0}), u"1.00 TB");
  EXPECT_EQ(FormatText(u"%.1f GB", {1.5}), u"1.5 GB");
  EXPECT_EQ(FormatText(u"%.0f GB", {1.5}), u"2 GB");
  EXPECT_EQ(FormatText(u"%f", {0.25}), u"0.250000");
}

TEST(FormatText, PercentSignAndUnknownDirectivesStay)
{
  EXPECT_EQ(FormatText(u"100%% done", {}), u"100% done");
  EXPECT_EQ(FormatText(u"50% and %q", {}), u"50% and %q");
  EXPECT_EQ(FormatText(u"ends with %", {}), u"ends with %");
  EXPECT_EQ(FormatText(u"%.2u", {5u}), u"%.2u");
}

TEST(FormatText, DirectivesTakeTheArgumentsOfTheirKindInOrder)
{
  EXPECT_EQ(FormatText(u"%u then %s", {u"text", 7u}), u"7 then text");
  EXPECT_EQ(FormatText(u"%s, %u, %s, %u", {u"a", u"b", 1u, 2u}), u"a, 1, b, 2");
  EXPECT_EQ(FormatText(u"%c%.1f%X", {2.5, 255u, u'Z'}), u"Z2.5FF");
}

TEST(FormatText, ATextMayLeaveOutAnOfferedInsertion)
{
  // Fallback texts are filled from the subject and the code whether they show both or not.
  EXPECT_EQ(FormatText(u"Clearing of image failed.\nError code: %X", {u"d.qvi", 0x4000000Du}),
            u"Clearing of image failed.\nError code: 4000000D");
  EXPECT_EQ(FormatText(u"Cannot mount %s.\nError code: %X", {u"d.qvi", 0x40050013u}),
            u"Cannot mount d.qvi.\nError code: 40050013");
  EXPECT_EQ(FormatText(u"No insertions", {u"d.qvi", 5u}), u"No insertions");
}

TEST(FormatText, MissingOrMismatchedArgumentsKeepTheDirective)
{
  EXPECT_EQ(FormatText(u"%s and %u", {u"one"}), u"one and %u");
  EXPECT_EQ(FormatText(u"%s and %s", {u"one", 2u}), u"one and %s");
  EXPECT_EQ(FormatText(u"%u", {-1}), u"%u");
  EXPECT_EQ(FormatText(u"%X", {-1}), u"%X");
  EXPECT_EQ(FormatText(u"%c", {65u}), u"%c");
  EXPECT_EQ(FormatText(u"%f", {1u}), u"%f");
}

TEST(FormatText, ANegativeNumberRefusedByOneDirectiveIsUsedUp)
{
  EXPECT_EQ(FormatText(u"%u, %u", {-1, 2u}), u"%u, 2");
}

TEST(FormatText, InsertedTextIsNotScannedAgain)
{
  EXPECT_EQ(FormatText(u"Cannot open %s.\nError code: %X", {u"C:\\100%X\\%s.qvi", 5u}),
            u"Cannot open C:\\100%X\\%s.qvi.\nError code: 5");
}

TEST(LocaleTextToUtf16, AsciiInTheCLocale)
{
  ASSERT_NE(std::setlocale(LC_CTYPE, "C"), nullptr);
  EXPECT_EQ(LocaleTextToUtf16("01/01/70 00:00:00"), u"01/01/70 00:00:00");
  EXPECT_EQ(LocaleTextToUtf16(""), u"");
}
