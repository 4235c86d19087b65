// The decisions of the clearing progress dialog.
#include "dialogs/clear_progress.h"

#include <gtest/gtest.h>

TEST(ClearProgress, CancelQuestion)
{
  EXPECT_EQ(CancelClearPrompt(),
            (Prompt{40057,
                    u"Virtual disk image will become corrupted if you cancel it clearing now. "
                    u"You will need to create new virtual disk image with the same file "
                    u"name.\n\nAre you sure you want to proceed?",
                    40017, 0x34}));
}

TEST(ClearProgress, ReplyStopsOnlyAfterAConfirmedCancel)
{
  EXPECT_EQ(ClearProgressReply(false), 1u);
  EXPECT_EQ(ClearProgressReply(true), 0u);
}

TEST(ClearProgress, ResultByBit30)
{
  EXPECT_EQ(ClearProgressResult(kStatusSuccess), 1);
  EXPECT_EQ(ClearProgressResult(kStatusInformation | 1), 1);
  EXPECT_EQ(ClearProgressResult(kImgCancelled), 3);
  EXPECT_EQ(ClearProgressResult(kSysWriteFault), 3);
}

TEST(ClearProgress, EstimateInSixtyFourBits)
{
  EXPECT_EQ(kClearProgressDifferences, ProgressDifferences::k64Bit);
}
