// The scripted device host: its record of calls, its answers and its table of disks.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <thread>

#include "support/fake_device_host.h"

namespace {

using Op = DeviceHostOperation;

std::vector<std::u16string> MountPoints(DeviceHost& host)
{
  std::vector<MountedDisk> disks;
  EXPECT_EQ(host.EnumerateDisks(&disks), kStatusSuccess);
  std::vector<std::u16string> points;
  for (const MountedDisk& disk : disks) points.push_back(disk.mountPoint);
  return points;
}

MountedDisk Disk(const std::u16string& imagePath, const std::u16string& mountPoint,
                 uint32_t idNumber)
{
  MountedDisk disk{imagePath, mountPoint, kMountReadOnly, {}};
  disk.info.diskId.data1 = idNumber;
  disk.info.capacity = 8u << 20;
  return disk;
}

}  // namespace

TEST(FakeDeviceHostTest, RecordsEveryCallWithItsArgumentsInOrder)
{
  FakeDeviceHost fake;
  std::vector<MountedDisk> disks;
  Guid id{0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};
  fake.MountWithPassword(u"C:\\disks\\a.qvi", u"P:", kMountReadOnly | kMountInvisible, u"secret");
  fake.DismountAll(1);
  fake.DismountMountPoint(u"Q:", 0);
  fake.DismountById(id, 1);
  fake.EnumerateDisks(&disks);
  fake.FormatVolume(u"R:", 1);
  fake.StartDeviceHostService();

  EXPECT_EQ(fake.CallTexts(), (std::vector<std::string>{
                                  "MountWithPassword(C:\\disks\\a.qvi, P:, flags 0x5, password "
                                  "secret)",
                                  "DismountAll(forced 1)",
                                  "DismountMountPoint(Q:, forced 0)",
                                  "DismountById(12345678-9ABC-DEF0-0102-030405060708, forced 1)",
                                  "EnumerateDisks()",
                                  "FormatVolume(R:, selector 1)",
                                  "StartDeviceHostService()",
                              }));
  const std::vector<DeviceHostCall> calls = fake.Calls();
  ASSERT_EQ(calls.size(), 7u);
  EXPECT_EQ(calls[0].operation, Op::kMountWithPassword);
  EXPECT_EQ(calls[0].imagePath, u"C:\\disks\\a.qvi");
  EXPECT_EQ(calls[0].mountPoint, u"P:");
  EXPECT_EQ(calls[0].mountFlags, kMountReadOnly | kMountInvisible);
  EXPECT_EQ(calls[0].password, u"secret");
  EXPECT_EQ(calls[3].diskId.data1, 0x12345678u);
  EXPECT_EQ(calls[5].selector, 1u);
}

TEST(FakeDeviceHostTest, AnswersFromEachOperationsQueueThenTheDefault)
{
  FakeDeviceHost fake;
  fake.Answer(Op::kDismountAll, {kDevVolumeInUse, kDevNotRunning});
  fake.Answer(Op::kDismountMountPoint, {kSysNotFound});
  EXPECT_EQ(fake.DismountMountPoint(u"P:", 0), kSysNotFound);
  EXPECT_EQ(fake.DismountAll(0), kDevVolumeInUse);
  EXPECT_EQ(fake.DismountAll(0), kDevNotRunning);
  EXPECT_EQ(fake.DismountAll(0), kStatusSuccess);
  fake.SetDefaultAnswer(kSysAccessDenied);
  EXPECT_EQ(fake.DismountAll(1), kSysAccessDenied);
  EXPECT_EQ(fake.StartDeviceHostService(), kSysAccessDenied);
}

TEST(FakeDeviceHostTest, TableFollowsSuccessfulMountsAndDismounts)
{
  FakeDeviceHost fake;
  fake.Answer(Op::kMountWithPassword, {0, kSysAccessDenied, 0, 0});
  EXPECT_EQ(fake.MountWithPassword(u"a.qvi", u"P:", 0, u"pw"), kStatusSuccess);
  EXPECT_EQ(fake.MountWithPassword(u"b.qvi", u"Q:", 0, u"pw"), kSysAccessDenied);
  EXPECT_EQ(fake.MountWithPassword(u"c.qvi", u"R:", kMountRemovable, u"pw"), kStatusSuccess);
  EXPECT_EQ(fake.MountWithPassword(u"d.qvi", u"S:", 0, u"pw"), kStatusSuccess);

  std::vector<MountedDisk> disks;
  ASSERT_EQ(fake.EnumerateDisks(&disks), kStatusSuccess);
  ASSERT_EQ(disks.size(), 3u);
  EXPECT_EQ(disks[1].imagePath, u"c.qvi");
  EXPECT_EQ(disks[1].mountPoint, u"R:");
  EXPECT_EQ(disks[1].mountFlags, kMountRemovable);
  // Every mount gets a disk id of its own.
  EXPECT_NE(disks[0].info.diskId.data1, 0u);
  EXPECT_NE(disks[0].info.diskId.data1, disks[1].info.diskId.data1);
  EXPECT_NE(disks[1].info.diskId.data1, disks[2].info.diskId.data1);

  EXPECT_EQ(fake.DismountById(disks[1].info.diskId, 0), kStatusSuccess);
  EXPECT_EQ(MountPoints(fake), (std::vector<std::u16string>{u"P:", u"S:"}));
  EXPECT_EQ(fake.DismountMountPoint(u"P:", 0), kStatusSuccess);
  EXPECT_EQ(MountPoints(fake), std::vector<std::u16string>{u"S:"});
  EXPECT_EQ(fake.DismountAll(0), kStatusSuccess);
  EXPECT_TRUE(MountPoints(fake).empty());
}

