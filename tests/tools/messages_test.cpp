// Failure texts of the image tool.
#include <gtest/gtest.h>

#include "tools/messages/messages.h"

TEST(ctellimgFailureMessages, OpenCodesHaveTheirOwnTexts)
{
  const std::string wrong =
      "Cannot open d.qvi.\nPassword is wrong or the virtual disk image file is not valid or is "
      "corrupted.";
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x4005000B, "d.qvi"), wrong);
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x4005000A, "d.qvi"), wrong);
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x4005000C, "d.qvi"),
            "Cannot open d.qvi.\nVirtual disk image volume file is missing.");
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x40000008, "d.qvi"),
            "Cannot open d.qvi.\nAccess denied.");
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x40050013, "d.qvi"),
            "Operation failed.\nError code: 40050013\n\nPlease contact technical support if the "
            "problem persists.");
}

TEST(ctellimgFailureMessages, WholeCodesDecide)
{
  // Cancel and access denied share their low 16 bits.
  EXPECT_NE(FailureMessage(Activity::kOpen, 0x40050008, "d"),
            FailureMessage(Activity::kOpen, 0x40000008, "d"));
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x4000000B, "d").find("Password"), std::string::npos);
}

TEST(ctellimgFailureMessages, CreationTexts)
{
  EXPECT_EQ(FailureMessage(Activity::kCreate, 0x40000008, "x.qvi"),
            "Cannot create x.qvi. Access denied.");
  EXPECT_EQ(FailureMessage(Activity::kCreate, 0x4000000D, "x.qvi"),
            "Cannot create x.qvi.\nTarget drive does not have enough free space.");
  EXPECT_NE(
      FailureMessage(Activity::kCreate, 0x4000000A, "x.qvi").find("Cannot write data to x.qvi."),
      std::string::npos);
  EXPECT_NE(FailureMessage(Activity::kCreate, 0x40000010, "x.qvi").find("necessary privileges"),
            std::string::npos);
  EXPECT_EQ(FailureMessage(Activity::kCreate, 0x40050008, "x.qvi"), "");
  EXPECT_NE(FailureMessage(Activity::kCreate, 0x40050002, "x.qvi").find("Error code: 40050002"),
            std::string::npos);
}

TEST(ctellimgFailureMessages, PasswordAndClearFallbacks)
{
  EXPECT_EQ(FailureMessage(Activity::kChangePassword, 0x40050005, "d.qvi"),
            "Cannot change password for d.qvi.\nError code: 40050005\n\nPlease contact technical "
            "support if the problem persists.");
  EXPECT_EQ(FailureMessage(Activity::kClear, 0x4000000D, "d.qvi"),
            "Clearing of image failed.\nError code: 4000000D\n\nPlease contact technical support "
            "if the problem persists.");
  EXPECT_EQ(FailureMessage(Activity::kChangePassword, 0x4005000C, "d.qvi"),
            "Cannot open d.qvi.\nVirtual disk image volume file is missing.");
}

TEST(ctellimgFailureMessages, CancelledClearHasNoMessageButTheReportHasTheCode)
{
  EXPECT_EQ(FailureMessage(Activity::kClear, 0x40050008, "d.qvi"), "");
  EXPECT_EQ(FailureReport(Activity::kClear, 0x40050008, "d.qvi"), "Error code: 40050008");
}

TEST(ctellimgFailureMessages, DeviceHostCodesAreWordedAsTheProgramDoes)
{
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x4006000A, "d.qvi"),
            "Cannot connect to driver. Please re-install the application if the problem persists.");
  EXPECT_EQ(FailureReport(Activity::kOpen, 0x4006000B, "d.qvi"), "Error code: 4006000B");
}

TEST(ctellimgFailureMessages, ReportAddsTheCodeOnce)
{
  const std::string wrong = FailureReport(Activity::kOpen, 0x4005000B, "d.qvi");
  EXPECT_EQ(wrong.substr(wrong.size() - 21), "\nError code: 4005000B");
  const std::string general = FailureReport(Activity::kOpen, 0x40050013, "d.qvi");
  EXPECT_EQ(general, FailureMessage(Activity::kOpen, 0x40050013, "d.qvi"));
  EXPECT_EQ(FailureReport(Activity::kCreate, 0x40050008, "d.qvi"), "Error code: 40050008");
}

TEST(ctellimgFailureMessages, PathIsInsertedVerbatim)
{
  EXPECT_EQ(FailureMessage(Activity::kOpen, 0x40000008, "a%sb%X.qvi"),
            "Cannot open a%sb%X.qvi.\nAccess denied.");
}
