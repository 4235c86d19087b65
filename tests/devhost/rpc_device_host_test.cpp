// The system's own device host on Windows: the seam over the RPC client, against the
// reference device host.
#include <cstring>

#include "devhost/device_host_api.h"
#include "host_fixture.h"

namespace {

std::vector<MountedDisk> Enumerate(DeviceHost& host)
{
  std::vector<MountedDisk> disks;
  EXPECT_EQ(host.EnumerateDisks(&disks), kStatusSuccess);
  return disks;
}

}  // namespace

TEST_F(DeviceHostTest, CurrentDeviceHostIsTheRpcClient)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(&CurrentDeviceHost(), &PlatformDeviceHost());
  EXPECT_EQ(CurrentDeviceHost().MountWithPassword(image, u"P:", kMountReadOnly, u"secret"),
            kStatusSuccess);
  EXPECT_EQ(LastCall(), L"1 MountImage");
  // The disk mounted through the seam is the one the client lists.
  const std::vector<ListedDisk> listed = ListDisks();
  ASSERT_EQ(listed.size(), 1u);
  EXPECT_EQ(listed[0].imagePath, image);
  EXPECT_EQ(listed[0].mountFlags, kMountReadOnly);
}

TEST_F(DeviceHostTest, SeamEnumerationCarriesEveryRecordAsTheClientPassesIt)
{
  DeviceHost& host = PlatformDeviceHost();
  EXPECT_TRUE(Enumerate(host).empty());
  const std::u16string a = MakeImage(u"a.qvi");
  const std::u16string b = MakeImage(u"b.qvi");
  ASSERT_EQ(host.MountWithPassword(a, u"P:", kMountRemovable, u"secret"), kStatusSuccess);
  ASSERT_EQ(host.MountWithPassword(b, u"Q:", kMountInvisible, u"secret"), kStatusSuccess);
  const std::vector<ListedDisk> listed = ListDisks();
  const std::vector<MountedDisk> disks = Enumerate(host);
  ASSERT_EQ(disks.size(), 2u);
  ASSERT_EQ(listed.size(), 2u);
  for (size_t i = 0; i < disks.size(); ++i) {
    EXPECT_EQ(disks[i].imagePath, listed[i].imagePath);
    EXPECT_EQ(disks[i].mountPoint, listed[i].mountPoint);
    EXPECT_EQ(disks[i].mountFlags, listed[i].mountFlags);
    EXPECT_EQ(std::memcmp(&disks[i].info, &listed[i].info, sizeof(MountedDiskInfo)), 0);
  }
  EXPECT_EQ(disks[0].mountPoint, u"P:");
  EXPECT_EQ(disks[1].imagePath, b);
  EXPECT_EQ(disks[1].info.capacity, 8ull << 20);
}

TEST_F(DeviceHostTest, SeamGivesTheClientsStatusCodes)
{
  DeviceHost& host = PlatformDeviceHost();
  const std::u16string a = MakeImage(u"a.qvi");
  const std::u16string b = MakeImage(u"b.qvi");
  EXPECT_EQ(host.MountWithPassword(a, u"P:", 0, u"wrong"), 0x4005000Bu);
  ASSERT_EQ(host.MountWithPassword(a, u"P:", 0, u"secret"), kStatusSuccess);
  EXPECT_EQ(host.MountWithPassword(b, u"P:", 0, u"secret"), 0x40000008u);
  ASSERT_EQ(host.MountWithPassword(b, u"Q:", 0, u"secret"), kStatusSuccess);

  // Argument checks answer without a call.
  ForgetLastCall();
  EXPECT_EQ(host.DismountAll(2), 0x40060002u);
  EXPECT_EQ(host.DismountMountPoint(u"P:", 2), 0x40060002u);
  EXPECT_EQ(host.DismountById(Guid{}, 2), 0x40060002u);
  EXPECT_EQ(host.FormatVolume(u"P:", 2), 0x40060002u);
  EXPECT_EQ(LastCall(), L"none");

  EXPECT_EQ(host.FormatVolume(u"P:", 1), kStatusSuccess);
  EXPECT_EQ(ReadControlText(kControlLastFormat), L"P: 1");
  EXPECT_EQ(host.FormatVolume(u"R:", 0), 0x4000000Fu);

  WriteControlText(kControlInUse, L"PQ");
  const Guid q = Enumerate(host).at(1).info.diskId;
  EXPECT_EQ(host.DismountAll(0), 0x4006000Du);
  EXPECT_EQ(host.DismountMountPoint(u"P:", 0), 0x4006000Du);
  EXPECT_EQ(host.DismountById(q, 0), 0x4006000Du);
  EXPECT_EQ(Enumerate(host).size(), 2u);
  EXPECT_EQ(host.DismountById(q, 1), kStatusSuccess);
  EXPECT_EQ(LastCall(), L"5 DismountById");
  EXPECT_EQ(host.DismountMountPoint(u"P:", 1), kStatusSuccess);
  EXPECT_EQ(LastCall(), L"4 DismountByMountPoint");
  EXPECT_EQ(host.DismountMountPoint(u"P:", 1), 0x4000000Fu);
  EXPECT_EQ(host.DismountAll(0), kStatusSuccess);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
  EXPECT_TRUE(Enumerate(host).empty());
}

TEST_F(DeviceHostTest, SeamWithoutAServerIsTheMappedGenericFailure)
{
  DeviceHost& host = PlatformDeviceHost();
  const std::u16string image = MakeImage();
  ASSERT_EQ(StopHostService(30000), 0u);
  EXPECT_EQ(host.MountWithPassword(image, u"P:", 0, u"secret"), 0x40000007u);
  EXPECT_EQ(host.DismountAll(0), 0x40000007u);
  EXPECT_EQ(host.DismountMountPoint(u"P:", 0), 0x40000007u);
  EXPECT_EQ(host.DismountById(Guid{}, 0), 0x40000007u);
  EXPECT_EQ(host.FormatVolume(u"P:", 0), 0x40000007u);
  std::vector<MountedDisk> disks(2);
  EXPECT_EQ(host.EnumerateDisks(&disks), 0x40000007u);
  EXPECT_TRUE(disks.empty());

  // Starting the service through the seam brings the host back.
  EXPECT_EQ(host.StartDeviceHostService(), kStatusSuccess);
  EXPECT_EQ(host.DismountAll(0), kStatusSuccess);
  // A running service cannot be started again: the generic failure.
  EXPECT_EQ(host.StartDeviceHostService(), 0x40000007u);
}
