// Capacity texts: the wizard's reading rules and the tool's limits.
// Suites carry the tool's name so that `ctest -R ctellimg` selects them with the
// end-to-end test.
#include <gtest/gtest.h>

#include "tools/ctellimg/capacity.h"

TEST(ctellimgCapacityText, ReadsTheThreeUnits)
{
  EXPECT_EQ(ParseCapacityText("64 MB"), 64ull << 20);
  EXPECT_EQ(ParseCapacityText("2 GB"), 2ull << 30);
  EXPECT_EQ(ParseCapacityText("1.5 TB"), 1649267441664ull);
  EXPECT_EQ(ParseCapacityText("64MB"), 64ull << 20);
  EXPECT_EQ(ParseCapacityText("  8 MB \t"), 8ull << 20);
}

TEST(ctellimgCapacityText, UnitIsExactAndCaseSensitive)
{
  EXPECT_EQ(ParseCapacityText("64 mb"), 0u);
  EXPECT_EQ(ParseCapacityText("64 Mb"), 0u);
  EXPECT_EQ(ParseCapacityText("64"), 0u);
  EXPECT_EQ(ParseCapacityText("64 KB"), 0u);
  EXPECT_EQ(ParseCapacityText(""), 0u);
  EXPECT_EQ(ParseCapacityText("B"), 0u);
}

TEST(ctellimgCapacityText, NumberReadsFromTheStart)
{
  // The number is read up to the first character that does not belong to it.
  EXPECT_EQ(ParseCapacityText("100 k MB"), 104857600u);
  EXPECT_EQ(ParseCapacityText("abc GB"), 0u);
  EXPECT_EQ(ParseCapacityText("5.5 MB"), 5767168u);
  EXPECT_EQ(ParseCapacityText("1000 GB"), 1073741824000u);
}

TEST(ctellimgCapacityText, ValuesAConversionWouldLeaveUndefined)
{
  EXPECT_EQ(ParseCapacityText("-5 MB"), 0u);
  EXPECT_EQ(ParseCapacityText("nan MB"), 0u);
  EXPECT_EQ(ParseCapacityText("inf TB"), UINT64_MAX);
  EXPECT_EQ(ParseCapacityText("1e30 TB"), UINT64_MAX);
}

TEST(ctellimgCapacityChoice, ClampsAndRoundsLikeTheWizard)
{
  EXPECT_EQ(ChooseCapacity("3 TB").bytes, 2199023255552u);
  EXPECT_TRUE(ChooseCapacity("3 TB").adjusted);
  EXPECT_EQ(ChooseCapacity("1 MB").bytes, 4194304u);
  EXPECT_TRUE(ChooseCapacity("1 MB").adjusted);
  EXPECT_EQ(ChooseCapacity("5.5 MB").bytes, 5242880u);
  EXPECT_TRUE(ChooseCapacity("5.5 MB").adjusted);
  EXPECT_EQ(ChooseCapacity("1.5 TB").bytes, 1649267441664u);
  EXPECT_FALSE(ChooseCapacity("1.5 TB").adjusted);
  EXPECT_EQ(ChooseCapacity("4 MB").bytes, 4194304u);
  EXPECT_FALSE(ChooseCapacity("4 MB").adjusted);
  EXPECT_EQ(ChooseCapacity("2 TB").bytes, 2199023255552u);
  EXPECT_FALSE(ChooseCapacity("2 TB").adjusted);
  EXPECT_EQ(ChooseCapacity("0.001 MB").bytes, 4194304u);
}

TEST(ctellimgCapacityChoice, UnitLetterWithoutBGetsIt)
{
  EXPECT_EQ(ChooseCapacity("900 M").bytes, 900ull << 20);
  EXPECT_EQ(ChooseCapacity("3 G").bytes, 3ull << 30);
  EXPECT_EQ(ChooseCapacity("1 T").bytes, 1ull << 40);
}

TEST(ctellimgCapacityChoice, TextsThatDoNotReadAreRefused)
{
  EXPECT_EQ(ChooseCapacity("64").bytes, 0u);
  EXPECT_EQ(ChooseCapacity("abc GB").bytes, 0u);
  EXPECT_EQ(ChooseCapacity("64 mb").bytes, 0u);
  EXPECT_EQ(ChooseCapacity("").bytes, 0u);
  EXPECT_EQ(ChooseCapacity("-8 MB").bytes, 0u);
}

TEST(ctellimgCapacityText, ShowsTheLargestWholeUnit)
{
  EXPECT_EQ(CapacityText(8ull << 20), "8 MB");
  EXPECT_EQ(CapacityText(2ull << 40), "2 TB");
  EXPECT_EQ(CapacityText(1649267441664ull), "1536 GB");
  EXPECT_EQ(CapacityText(3ull << 30), "3 GB");
  EXPECT_EQ(CapacityText(4097), "4097 bytes");
  EXPECT_EQ(CapacityText(0), "0 bytes");
}
