// When the clear command asks before a long job.
#include "app/clear_image.h"

#include <gtest/gtest.h>

TEST(ClearImage, FixedImagesFrom256MegabytesAsk)
{
  EXPECT_TRUE(ClearTakesLong(true, 268435456u));
  EXPECT_TRUE(ClearTakesLong(true, 2 * kTerabyte));
  EXPECT_FALSE(ClearTakesLong(true, 268435455u));
}

TEST(ClearImage, SparseImagesNeverAsk)
{
  EXPECT_FALSE(ClearTakesLong(false, 268435456u));
  EXPECT_FALSE(ClearTakesLong(false, 2 * kTerabyte));
}
