// The progress page's message after a failed creation.
#include "wizard/creation_failure.h"

#include <gtest/gtest.h>

#include "res/resource.h"

TEST(CreationFailure, SystemCodesHaveTheirOwnTexts)
{
  EXPECT_EQ(CreationFailure(0x40000008, u"x.qvi"),
            (Prompt{IDS_CREATE_ACCESS_DENIED, u"Cannot create x.qvi. Access denied.",
                    IDS_ERROR_CAPTION, 0x10}));
  EXPECT_EQ(CreationFailure(0x4000000A, u"x.qvi")->text,
            u"Cannot write data to x.qvi.\nPlease check that there target drive is not write "
            u"protected and has enough free space.");
  EXPECT_EQ(CreationFailure(0x4000000D, u"x.qvi")->text,
            u"Cannot create x.qvi.\nTarget drive does not have enough free space.");
  EXPECT_EQ(CreationFailure(0x40000010, u"x.qvi")->text,
            u"Cannot create x.qvi.\nPlease check that you have necessary privileges to create a "
            u"file in the target directory.");
}

TEST(CreationFailure, OtherCodesShowTheCode)
{
  EXPECT_EQ(CreationFailure(0x40050002, u"x.qvi"),
            (Prompt{IDS_OPERATION_FAILED,
                    u"Operation failed.\nError code: 40050002\n\nPlease contact technical support "
                    u"if the problem persists.",
                    IDS_ERROR_CAPTION, 0x10}));
  // The whole code decides: the image container's 0x4005000D is no full disk.
  EXPECT_EQ(CreationFailure(0x4005000D, u"x.qvi")->textId, unsigned{IDS_OPERATION_FAILED});
}

TEST(CreationFailure, CancelledCreationHasNoMessage)
{
  EXPECT_FALSE(CreationFailure(0x40050008, u"x.qvi").has_value());
}
