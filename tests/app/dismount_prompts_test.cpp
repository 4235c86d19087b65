// The messages of the dismount flows: their exact texts, captions and styles.
#include "app/dismount_prompts.h"

#include <gtest/gtest.h>

TEST(DismountPrompts, DiskInUseNamesTheMountPointAsGiven)
{
  EXPECT_EQ(DiskInUsePrompt(u"P:"),
            (Prompt{40016,
                    u"File system volume on drive P: is still used by applications. If you "
                    u"dismount it, data loss may occur.\nPlease close all applications that use "
                    u"this disk before dismounting it.\n\nProceed with dismount?",
                    40017, kMbYesNo | kMbIconExclamation}));
}

TEST(DismountPrompts, DisksInUse)
{
  EXPECT_EQ(DisksInUsePrompt(),
            (Prompt{40020,
                    u"Some virtual disks are still used by applications. If you dismount them, "
                    u"data loss may occur.\nPlease close all applications that use mounted "
                    u"virtual disks before dismounting them.\n\nProceed with dismount?",
                    40017, 0x34}));
}

TEST(DismountPrompts, FailureShowsTheCode)
{
  EXPECT_EQ(DismountFailure(0x40060002),
            (Prompt{40018,
                    u"Operation failed.\nError code: 40060002\n\nPlease contact technical support "
                    u"if the problem persists.",
                    40019, kMbOk | kMbIconError}));
}
