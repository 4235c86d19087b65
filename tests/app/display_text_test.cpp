#include "app/display_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>

#include "app/size_units.h"

namespace {

// Numbers with the C locale's decimal point, whatever the test process started with.
class DisplayText : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr); }
};

}  // namespace

TEST_F(DisplayText, SizeBelowOneKilobyteIsTheBareNumber)
{
  EXPECT_EQ(FormatSizeText(0, true), u"0");
  EXPECT_EQ(FormatSizeText(1023, true), u"1023");
  EXPECT_EQ(FormatSizeText(1023, false), u"1023");
}

TEST_F(DisplayText, OneKilobyte)
{
  EXPECT_EQ(FormatSizeText(1024, true), u"1.0 KB");
  EXPECT_EQ(FormatSizeText(1024, false), u"1 KB");
}

TEST_F(DisplayText, KilobytesAndMegabytesAreTruncatedToWholeUnits)
{
  EXPECT_EQ(FormatSizeText(1536, true), u"1.0 KB");
  EXPECT_EQ(FormatSizeText((1ull << 20) - 1, true), u"1023.0 KB");
  EXPECT_EQ(FormatSizeText(1572864, true), u"1.0 MB");
  EXPECT_EQ(FormatSizeText(1572864, false), u"1 MB");
  EXPECT_EQ(FormatSizeText(kGigabyte - 1, true), u"1023.0 MB");
}

TEST_F(DisplayText, GigabytesKeepTheirFraction)
{
  EXPECT_EQ(FormatSizeText(kGigabyte, true), u"1.0 GB");
  EXPECT_EQ(FormatSizeText(1610612736, true), u"1.5 GB");
  EXPECT_EQ(FormatSizeText(1610612736, false), u"2 GB");
  EXPECT_EQ(FormatSizeText(kTerabyte - 1, true), u"1024.0 GB");
}

TEST_F(DisplayText, TerabytesHaveTwoDecimals)
{
  EXPECT_EQ(FormatSizeText(kTerabyte, true), u"1.00 TB");
  EXPECT_EQ(FormatSizeText(kTerabyte, false), u"1 TB");
  EXPECT_EQ(FormatSizeText(1649267441664, true), u"1.50 TB");
  EXPECT_EQ(FormatSizeText(2 * kTerabyte, true), u"2.00 TB");
  EXPECT_EQ(FormatSizeText(UINT64_MAX, true), u"16777216.00 TB");
}

TEST_F(DisplayText, DurationShowsTheLargestWholeUnit)
{
  EXPECT_EQ(FormatDurationText(86399), u"23 hours");
  EXPECT_EQ(FormatDurationText(119), u"1 minute");
  EXPECT_EQ(FormatDurationText(0), u"0 seconds");
  EXPECT_EQ(FormatDurationText(1), u"1 second");
  EXPECT_EQ(FormatDurationText(59), u"59 seconds");
  EXPECT_EQ(FormatDurationText(60), u"1 minute");
  EXPECT_EQ(FormatDurationText(3599), u"59 minutes");
  EXPECT_EQ(FormatDurationText(3600), u"1 hour");
  EXPECT_EQ(FormatDurationText(7199), u"1 hour");
  EXPECT_EQ(FormatDurationText(7200), u"2 hours");
  EXPECT_EQ(FormatDurationText(86400), u"1 day");
  EXPECT_EQ(FormatDurationText(172799), u"1 day");
  EXPECT_EQ(FormatDurationText(172800), u"2 days");
  EXPECT_EQ(FormatDurationText(UINT32_MAX), u"49710 days");
}

TEST_F(DisplayText, AlgorithmNameAndKeyBits)
{
  EXPECT_EQ(FormatAlgorithmText(0, 32), u"AES-256");
  EXPECT_EQ(FormatAlgorithmText(0, 16), u"AES-128");
  EXPECT_EQ(FormatAlgorithmText(1, 56), u"BLOWFISH-448");
  EXPECT_EQ(FormatAlgorithmText(2, 16), u"CAST-128");
}

TEST_F(DisplayText, AlgorithmWithoutNameIsUnknown)
{
  EXPECT_EQ(FormatAlgorithmText(3, 8), u"Unknown-64");
  EXPECT_EQ(FormatAlgorithmText(4, 32), u"Unknown-256");
  EXPECT_EQ(FormatAlgorithmText(UINT32_MAX, 0), u"Unknown-0");
}

TEST_F(DisplayText, BareAlgorithmNameOnlyForTheNamedIds)
{
  EXPECT_EQ(AlgorithmName(0), u"AES");
  EXPECT_EQ(AlgorithmName(1), u"BLOWFISH");
  EXPECT_EQ(AlgorithmName(2), u"CAST");
  EXPECT_EQ(AlgorithmName(3), std::nullopt);
  EXPECT_EQ(AlgorithmName(UINT32_MAX), std::nullopt);
}

TEST(ProcessLocaleName, LanguageCountryAndAnsiCodePage)
{
  EXPECT_EQ(ProcessLocaleName(u"English", u"United States", u"1252", u"437"),
            u"English_United States.1252");
}

TEST(ProcessLocaleName, OemCodePageWhenAnsiIsMissing)
{
  EXPECT_EQ(ProcessLocaleName(u"German", u"Germany", std::nullopt, u"850"), u"German_Germany.850");
}

TEST(ProcessLocaleName, EndsAfterTheCountryWithoutCodePages)
{
  EXPECT_EQ(ProcessLocaleName(u"French", u"France", std::nullopt, std::nullopt), u"French_France");
}
