// The capacity page's box and trackbar: the step texts, the remembered unit and the
// normalisation when the box loses the focus.
#include "wizard/capacity_box.h"

#include <gtest/gtest.h>

#include "wizard/capacity.h"

namespace {

// The box after it gained the focus holding `shown`.
CCapacityBox BoxThatShowed(std::u16string_view shown)
{
  CCapacityBox box;
  box.FocusGained(shown);
  return box;
}

}  // namespace

TEST(CapacityBox, StepTextsArePreciseFromOneGigabyte)
{
  EXPECT_EQ(CapacityStepText(0), u"4 MB");
  EXPECT_EQ(CapacityStepText(7), u"512 MB");
  EXPECT_EQ(CapacityStepText(8), u"1.0 GB");
  EXPECT_EQ(CapacityStepText(16), u"60.0 GB");
  EXPECT_EQ(CapacityStepText(30), u"1.50 TB");
  EXPECT_EQ(CapacityStepText(31), u"2.00 TB");
}

TEST(CapacityBox, LimitLabelsArePlain)
{
  EXPECT_EQ(MinimumCapacityText(), u"4 MB");
  EXPECT_EQ(MaximumCapacityText(), u"2 TB");
}

TEST(CapacityBox, FocusRemembersOnlyAUnitText)
{
  CCapacityBox box;
  EXPECT_EQ(box.RememberedSuffix(), u"");
  box.FocusGained(u"2.0 GB ");
  EXPECT_EQ(box.RememberedSuffix(), u" GB");
  box.FocusGained(u"64 mb");
  EXPECT_EQ(box.RememberedSuffix(), u" GB");
  box.FocusGained(u"abc");
  EXPECT_EQ(box.RememberedSuffix(), u" GB");
  box.FocusGained(u"1.50 TB");
  EXPECT_EQ(box.RememberedSuffix(), u" TB");
  box.FocusGained(u"512MB");
  EXPECT_EQ(box.RememberedSuffix(), u" MB");
}

TEST(CapacityBox, OneAndAHalfTerabytesStaysAsTyped)
{
  const CapacityBoxLeft left = CCapacityBox().FocusLost(u"1.5 TB", 0);
  EXPECT_EQ(left.capacity, 1649267441664u);
  EXPECT_FALSE(left.rewrite.has_value());
  EXPECT_EQ(left.position, 30u);
}

TEST(CapacityBox, ThreeTerabytesIsClampedToTwo)
{
  const CapacityBoxLeft left = CCapacityBox().FocusLost(u"3 TB", 0);
  EXPECT_EQ(left.capacity, 2199023255552u);
  EXPECT_EQ(left.rewrite, u"2.00 TB");
  EXPECT_EQ(left.position, 31u);
}

TEST(CapacityBox, BareNumberTakesTheRememberedUnit)
{
  const CapacityBoxLeft left = BoxThatShowed(u"4.0 GB").FocusLost(u"1000", 10);
  EXPECT_EQ(left.capacity, 1073741824000u);
  EXPECT_EQ(left.rewrite, u"1000.0 GB");
  EXPECT_EQ(left.position, 29u);
}

TEST(CapacityBox, OtherLastLetterTakesTheRememberedUnitToo)
{
  // "100 k MB": the unit at the end and the number at the start.
  const CapacityBoxLeft left = BoxThatShowed(u"64 MB").FocusLost(u"100 k", 4);
  EXPECT_EQ(left.capacity, 104857600u);
  EXPECT_EQ(left.rewrite, u"100.0 MB");
  EXPECT_EQ(left.position, 5u);
}

TEST(CapacityBox, UnitLetterGetsItsB)
{
  const CapacityBoxLeft left = BoxThatShowed(u"2.0 GB").FocusLost(u"900 M", 9);
  EXPECT_EQ(left.capacity, 900 * kMegabyte);
  EXPECT_EQ(left.rewrite, u"900.0 MB");
  EXPECT_EQ(left.position, 8u);
}

TEST(CapacityBox, UnreadableNumberWithUnitIsClampedToTheMinimum)
{
  const CapacityBoxLeft left = CCapacityBox().FocusLost(u"abc GB", 12);
  EXPECT_EQ(left.capacity, 4194304u);
  EXPECT_EQ(left.rewrite, u"4.0 MB");
  EXPECT_EQ(left.position, 0u);
}

TEST(CapacityBox, TextThatReadsAsNothingTakesTheTrackbarStep)
{
  // Nothing remembered yet, so no unit is added and the text reads as 0.
  const CapacityBoxLeft left = CCapacityBox().FocusLost(u"lots", 8);
  EXPECT_EQ(left.capacity, 1073741824u);
  EXPECT_EQ(left.rewrite, u"1.0 GB");
  EXPECT_EQ(left.position, 8u);
}

TEST(CapacityBox, FractionOfAMegabyteIsRoundedDown)
{
  const CapacityBoxLeft left = CCapacityBox().FocusLost(u"5.5 MB", 0);
  EXPECT_EQ(left.capacity, 5242880u);
  EXPECT_EQ(left.rewrite, u"5.0 MB");
  EXPECT_EQ(left.position, 1u);
}

TEST(CapacityBox, ThirtyTwoGigabytesSelectsTheFirstOfItsTwoPositions)
{
  const CapacityBoxLeft left = CCapacityBox().FocusLost(u"32 GB", 20);
  EXPECT_EQ(left.capacity, 34359738368u);
  EXPECT_FALSE(left.rewrite.has_value());
  EXPECT_EQ(left.position, 13u);
}

TEST(CapacityBox, NextReadsATextWithoutUnitAsNothing)
{
  // Next stores the parser's reading of the box unchanged: a text still without a unit (the
  // box kept the focus, so it was never completed) gives 0.
  EXPECT_EQ(ParseCapacityText(u"1000"), 0u);
}
