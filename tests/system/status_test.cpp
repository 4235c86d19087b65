#include "system/status.h"

#include <gtest/gtest.h>

TEST(StatusCode, InformationalSuccessPassesTheFailureTest)
{
  EXPECT_FALSE(IsFailure(0x20000000u));
  EXPECT_FALSE(IsFailure(kStatusInformation));
  EXPECT_FALSE(IsFailure(kStatusSuccess));
}

TEST(StatusCode, OnlyBit30MakesAFailure)
{
  EXPECT_TRUE(IsFailure(0x40000000u));
  EXPECT_TRUE(IsFailure(0x7FFFFFFFu));
  // Bit 31 alone, or any other bits without bit 30, is not a failure: the test is never
  // "non-zero" and never "negative".
  EXPECT_FALSE(IsFailure(0x80000000u));
  EXPECT_FALSE(IsFailure(0xBFFFFFFFu));
  EXPECT_FALSE(IsFailure(0x00050008u));
}

TEST(StatusCode, CancelAndAccessDeniedDifferOnlyInTheFacility)
{
  EXPECT_EQ(kImgCancelled, 0x40050008u);
  EXPECT_EQ(kSysAccessDenied, 0x40000008u);
  EXPECT_EQ(kImgCancelled & 0xFFFFu, kSysAccessDenied & 0xFFFFu);
  EXPECT_NE(kImgCancelled, kSysAccessDenied);
  EXPECT_EQ((kImgCancelled >> 16) & 0x1FFFu, kFacilityImage);
  EXPECT_EQ((kSysAccessDenied >> 16) & 0x1FFFu, kFacilitySystem);
}

TEST(StatusCode, ValuesAreBuiltFromFacilityAndCode)
{
  EXPECT_EQ(MakeFailure(kFacilityCrypto, 8), 0x40030008u);
  EXPECT_EQ(kCryptoRandomFailed, 0x40030000u);
  EXPECT_EQ(kCryptoInvalidParameter, 0x40030002u);
  EXPECT_EQ(kCryptoOutOfMemory, 0x40030005u);
  EXPECT_EQ(kCryptoBadKeyLength, 0x40030008u);
  EXPECT_EQ(kImgWrongPassword, 0x4005000Bu);
  EXPECT_EQ(kImgInvalidPassword, 0x4005000Au);
  EXPECT_EQ(kImgVolumeMissing, 0x4005000Cu);
  EXPECT_EQ(kImgChecksumMismatch, 0x40050013u);
  EXPECT_EQ(kImgPlainImage, 0x40050017u);
  EXPECT_EQ(kDevImageNotEncrypted, 0x40060009u);
  EXPECT_EQ(kDevUnreachable, 0x4006000Au);
  EXPECT_EQ(kDevNotRunning, 0x4006000Bu);
  EXPECT_EQ(kDevVolumeInUse, 0x4006000Du);
}
