// The capacity page's steps, limits and text rules.
#include "wizard/capacity.h"

#include <gtest/gtest.h>

TEST(CapacitySteps, ThirtyTwoStepsFromFourMegabytesToTwoTerabytes)
{
  EXPECT_EQ(CapacitySteps.front(), 4194304u);
  EXPECT_EQ(CapacitySteps[8], 1073741824u);
  EXPECT_EQ(CapacitySteps[16], 64424509440u);
  EXPECT_EQ(CapacitySteps[22], 268435456000u);
  EXPECT_EQ(CapacitySteps[28], 805306368000u);
  EXPECT_EQ(CapacitySteps[30], 1649267441664u);
  EXPECT_EQ(CapacitySteps.back(), 2199023255552u);
  EXPECT_EQ(CapacitySteps.front(), kMinimumCapacity);
  EXPECT_EQ(CapacitySteps.back(), kMaximumCapacity);
  for (size_t position = 1; position < CapacitySteps.size(); ++position)
    EXPECT_LE(CapacitySteps[position - 1], CapacitySteps[position]) << position;
}

TEST(CapacitySteps, ThirtyTwoGigabytesHasTwoPositionsAndSelectsTheFirst)
{
  EXPECT_EQ(CapacitySteps[13], 34359738368u);
  EXPECT_EQ(CapacitySteps[14], 34359738368u);
  EXPECT_EQ(CapacityStepPosition(34359738368u), 13u);
}

TEST(CapacitySteps, PositionIsTheFirstStepNotSmaller)
{
  EXPECT_EQ(CapacityStepPosition(0), 0u);
  EXPECT_EQ(CapacityStepPosition(4194304u), 0u);
  EXPECT_EQ(CapacityStepPosition(4194305u), 1u);
  EXPECT_EQ(CapacityStepPosition(1649267441664u), 30u);
  EXPECT_EQ(CapacityStepPosition(1073741824000u), 29u);  // 1000 GB
  EXPECT_EQ(CapacityStepPosition(2199023255552u), 31u);
  EXPECT_EQ(CapacityStepPosition(UINT64_MAX), 31u);
}

TEST(CapacityText, ReadsTheThreeUnits)
{
  EXPECT_EQ(ParseCapacityText(u"64 MB"), 64 * kMegabyte);
  EXPECT_EQ(ParseCapacityText(u"2 GB"), 2 * kGigabyte);
  EXPECT_EQ(ParseCapacityText(u"1.5 TB"), 1649267441664u);
  EXPECT_EQ(ParseCapacityText(u"64MB"), 64 * kMegabyte);
  EXPECT_EQ(ParseCapacityText(u"  8 MB \t"), 8 * kMegabyte);
}

TEST(CapacityText, UnitIsExactAndCaseSensitive)
{
  EXPECT_EQ(ParseCapacityText(u"64 mb"), 0u);
  EXPECT_EQ(ParseCapacityText(u"64 Mb"), 0u);
  EXPECT_EQ(ParseCapacityText(u"64"), 0u);
  EXPECT_EQ(ParseCapacityText(u"64 KB"), 0u);
  EXPECT_EQ(ParseCapacityText(u""), 0u);
  EXPECT_EQ(ParseCapacityText(u"B"), 0u);
}

TEST(CapacityText, NumberReadsFromTheStart)
{
  // The number is read up to the first character that does not belong to it.
  EXPECT_EQ(ParseCapacityText(u"100 k MB"), 104857600u);
  EXPECT_EQ(ParseCapacityText(u"abc GB"), 0u);
  EXPECT_EQ(ParseCapacityText(u"5.5 MB"), 5767168u);
  EXPECT_EQ(ParseCapacityText(u"1000 GB"), 1073741824000u);
}

TEST(CapacityText, ValuesAConversionWouldLeaveUndefined)
{
  EXPECT_EQ(ParseCapacityText(u"-5 MB"), 0u);
  EXPECT_EQ(ParseCapacityText(u"nan MB"), 0u);
  EXPECT_EQ(ParseCapacityText(u"inf TB"), UINT64_MAX);
  EXPECT_EQ(ParseCapacityText(u"1e30 TB"), UINT64_MAX);
}

TEST(CapacityText, UnitOfTheText)
{
  EXPECT_EQ(CapacityUnitOf(u" 64 GB "), u"GB");
  EXPECT_EQ(CapacityUnitOf(u"1.5 TB"), u"TB");
  EXPECT_EQ(CapacityUnitOf(u"8MB"), u"MB");
  EXPECT_EQ(CapacityUnitOf(u"8 M"), u"");
  EXPECT_EQ(CapacityUnitOf(u""), u"");
}

TEST(CapacityText, UnitLetterGetsItsB)
{
  EXPECT_EQ(CompleteCapacityUnit(u"900 M", u" GB"), u"900 MB");
  EXPECT_EQ(CompleteCapacityUnit(u" 3 G ", u""), u"3 GB");
  EXPECT_EQ(CompleteCapacityUnit(u"1T", u""), u"1TB");
}

TEST(CapacityText, TextWithUnitStaysTrimmed)
{
  EXPECT_EQ(CompleteCapacityUnit(u"  64 MB ", u" GB"), u"64 MB");
}

TEST(CapacityText, OtherTextsGetTheRememberedSuffix)
{
  EXPECT_EQ(CompleteCapacityUnit(u"1000", u" GB"), u"1000 GB");
  EXPECT_EQ(ParseCapacityText(CompleteCapacityUnit(u"1000", u" GB")), 1073741824000u);
  EXPECT_EQ(CompleteCapacityUnit(u"100 k", u" MB"), u"100 k MB");
  EXPECT_EQ(ParseCapacityText(CompleteCapacityUnit(u"100 k", u" MB")), 104857600u);
  EXPECT_EQ(CompleteCapacityUnit(u"64", u""), u"64");
  EXPECT_EQ(CompleteCapacityUnit(u"", u" MB"), u" MB");
}

TEST(CapacityClamp, LimitsAndWholeMegabytes)
{
  EXPECT_EQ(ClampCapacity(3 * kTerabyte), kMaximumCapacity);
  EXPECT_EQ(ClampCapacity(kMaximumCapacity + 1), kMaximumCapacity);
  EXPECT_EQ(ClampCapacity(kMaximumCapacity), kMaximumCapacity);
  EXPECT_EQ(ClampCapacity(0), kMinimumCapacity);
  EXPECT_EQ(ClampCapacity(kMegabyte), kMinimumCapacity);
  EXPECT_EQ(ClampCapacity(kMinimumCapacity), kMinimumCapacity);
  EXPECT_EQ(ClampCapacity(5767168u), 5242880u);  // 5.5 MB
  EXPECT_EQ(ClampCapacity(1649267441664u), 1649267441664u);
}
