// Mount, enumerate, format and dismount across the client and the reference host.
#include <windows.h>

#include <cstring>

#include "host_fixture.h"
#include "system/clock.h"

namespace {

bool SameId(const Guid& a, const Guid& b)
{
  return std::memcmp(&a, &b, sizeof a) == 0;
}

bool DriveExists(const wchar_t* root)
{
  return GetFileAttributesW(root) != INVALID_FILE_ATTRIBUTES;
}

// The properties of the image as its own open reports them.
ImageProperties PropertiesOf(const std::u16string& path, const std::u16string& password,
                             uint32_t keyLength, uint32_t openFlags)
{
  ImageKeyInfo keyInfo{sizeof keyInfo};
  EXPECT_EQ(ImgGetKeyInfo(path.c_str(), &keyInfo), kStatusSuccess);
  std::vector<uint8_t> key(keyLength);
  EXPECT_EQ(CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()),
                            keyInfo.identityBlock, 64, key.data(), keyLength),
            kStatusSuccess);
  ImageHandle* handle = nullptr;
  ImageProperties properties{sizeof properties};
  EXPECT_EQ(ImgOpen(path.c_str(), openFlags, key.data(), keyLength, &handle), kStatusSuccess);
  if (handle != nullptr) {
    EXPECT_EQ(ImgGetProperties(handle, &properties), kStatusSuccess);
    EXPECT_EQ(ImgClose(handle, 0), kStatusSuccess);
  }
  return properties;
}

}  // namespace

TEST_F(DeviceHostTest, EmptyListPassesNothing)
{
  std::vector<ListedDisk> disks;
  EXPECT_EQ(DevEnumerateDisks(CollectDisk, &disks), kStatusSuccess);
  EXPECT_TRUE(disks.empty());
}

TEST_F(DeviceHostTest, MountedDisksAreListedWithEveryField)
{
  const std::u16string dynamic = dir_.File(u"dynamic.qvi");
  const std::u16string fixed = dir_.File(u"fixed.qvi");
  ASSERT_EQ(CreatePasswordImage(dynamic, u"secret", CreateParams(8ull << 20, 0, ~0ull)), 0u);
  ASSERT_EQ(CreatePasswordImage(fixed, u"other", CreateParams(4ull << 20, kCreateFixed, 0),
                                kCipherBlowfish, 16),
            0u);
  // The hosts's opens mark the images as they would be marked by ours.
  const ImageProperties dynamicProperties = PropertiesOf(dynamic, u"secret", 32, 0);
  const ImageProperties fixedProperties = PropertiesOf(fixed, u"other", 16, kOpenReadOnly);

  const uint64_t before = SysUnixTime();
  ASSERT_EQ(ImgMountWithPassword(dynamic.c_str(), u"P:", kMountRemovable, u"secret"), 0u);
  ASSERT_EQ(ImgMountWithPassword(fixed.c_str(), u"Q:", kMountReadOnly | kMountInvisible, u"other"),
            0u);
  const uint64_t after = SysUnixTime();

  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 2u);
  const ListedDisk& p = disks[0];
  EXPECT_EQ(p.imagePath, dynamic);
  EXPECT_EQ(p.mountPoint, u"P:");
  EXPECT_EQ(p.mountFlags, kMountRemovable);
  EXPECT_EQ(p.info.imageFlags, dynamicProperties.flags);
  EXPECT_EQ(p.info.imageFlags & 1u, 0u);
  EXPECT_EQ(p.info.creationTime, dynamicProperties.creationTime);
  EXPECT_GE(p.info.mountTime, before);
  EXPECT_LE(p.info.mountTime, after);
  EXPECT_EQ(p.info.capacity, 8ull << 20);
  EXPECT_EQ(p.info.volumeSizeLimit, ~0ull);
  EXPECT_EQ(p.info.algorithm, kCipherAes);
  EXPECT_EQ(p.info.keyLength, 32u);

  const ListedDisk& q = disks[1];
  EXPECT_EQ(q.imagePath, fixed);
  EXPECT_EQ(q.mountPoint, u"Q:");
  EXPECT_EQ(q.mountFlags, kMountReadOnly | kMountInvisible);
  EXPECT_EQ(q.info.imageFlags, fixedProperties.flags & ~kPropertyReadOnly);
  EXPECT_EQ(q.info.imageFlags & 1u, 1u);
  EXPECT_EQ(q.info.creationTime, fixedProperties.creationTime);
  EXPECT_GE(q.info.mountTime, before);
  EXPECT_LE(q.info.mountTime, after);
  EXPECT_EQ(q.info.capacity, 4ull << 20);
  EXPECT_EQ(q.info.volumeSizeLimit, 0u);
  EXPECT_EQ(q.info.algorithm, kCipherBlowfish);
  EXPECT_EQ(q.info.keyLength, 16u);

  const Guid none{};
  EXPECT_FALSE(SameId(p.info.diskId, none));
  EXPECT_FALSE(SameId(p.info.diskId, q.info.diskId));
}