TEST(FakeDeviceHostTest, FailedDismountsLeaveTheTable)
{
  FakeDeviceHost fake;
  fake.AddDisk(Disk(u"a.qvi", u"P:", 1));
  fake.AddDisk(Disk(u"b.qvi", u"Q:", 2));
  fake.Answer(Op::kDismountAll, {kDevVolumeInUse});
  fake.Answer(Op::kDismountMountPoint, {kDevVolumeInUse});
  fake.Answer(Op::kDismountById, {kDevVolumeInUse});
  EXPECT_EQ(fake.DismountAll(0), kDevVolumeInUse);
  EXPECT_EQ(fake.DismountMountPoint(u"P:", 0), kDevVolumeInUse);
  EXPECT_EQ(fake.DismountById(Disk(u"", u"", 2).info.diskId, 0), kDevVolumeInUse);
  EXPECT_EQ(MountPoints(fake), (std::vector<std::u16string>{u"P:", u"Q:"}));
}

TEST(FakeDeviceHostTest, EnumerationReportsAddedDisksWithEveryField)
{
  FakeDeviceHost fake;
  MountedDisk disk = Disk(u"C:\\a.qvi", u"X:", 7);
  disk.info.algorithm = 1;
  disk.info.keyLength = 16;
  fake.AddDisk(disk);
  std::vector<MountedDisk> disks;
  ASSERT_EQ(fake.EnumerateDisks(&disks), kStatusSuccess);
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].imagePath, u"C:\\a.qvi");
  EXPECT_EQ(disks[0].mountPoint, u"X:");
  EXPECT_EQ(disks[0].mountFlags, kMountReadOnly);
  EXPECT_EQ(disks[0].info.diskId.data1, 7u);
  EXPECT_EQ(disks[0].info.capacity, 8u << 20);
  EXPECT_EQ(disks[0].info.algorithm, 1u);
  EXPECT_EQ(disks[0].info.keyLength, 16u);
  EXPECT_EQ(fake.Disks().size(), 1u);
}

TEST(FakeDeviceHostTest, FailedEnumerationGivesAnEmptyList)
{
  FakeDeviceHost fake;
  fake.AddDisk(Disk(u"a.qvi", u"P:", 1));
  fake.Answer(Op::kEnumerateDisks, {0x40000007});
  std::vector<MountedDisk> disks(3);
  EXPECT_EQ(fake.EnumerateDisks(&disks), 0x40000007u);
  EXPECT_TRUE(disks.empty());
  EXPECT_EQ(fake.Disks().size(), 1u);
}

TEST(FakeDeviceHostTest, StrictModeFailsAnUnscriptedCall)
{
  EXPECT_NONFATAL_FAILURE(
      {
        FakeDeviceHost fake;
        fake.SetStrict(true);
        fake.Answer(Op::kDismountAll, {kDevVolumeInUse});
        EXPECT_EQ(fake.DismountAll(0), kDevVolumeInUse);
        fake.SetDefaultAnswer(kDevNotRunning);
        EXPECT_EQ(fake.DismountAll(1), kDevNotRunning);
      },
      "unscripted device host call: DismountAll(forced 1)");
}

TEST(FakeDeviceHostTest, AnswersNeverTakenFailTheTest)
{
  EXPECT_NONFATAL_FAILURE(
      {
        FakeDeviceHost fake;
        fake.Answer(Op::kFormatVolume, {0, 0});
        fake.FormatVolume(u"P:", 0);
      },
      "1 scripted answer(s) for FormatVolume were never taken");
}

TEST(FakeDeviceHostTest, CallsFromSeveralThreadsAreAllRecorded)
{
  FakeDeviceHost fake;
  auto dismount = [&fake] {
    for (int i = 0; i < 200; ++i) fake.DismountMountPoint(u"P:", 0);
  };
  std::thread first(dismount);
  std::thread second(dismount);
  first.join();
  second.join();
  EXPECT_EQ(fake.Calls().size(), 400u);
}
