// Dismounting all disks or one mount point: silent codes, the in-use questions, the forced
// retry and the failure message.
#include "app/dismount_flows.h"

#include <gtest/gtest.h>

#include "flow_fixture.h"
#include "settings/options.h"

namespace {

using DismountFlowTest = FlowTest;

const std::u16string kDisksInUse =
    u"Some virtual disks are still used by applications. If you dismount them, data loss may "
    u"occur.\nPlease close all applications that use mounted virtual disks before dismounting "
    u"them.\n\nProceed with dismount?";
const std::u16string kDiskPInUse =
    u"File system volume on drive P: is still used by applications. If you dismount it, data "
    u"loss may occur.\nPlease close all applications that use this disk before dismounting "
    u"it.\n\nProceed with dismount?";

std::u16string OperationFailed(const std::u16string& code)
{
  return u"Operation failed.\nError code: " + code +
         u"\n\nPlease contact technical support if the problem persists.";
}

void SetIgnoreOpenFiles(uint32_t value)
{
  GeneralOptions options;
  options.ignoreOpenFiles = value;
  ASSERT_EQ(WriteGeneralOptions(options), kStatusSuccess);
}

using Texts = std::vector<std::string>;

TEST_F(DismountFlowTest, DismountAllThatSucceedsIsSilent)
{
  host.Answer(DeviceHostOperation::kDismountAll, {kStatusSuccess});
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountAll(forced 0)"});
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(DismountFlowTest, DismountAllPassesTheForcedFlag)
{
  host.Answer(DeviceHostOperation::kDismountAll, {kStatusSuccess});
  DismountAllFlow(Owner(), 1);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountAll(forced 1)"});
}

TEST_F(DismountFlowTest, DismountAllWhenTheDriverIsNotStartedShowsNoMessage)
{
  host.Answer(DeviceHostOperation::kDismountAll, {0x4006000B});
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountAll(forced 0)"});
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(DismountFlowTest, DismountAllInUseWithIgnoreOpenFilesForcesAtOnceWithoutAQuestion)
{
  SetIgnoreOpenFiles(1);
  host.Answer(DeviceHostOperation::kDismountAll, {0x4006000D, kStatusSuccess});
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(host.CallTexts(), (Texts{"DismountAll(forced 0)", "DismountAll(forced 1)"}));
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(DismountFlowTest, DismountAllInUseAsksAndYesForces)
{
  host.Answer(DeviceHostOperation::kDismountAll, {0x4006000D, kStatusSuccess});
  prompts.Answer(kIdYes);
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(host.CallTexts(), (Texts{"DismountAll(forced 0)", "DismountAll(forced 1)"}));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text, kDisksInUse);
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Warning");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x34u);
}

TEST_F(DismountFlowTest, DismountAllInUseAndNoEndsSilently)
{
  SetIgnoreOpenFiles(0);
  host.Answer(DeviceHostOperation::kDismountAll, {0x4006000D});
  prompts.Answer(kIdNo);
  DismountAllFlow(nullptr, 0);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountAll(forced 0)"});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, nullptr);
  EXPECT_EQ(prompts.Prompts()[0].text, kDisksInUse);
}

TEST_F(DismountFlowTest, DismountAllFailureAfterTheForcedRetryIsShownEvenDriverNotStarted)
{
  SetIgnoreOpenFiles(1);
  host.Answer(DeviceHostOperation::kDismountAll, {0x4006000D, 0x4006000B});
  prompts.Answer(kIdOk);
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(host.CallTexts(), (Texts{"DismountAll(forced 0)", "DismountAll(forced 1)"}));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, OperationFailed(u"4006000B"));
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Dismount Virtual Disk");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
}

TEST_F(DismountFlowTest, DismountAllOtherFailureShowsOperationFailedWithTheCode)
{
  host.Answer(DeviceHostOperation::kDismountAll, {0x4006000A});
  prompts.Answer(kIdOk);
  DismountAllFlow(Owner(), 1);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountAll(forced 1)"});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text, OperationFailed(u"4006000A"));
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Dismount Virtual Disk");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
}

TEST_F(DismountFlowTest, DismountMountPointThatSucceedsIsSilent)
{
  host.Answer(DeviceHostOperation::kDismountMountPoint, {kStatusSuccess});
  DismountMountPointFlow(Owner(), u"P:", 0);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountMountPoint(P:, forced 0)"});
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(DismountFlowTest, DismountMountPointWhenTheDriverIsNotStartedShowsTheCode)
{
  host.Answer(DeviceHostOperation::kDismountMountPoint, {0x4006000B});
  prompts.Answer(kIdOk);
  DismountMountPointFlow(nullptr, u"P:", 1);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountMountPoint(P:, forced 1)"});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, nullptr);
  EXPECT_EQ(prompts.Prompts()[0].text, OperationFailed(u"4006000B"));
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Dismount Virtual Disk");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
}

TEST_F(DismountFlowTest, DismountMountPointInUseAsksEvenWithIgnoreOpenFilesAndYesForces)
{
  SetIgnoreOpenFiles(1);
  host.Answer(DeviceHostOperation::kDismountMountPoint, {0x4006000D, kStatusSuccess});
  prompts.Answer(kIdYes);
  DismountMountPointFlow(Owner(), u"P:", 0);
  EXPECT_EQ(host.CallTexts(),
            (Texts{"DismountMountPoint(P:, forced 0)", "DismountMountPoint(P:, forced 1)"}));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text, kDiskPInUse);
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Warning");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x34u);
}

TEST_F(DismountFlowTest, DismountMountPointInUseAndNoEndsSilently)
{
  host.Answer(DeviceHostOperation::kDismountMountPoint, {0x4006000D});
  prompts.Answer(kIdNo);
  DismountMountPointFlow(Owner(), u"P:", 0);
  EXPECT_EQ(host.CallTexts(), Texts{"DismountMountPoint(P:, forced 0)"});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, kDiskPInUse);
}

TEST_F(DismountFlowTest, DismountMountPointForcedRetryFailureIsShown)
{
  host.Answer(DeviceHostOperation::kDismountMountPoint, {0x4006000D, 0x40000008});
  prompts.Answer(kIdYes);
  prompts.Answer(kIdOk);
  DismountMountPointFlow(Owner(), u"P:", 0);
  EXPECT_EQ(host.CallTexts(),
            (Texts{"DismountMountPoint(P:, forced 0)", "DismountMountPoint(P:, forced 1)"}));
  ASSERT_EQ(prompts.Prompts().size(), 2u);
  EXPECT_EQ(prompts.Prompts()[1].text, OperationFailed(u"40000008"));
  EXPECT_EQ(prompts.Prompts()[1].caption, u"Cannot Dismount Virtual Disk");
}

// A disk of the list, dismounted by its disk id.
MountedDisk DiskAtP()
{
  MountedDisk disk;
  disk.mountPoint = u"P:";
  disk.imagePath = u"C:\\work.qvi";
  disk.info.diskId.data1 = 0x11223344;
  return disk;
}

TEST_F(DismountFlowTest, DismountDiskInUseAsksAboutItsMountPointAndYesForcesById)
{
  host.Answer(DeviceHostOperation::kDismountById, {0x4006000D, kStatusSuccess});
  prompts.Answer(kIdYes);
  DismountDiskFlow(Owner(), DiskAtP());
  const std::vector<DeviceHostCall> calls = host.Calls();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].operation, DeviceHostOperation::kDismountById);
  EXPECT_EQ(calls[0].diskId.data1, 0x11223344u);
  EXPECT_EQ(calls[0].forced, 0u);
  EXPECT_EQ(calls[1].diskId.data1, 0x11223344u);
  EXPECT_EQ(calls[1].forced, 1u);
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text, kDiskPInUse);
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Warning");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x34u);
}

TEST_F(DismountFlowTest, DismountDiskInUseAndNoEndsSilently)
{
  host.Answer(DeviceHostOperation::kDismountById, {0x4006000D});
  prompts.Answer(kIdNo);
  DismountDiskFlow(Owner(), DiskAtP());
  EXPECT_EQ(host.Calls().size(), 1u);
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, kDiskPInUse);
}

TEST_F(DismountFlowTest, DismountDiskFailureIsShownWithItsCode)
{
  host.Answer(DeviceHostOperation::kDismountById, {0x4006000B});
  prompts.Answer(kIdOk);
  DismountDiskFlow(Owner(), DiskAtP());
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, OperationFailed(u"4006000B"));
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Dismount Virtual Disk");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
}

}  // namespace
