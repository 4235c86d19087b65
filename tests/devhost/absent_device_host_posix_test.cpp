// Without a device host service (POSIX) every call is unreachable and there is no service.
#include <gtest/gtest.h>

#include "devhost/device_host_api.h"

TEST(AbsentDeviceHostTest, EveryCallIsUnreachable)
{
  DeviceHost& host = PlatformDeviceHost();
  EXPECT_EQ(host.MountWithPassword(u"/tmp/disk.qvi", u"P:", 0, u"secret"), 0x4006000Au);
  EXPECT_EQ(host.DismountAll(0), 0x4006000Au);
  EXPECT_EQ(host.DismountMountPoint(u"P:", 1), 0x4006000Au);
  EXPECT_EQ(host.DismountById(Guid{}, 0), 0x4006000Au);
  EXPECT_EQ(host.FormatVolume(u"P:", 0), 0x4006000Au);
  std::vector<MountedDisk> disks(2);
  EXPECT_EQ(host.EnumerateDisks(&disks), 0x4006000Au);
  EXPECT_TRUE(disks.empty());
}

TEST(AbsentDeviceHostTest, TheServiceDoesNotExist)
{
  EXPECT_EQ(PlatformDeviceHost().StartDeviceHostService(), 0x40000013u);
}
