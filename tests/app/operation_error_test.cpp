// The message a failed operation gives, and the flows' captions and fallback texts.
#include "app/operation_error.h"

#include <gtest/gtest.h>

#include "res/resource.h"

namespace {

const std::u16string kWrongPassword =
    u"Cannot open d.qvi.\nPassword is wrong or the virtual disk image file is not valid or is "
    u"corrupted.";

OperationErrorChoice Choose(StatusCode status)
{
  return ChooseOperationError(status, IDS_CANNOT_MOUNT_CAPTION, IDS_CANNOT_MOUNT, u"d.qvi");
}

}  // namespace

TEST(OperationError, MissingVolumeFile)
{
  const OperationErrorChoice choice = Choose(0x4005000C);
  EXPECT_FALSE(choice.startDeviceHost);
  EXPECT_EQ(choice.prompt,
            (Prompt{IDS_OPEN_VOLUME_MISSING,
                    u"Cannot open d.qvi.\nVirtual disk image volume file is missing.",
                    IDS_CANNOT_MOUNT_CAPTION, 0x10}));
}

TEST(OperationError, AccessDeniedOffersRetry)
{
  const OperationErrorChoice choice = Choose(0x40000008);
  EXPECT_EQ(choice.prompt, (Prompt{IDS_OPEN_ACCESS_DENIED, u"Cannot open d.qvi.\nAccess denied.",
                                   IDS_CANNOT_MOUNT_CAPTION, 0x15}));
}

TEST(OperationError, WrongPasswordAndTheReservedInvalidPassword)
{
  for (const StatusCode status : {0x4005000Au, 0x4005000Bu}) {
    const OperationErrorChoice choice = Choose(status);
    EXPECT_EQ(choice.prompt.textId, unsigned{IDS_OPEN_WRONG_PASSWORD}) << status;
    EXPECT_EQ(choice.prompt.text, kWrongPassword) << status;
    EXPECT_EQ(choice.prompt.flags, 0x10u) << status;
  }
}

TEST(OperationError, DeviceHostUnreachableHasNoInsertions)
{
  EXPECT_EQ(Choose(0x4006000A).prompt,
            (Prompt{IDS_NO_DRIVER_CONNECTION,
                    u"Cannot connect to driver. Please re-install the application if the problem "
                    u"persists.",
                    IDS_CANNOT_MOUNT_CAPTION, 0x10}));
}

TEST(OperationError, DeviceHostNotRunningStartsItWithoutAMessage)
{
  const OperationErrorChoice choice = Choose(0x4006000B);
  EXPECT_TRUE(choice.startDeviceHost);
  EXPECT_EQ(choice.prompt, (Prompt{0, u"", IDS_CANNOT_MOUNT_CAPTION, 0x10}));
}

TEST(OperationError, ServiceStartFailureShowsTheServicesCode)
{
  EXPECT_EQ(
      DeviceHostStartFailure(0x40000013, IDS_CANNOT_MOUNT_CAPTION),
      (Prompt{IDS_CANNOT_START_DRIVER, u"Cannot start image mount driver.\nError code: 40000013",
              IDS_CANNOT_MOUNT_CAPTION, 0x10}));
}

TEST(OperationError, OtherCodesGetTheFallbackWithSubjectAndCode)
{
  EXPECT_EQ(Choose(0x40050013).prompt,
            (Prompt{IDS_CANNOT_MOUNT,
                    u"Cannot mount d.qvi.\nError code: 40050013\n\nPlease contact technical "
                    u"support if the problem persists.",
                    IDS_CANNOT_MOUNT_CAPTION, 0x10}));
}

TEST(OperationError, WholeCodesDecide)
{
  // Cancel shares its low 16 bits with access denied, a system code with the wrong password.
  EXPECT_EQ(Choose(0x40050008).prompt.textId, unsigned{IDS_CANNOT_MOUNT});
  EXPECT_EQ(Choose(0x4000000B).prompt.textId, unsigned{IDS_CANNOT_MOUNT});
  EXPECT_FALSE(Choose(0x4000000B).startDeviceHost);
}

TEST(OperationError, SubjectIsInsertedVerbatim)
{
  EXPECT_EQ(ChooseOperationError(0x40000008, IDS_ERROR_CAPTION, IDS_OPERATION_FAILED, u"a%sb%X.qvi")
                .prompt.text,
            u"Cannot open a%sb%X.qvi.\nAccess denied.");
}

TEST(OperationErrorFlows, MountUsesItsCaptionAndFallback)
{
  const Prompt prompt = MountFailure(0x40000007, u"C:\\d.qvi").prompt;
  EXPECT_EQ(prompt.captionId, unsigned{IDS_CANNOT_MOUNT_CAPTION});
  EXPECT_EQ(prompt.text,
            u"Cannot mount C:\\d.qvi.\nError code: 40000007\n\nPlease contact technical support "
            u"if the problem persists.");
}

TEST(OperationErrorFlows, ChangePasswordUsesItsCaptionAndFallback)
{
  const Prompt prompt = ChangePasswordFailure(0x40050005, u"d.qvi").prompt;
  EXPECT_EQ(prompt.captionId, unsigned{IDS_CANNOT_CHANGE_PASSWORD_CAPTION});
  EXPECT_EQ(prompt.text,
            u"Cannot change password for d.qvi.\nError code: 40050005\n\nPlease contact "
            u"technical support if the problem persists.");
  EXPECT_EQ(ChangePasswordFailure(0x4005000B, u"d.qvi").prompt.text, kWrongPassword);
}

TEST(OperationErrorFlows, ClearFallbackShowsOnlyTheCode)
{
  const std::optional<OperationErrorChoice> choice = ClearFailure(0x4000000D, u"d.qvi");
  ASSERT_TRUE(choice.has_value());
  EXPECT_EQ(choice->prompt.captionId, unsigned{IDS_ERROR_CAPTION});
  EXPECT_EQ(choice->prompt.text,
            u"Clearing of image failed.\nError code: 4000000D\n\nPlease contact technical support "
            u"if the problem persists.");
  EXPECT_EQ(ClearFailure(0x4005000C, u"d.qvi")->prompt.textId, unsigned{IDS_OPEN_VOLUME_MISSING});
}

TEST(OperationErrorFlows, CancelledClearEndsSilently)
{
  EXPECT_FALSE(ClearFailure(0x40050008, u"d.qvi").has_value());
}
