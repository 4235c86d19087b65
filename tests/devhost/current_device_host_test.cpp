// The process-wide current device host: the system's own until another is installed.
#include <gtest/gtest.h>

#include "devhost/device_host_api.h"
#include "support/fake_device_host.h"

TEST(CurrentDeviceHostTest, IsTheSystemsOwnUntilReplaced)
{
  EXPECT_EQ(&CurrentDeviceHost(), &PlatformDeviceHost());
}

TEST(CurrentDeviceHostTest, ReplaceReturnsThePreviousAndNullRestoresTheSystemsOwn)
{
  FakeDeviceHost first;  // installs itself
  FakeDeviceHost second;
  EXPECT_EQ(&CurrentDeviceHost(), &second);
  EXPECT_EQ(ReplaceDeviceHost(&first), &second);
  EXPECT_EQ(&CurrentDeviceHost(), &first);
  EXPECT_EQ(ReplaceDeviceHost(nullptr), &first);
  EXPECT_EQ(&CurrentDeviceHost(), &PlatformDeviceHost());
  // The system's own reports itself as null: restoring it is the same as installing null.
  EXPECT_EQ(ReplaceDeviceHost(&second), nullptr);
}

TEST(CurrentDeviceHostTest, AFakeRestoresTheHostInstalledBeforeIt)
{
  {
    FakeDeviceHost outer;
    {
      FakeDeviceHost inner;
      EXPECT_EQ(&CurrentDeviceHost(), &inner);
    }
    EXPECT_EQ(&CurrentDeviceHost(), &outer);
  }
  EXPECT_EQ(&CurrentDeviceHost(), &PlatformDeviceHost());
}

TEST(CurrentDeviceHostTest, CallsReachTheInstalledHost)
{
  FakeDeviceHost fake;
  fake.Answer(DeviceHostOperation::kDismountAll, {kDevVolumeInUse});
  EXPECT_EQ(CurrentDeviceHost().DismountAll(0), kDevVolumeInUse);
  EXPECT_EQ(fake.CallTexts(), std::vector<std::string>{"DismountAll(forced 0)"});
}
