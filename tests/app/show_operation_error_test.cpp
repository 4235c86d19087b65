// A failed operation shown to the user: which message, whether the device host is started,
// and when the caller tries again.
#include "app/show_operation_error.h"

#include <gtest/gtest.h>

#include "flow_fixture.h"
#include "res/resource.h"

namespace {

using ShowOperationErrorTest = FlowTest;

bool ShowMountError(WindowRef owner, StatusCode status)
{
  return ShowOperationError(owner, status, IDS_CANNOT_MOUNT_CAPTION, IDS_CANNOT_MOUNT,
                            u"C:\\x.qvi");
}

TEST_F(ShowOperationErrorTest, MissingVolumeFileShowsOneOkBoxAndNoRetry)
{
  prompts.Answer(kIdOk);
  EXPECT_FALSE(ShowMountError(Owner(), 0x4005000C));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Cannot open C:\\x.qvi.\nVirtual disk image volume file is missing.");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
  EXPECT_TRUE(host.CallTexts().empty());
}

TEST_F(ShowOperationErrorTest, AccessDeniedOffersRetryAndRetryMeansTryAgain)
{
  prompts.Answer(kIdRetry);
  EXPECT_TRUE(ShowMountError(Owner(), 0x40000008));
  prompts.Answer(kIdCancel);
  EXPECT_FALSE(ShowMountError(Owner(), 0x40000008));
  ASSERT_EQ(prompts.Prompts().size(), 2u);
  for (const CScriptedMessageBoxes::Prompt& shown : prompts.Prompts()) {
    EXPECT_EQ(shown.text, u"Cannot open C:\\x.qvi.\nAccess denied.");
    EXPECT_EQ(shown.caption, u"Cannot Mount Virtual Disk Image");
    EXPECT_EQ(shown.flags, 0x15u);
  }
}

TEST_F(ShowOperationErrorTest, StoppedDeviceHostIsStartedWithoutAMessageAndTheCallerRetries)
{
  host.Answer(DeviceHostOperation::kStartDeviceHostService, {kStatusSuccess});
  EXPECT_TRUE(ShowMountError(Owner(), 0x4006000B));
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_EQ(host.CallTexts(), std::vector<std::string>{"StartDeviceHostService()"});
}

TEST_F(ShowOperationErrorTest, DeviceHostThatCannotStartShowsTheServicesCode)
{
  host.Answer(DeviceHostOperation::kStartDeviceHostService, {0x40000013});
  prompts.Answer(kIdOk);
  EXPECT_FALSE(ShowMountError(Owner(), 0x4006000B));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, u"Cannot start image mount driver.\nError code: 40000013");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
  EXPECT_EQ(host.CallTexts(), std::vector<std::string>{"StartDeviceHostService()"});
}

TEST_F(ShowOperationErrorTest, WrongPasswordAndNoDriverConnectionHaveTheirOwnTexts)
{
  prompts.Answer(kIdOk);
  prompts.Answer(kIdOk);
  EXPECT_FALSE(ShowMountError(nullptr, 0x4005000B));
  EXPECT_FALSE(ShowMountError(nullptr, 0x4006000A));
  ASSERT_EQ(prompts.Prompts().size(), 2u);
  EXPECT_EQ(prompts.Prompts()[0].owner, nullptr);
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Cannot open C:\\x.qvi.\nPassword is wrong or the virtual disk image file is not "
            u"valid or is corrupted.");
  EXPECT_EQ(prompts.Prompts()[1].text,
            u"Cannot connect to driver. Please re-install the application if the problem "
            u"persists.");
  EXPECT_EQ(prompts.Prompts()[1].flags, 0x10u);
}

TEST_F(ShowOperationErrorTest, OtherCodesGetTheDefaultTextWithSubjectAndCode)
{
  prompts.Answer(kIdOk);
  EXPECT_FALSE(ShowMountError(Owner(), 0x40050013));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Cannot mount C:\\x.qvi.\nError code: 40050013\n\nPlease contact technical support "
            u"if the problem persists.");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
  EXPECT_TRUE(host.CallTexts().empty());
}

}  // namespace
