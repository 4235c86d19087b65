// Showing the message of a failed operation and the answer whether to try again.
#include "app/show_operation_error.h"

#include <gtest/gtest.h>

#include "res/resource.h"
#include "support/fake_device_host.h"
#include "support/scripted_message_boxes.h"

namespace {

WindowRef const kOwner = reinterpret_cast<WindowRef>(0x1234);

bool Show(StatusCode status)
{
  return ShowOperationError(kOwner, status, IDS_CANNOT_MOUNT_CAPTION, IDS_CANNOT_MOUNT, u"d.qvi");
}

}  // namespace

TEST(ShowOperationError, AccessDeniedRetriesOnlyOnRetry)
{
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdRetry);
  boxes.Answer(kIdCancel);
  EXPECT_TRUE(Show(kSysAccessDenied));
  EXPECT_FALSE(Show(kSysAccessDenied));
  ASSERT_EQ(boxes.Prompts().size(), 2u);
  EXPECT_EQ(boxes.Prompts()[0].owner, kOwner);
  EXPECT_EQ(boxes.Prompts()[0].text, u"Cannot open d.qvi.\nAccess denied.");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(boxes.Prompts()[0].flags, 0x15u);
}

TEST(ShowOperationError, OtherCodesShowTheFallbackWithTheCode)
{
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  EXPECT_FALSE(Show(0x40000009));
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_NE(boxes.Prompts()[0].text.find(u"40000009"), std::u16string::npos);
  EXPECT_EQ(boxes.Prompts()[0].flags, 0x10u);
}

TEST(ShowOperationError, StoppedDeviceHostIsStartedWithoutAMessage)
{
  CScriptedMessageBoxes boxes;
  FakeDeviceHost host;
  host.SetStrict(true);
  host.Answer(DeviceHostOperation::kStartDeviceHostService, {kStatusSuccess});
  EXPECT_TRUE(Show(kDevNotRunning));
  EXPECT_TRUE(boxes.Prompts().empty());
}

TEST(ShowOperationError, DeviceHostThatDoesNotStartGivesItsOwnCode)
{
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  FakeDeviceHost host;
  host.SetStrict(true);
  host.Answer(DeviceHostOperation::kStartDeviceHostService, {kSysServiceDoesNotExist});
  EXPECT_FALSE(Show(kDevNotRunning));
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].text, u"Cannot start image mount driver.\nError code: 40000013");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
}