TEST_F(DeviceHostTest, MountedDiskIsADriveWithFreeSpace)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), 0u);
  ULARGE_INTEGER available{}, total{}, free{};
  EXPECT_TRUE(GetDiskFreeSpaceExW(L"P:\\", &available, &total, &free));
  EXPECT_GT(total.QuadPart, 0u);
  HANDLE file = CreateFileW(L"P:\\note.txt", GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  EXPECT_NE(file, INVALID_HANDLE_VALUE);
  CloseHandle(file);
  EXPECT_TRUE(DriveExists(L"P:\\note.txt"));

  ASSERT_EQ(DevDismountMountPoint(u"P:", 0), 0u);
  EXPECT_FALSE(DriveExists(L"P:\\"));
}

TEST_F(DeviceHostTest, DismountByIdByMountPointAndAll)
{
  const std::u16string a = MakeImage(u"a.qvi");
  const std::u16string b = MakeImage(u"b.qvi");
  const std::u16string c = MakeImage(u"c.qvi");
  const std::u16string d = MakeImage(u"d.qvi");
  ASSERT_EQ(ImgMountWithPassword(a.c_str(), u"P:", 0, u"secret"), 0u);
  ASSERT_EQ(ImgMountWithPassword(b.c_str(), u"Q:", 0, u"secret"), 0u);
  ASSERT_EQ(ImgMountWithPassword(c.c_str(), u"R:", 0, u"secret"), 0u);
  ASSERT_EQ(ImgMountWithPassword(d.c_str(), u"S:", 0, u"secret"), 0u);
  std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 4u);

  ASSERT_EQ(DevDismountById(&disks[1].info.diskId, 0), 0u);
  disks = ListDisks();
  ASSERT_EQ(disks.size(), 3u);
  EXPECT_EQ(disks[0].mountPoint, u"P:");
  EXPECT_EQ(disks[1].mountPoint, u"R:");
  EXPECT_EQ(disks[2].mountPoint, u"S:");
  // A disk that is gone is not found again.
  const Guid gone = disks[0].info.diskId;
  ASSERT_EQ(DevDismountMountPoint(u"P:", 1), 0u);
  EXPECT_EQ(DevDismountById(&gone, 0), 0x4000000Fu);
  EXPECT_EQ(DevDismountMountPoint(u"P:", 0), 0x4000000Fu);
  EXPECT_EQ(ListDisks().size(), 2u);

  ASSERT_EQ(DevDismountAll(0), 0u);
  EXPECT_TRUE(ListDisks().empty());
  EXPECT_FALSE(DriveExists(L"R:\\"));
  // The host has closed every image: each opens again.
  for (const std::u16string& path : {a, b, c, d}) {
    EXPECT_EQ(PropertiesOf(path, u"secret", 32, 0).capacity, 8ull << 20);
  }
}

TEST_F(DeviceHostTest, DiskInUseIsDismountedOnlyWhenForced)
{
  const std::u16string a = MakeImage(u"a.qvi");
  const std::u16string b = MakeImage(u"b.qvi");
  ASSERT_EQ(ImgMountWithPassword(a.c_str(), u"P:", 0, u"secret"), 0u);
  ASSERT_EQ(ImgMountWithPassword(b.c_str(), u"Q:", 0, u"secret"), 0u);
  WriteControlText(kControlInUse, L"Q");
  const Guid q = ListDisks().at(1).info.diskId;

  EXPECT_EQ(DevDismountMountPoint(u"Q:", 0), 0x4006000Du);
  EXPECT_EQ(DevDismountById(&q, 0), 0x4006000Du);
  EXPECT_EQ(DevDismountAll(0), 0x4006000Du);
  EXPECT_EQ(ListDisks().size(), 2u);
  // A disk that is not in use goes without force.
  EXPECT_EQ(DevDismountMountPoint(u"P:", 0), 0u);

  EXPECT_EQ(DevDismountById(&q, 1), 0u);
  EXPECT_TRUE(ListDisks().empty());

  ASSERT_EQ(ImgMountWithPassword(b.c_str(), u"Q:", 0, u"secret"), 0u);
  EXPECT_EQ(DevDismountAll(1), 0u);
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(DeviceHostTest, FormatRequestCarriesTheSelector)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", kMountForFormatting, u"secret"), 0u);
  EXPECT_EQ(DevFormatVolume(u"P:", 0), 0u);
  EXPECT_EQ(ReadControlText(kControlLastFormat), L"P: 0");
  EXPECT_EQ(DevFormatVolume(u"P:", 1), 0u);
  EXPECT_EQ(ReadControlText(kControlLastFormat), L"P: 1");
  EXPECT_EQ(LastCall(), L"9 FormatVolume");
  // A mount point without a disk is not formatted.
  EXPECT_EQ(DevFormatVolume(u"Q:", 0), 0x4000000Fu);
  EXPECT_EQ(ReadControlText(kControlLastFormat), L"P: 1");
}
