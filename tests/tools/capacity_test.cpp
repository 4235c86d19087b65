// Capacities on the command line: the wizard's reading rules (tested with the wizard) as the
// tool applies them, and the tool's capacity text.
// Suites carry the tool's name so that `ctest -R ctellimg` selects them with the
// end-to-end test.
#include <gtest/gtest.h>

#include "tools/ctellimg/capacity.h"

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
