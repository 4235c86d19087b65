// The encryption page's key lengths.
#include "wizard/key_length.h"

#include <gtest/gtest.h>

TEST(KeyLength, RangesPerCipher)
{
  EXPECT_EQ(KeyLengthRanges[0].minimum, 128u);
  EXPECT_EQ(KeyLengthRanges[0].step, 64u);
  EXPECT_EQ(KeyLengthRanges[0].maximum, 256u);
  EXPECT_EQ(KeyLengthRanges[1].minimum, 128u);
  EXPECT_EQ(KeyLengthRanges[1].step, 8u);
  EXPECT_EQ(KeyLengthRanges[1].maximum, 448u);
  EXPECT_EQ(KeyLengthRanges[2].minimum, 64u);
  EXPECT_EQ(KeyLengthRanges[2].step, 8u);
  EXPECT_EQ(KeyLengthRanges[2].maximum, 128u);
}

TEST(KeyLength, TrackbarPositionsPerCipher)
{
  EXPECT_EQ(CarryKeyLength(0, 0).lastPosition, 2u);
  EXPECT_EQ(CarryKeyLength(1, 0).lastPosition, 40u);
  EXPECT_EQ(CarryKeyLength(2, 0).lastPosition, 8u);
}

TEST(KeyLength, PageStartsWithAesAt128Bits)
{
  const KeyLengthTrackbar trackbar = CarryKeyLength(0, 0);
  EXPECT_EQ(trackbar.position, 0u);
  EXPECT_EQ(KeyLengthAt(0, trackbar.position), 128u);
}

TEST(KeyLength, BlowfishAt200ToAesFallsTo192)
{
  const KeyLengthTrackbar trackbar = CarryKeyLength(0, 200);
  EXPECT_EQ(trackbar.position, 1u);
  EXPECT_EQ(KeyLengthAt(0, trackbar.position), 192u);
}

TEST(KeyLength, CarriedLengthIsBroughtWithinTheLimits)
{
  EXPECT_EQ(KeyLengthAt(2, CarryKeyLength(2, 256).position), 128u);  // AES 256 to CAST
  EXPECT_EQ(KeyLengthAt(0, CarryKeyLength(0, 64).position), 128u);   // CAST 64 to AES
  EXPECT_EQ(KeyLengthAt(1, CarryKeyLength(1, 64).position), 128u);   // CAST 64 to Blowfish
  EXPECT_EQ(KeyLengthAt(1, CarryKeyLength(1, 256).position), 256u);  // AES 256 to Blowfish
  EXPECT_EQ(KeyLengthAt(2, CarryKeyLength(2, 0).position), 128u);    // nothing shown yet
}

TEST(KeyLength, TopBlowfishPositionIs448)
{
  EXPECT_EQ(KeyLengthAt(1, 40), 448u);
  EXPECT_EQ(CarryKeyLength(1, 448).position, 40u);
}

TEST(KeyLength, LengthText)
{
  EXPECT_EQ(KeyLengthText(128), u"128 bits");
  EXPECT_EQ(KeyLengthText(448), u"448 bits");
}

TEST(KeyLength, WarningThresholdIsNeverReached)
{
  EXPECT_TRUE(KeyLengthTooSmall(63));
  EXPECT_FALSE(KeyLengthTooSmall(64));
  for (uint32_t algorithm = 0; algorithm < KeyLengthRanges.size(); ++algorithm)
    EXPECT_FALSE(KeyLengthTooSmall(KeyLengthAt(algorithm, 0)));
}

TEST(KeyLengthChoice, FollowsThePageAcrossCipherChanges)
{
  CKeyLengthChoice choice;
  EXPECT_EQ(choice.Bits(), 0u);
  const KeyLengthTrackbar start = choice.Apply(0);
  EXPECT_EQ(start.lastPosition, 2u);
  EXPECT_EQ(choice.Bits(), 128u);
  EXPECT_EQ(choice.Minimum(), 128u);
  EXPECT_EQ(choice.Maximum(), 256u);

  choice.Apply(1);
  choice.Move(9);  // Blowfish at 128 + 9 * 8 = 200 bits
  EXPECT_EQ(choice.Bits(), 200u);
  const KeyLengthTrackbar aes = choice.Apply(0);
  EXPECT_EQ(aes.position, 1u);
  EXPECT_EQ(choice.Bits(), 192u);

  choice.Move(2);  // AES 256
  EXPECT_EQ(choice.Apply(2).position, 8u);
  EXPECT_EQ(choice.Bits(), 128u);
  choice.Move(0);  // CAST 64
  EXPECT_EQ(choice.Apply(0).position, 0u);
  EXPECT_EQ(choice.Bits(), 128u);
}
