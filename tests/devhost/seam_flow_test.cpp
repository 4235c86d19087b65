// A flow written against the device host seam and driven by the scripted device host:
// the seam carries the answers a flow decides on and the calls it makes in return.
#include <gtest/gtest.h>

#include <functional>

#include "support/fake_device_host.h"

namespace {

using Op = DeviceHostOperation;

// Dismounts every disk; when applications still use one, asks `mayForce` and on consent
// dismounts forced.
StatusCode DismountEverything(const std::function<bool()>& mayForce)
{
  DeviceHost& host = CurrentDeviceHost();
  StatusCode status = host.DismountAll(0);
  if (status == kDevVolumeInUse && mayForce()) status = host.DismountAll(1);
  return status;
}

// Mounts an image; when the driver is not started, starts the service and mounts again.
StatusCode MountStartingTheService(const std::u16string& image, const std::u16string& mountPoint)
{
  DeviceHost& host = CurrentDeviceHost();
  StatusCode status = host.MountWithPassword(image, mountPoint, kMountReadOnly, u"secret");
  if (status == kDevNotRunning && !IsFailure(host.StartDeviceHostService())) {
    status = host.MountWithPassword(image, mountPoint, kMountReadOnly, u"secret");
  }
  return status;
}

class SeamFlowTest : public testing::Test {
 protected:
  SeamFlowTest()
  {
    fake_.SetStrict(true);
    MountedDisk disk{u"a.qvi", u"P:", 0, {}};
    fake_.AddDisk(disk);
  }

  FakeDeviceHost fake_;
  int questions_ = 0;
  std::function<bool()> answer(bool consent)
  {
    return [this, consent] {
      ++questions_;
      return consent;
    };
  }
};

}  // namespace

TEST_F(SeamFlowTest, DismountThatSucceedsAsksNothing)
{
  fake_.Answer(Op::kDismountAll, {kStatusSuccess});
  EXPECT_EQ(DismountEverything(answer(true)), kStatusSuccess);
  EXPECT_EQ(questions_, 0);
  EXPECT_EQ(fake_.CallTexts(), std::vector<std::string>{"DismountAll(forced 0)"});
  EXPECT_TRUE(fake_.Disks().empty());
}

TEST_F(SeamFlowTest, VolumeInUseIsForcedAfterConsent)
{
  fake_.Answer(Op::kDismountAll, {kDevVolumeInUse, kStatusSuccess});
  EXPECT_EQ(DismountEverything(answer(true)), kStatusSuccess);
  EXPECT_EQ(questions_, 1);
  EXPECT_EQ(fake_.CallTexts(),
            (std::vector<std::string>{"DismountAll(forced 0)", "DismountAll(forced 1)"}));
  EXPECT_TRUE(fake_.Disks().empty());
}

TEST_F(SeamFlowTest, VolumeInUseStaysWithoutConsent)
{
  fake_.Answer(Op::kDismountAll, {kDevVolumeInUse});
  EXPECT_EQ(DismountEverything(answer(false)), kDevVolumeInUse);
  EXPECT_EQ(questions_, 1);
  EXPECT_EQ(fake_.CallTexts(), std::vector<std::string>{"DismountAll(forced 0)"});
  EXPECT_EQ(fake_.Disks().size(), 1u);
}

TEST_F(SeamFlowTest, StoppedDriverIsStartedAndTheMountRepeated)
{
  fake_.Answer(Op::kMountWithPassword, {kDevNotRunning, kStatusSuccess});
  fake_.Answer(Op::kStartDeviceHostService, {kStatusSuccess});
  fake_.Answer(Op::kEnumerateDisks, {kStatusSuccess});
  EXPECT_EQ(MountStartingTheService(u"b.qvi", u"Q:"), kStatusSuccess);
  EXPECT_EQ(fake_.CallTexts(), (std::vector<std::string>{
                                   "MountWithPassword(b.qvi, Q:, flags 0x1, password secret)",
                                   "StartDeviceHostService()",
                                   "MountWithPassword(b.qvi, Q:, flags 0x1, password secret)",
                               }));
  std::vector<MountedDisk> disks;
  ASSERT_EQ(CurrentDeviceHost().EnumerateDisks(&disks), kStatusSuccess);
  ASSERT_EQ(disks.size(), 2u);
  EXPECT_EQ(disks[1].mountPoint, u"Q:");
}

TEST_F(SeamFlowTest, ServiceThatCannotStartEndsTheMount)
{
  fake_.Answer(Op::kMountWithPassword, {kDevNotRunning});
  fake_.Answer(Op::kStartDeviceHostService, {kSysServiceDoesNotExist});
  EXPECT_EQ(MountStartingTheService(u"b.qvi", u"Q:"), kDevNotRunning);
  EXPECT_EQ(fake_.Calls().size(), 2u);
  EXPECT_EQ(fake_.Disks().size(), 1u);
}
