// The reference device host's mount table, over real images and recorded drives.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>

#include "image/image_set.h"
#include "image/layout.h"
#include "support/image_fixture.h"
#include "system/clock.h"
#include "tools/devhost-ref/mount_table.h"

namespace {

// Drives kept in memory; a letter can be taken beforehand, marked in use, or refused.
class RecordedDrives : public HostDrives {
 public:
  bool IsTaken(char16_t letter) override { return taken.count(letter) != 0; }
  StatusCode Attach(char16_t letter, const Guid& diskId) override
  {
    if (refuse != 0) return refuse;
    attached[letter] = diskId;
    return kStatusSuccess;
  }
  void Detach(char16_t letter) override { attached.erase(letter); }
  bool InUse(char16_t letter) override { return inUse.count(letter) != 0; }

  std::set<char16_t> taken;
  std::set<char16_t> inUse;
  std::map<char16_t, Guid> attached;
  StatusCode refuse = 0;
};

class MountTableTest : public testing::Test {
 protected:
  std::u16string MakeImage(const std::u16string& name, const ImageKeys& keys,
                           const ImageCreateParams& params)
  {
    const std::u16string path = dir_.File(name);
    EXPECT_EQ(CreateImage(path, keys, params), kStatusSuccess);
    return path;
  }

  StatusCode Mount(const std::u16string& path, const char16_t* mountPoint, uint32_t flags = 0,
                   const ImageKeys& keys = ImageKeys())
  {
    return table_.Mount(path.c_str(), mountPoint, flags, keys.headerKey.data(), keys.keyLength);
  }

  // True when the image can be opened, that is when no mount holds it open.
  bool Opens(const std::u16string& path, const ImageKeys& keys = ImageKeys())
  {
    ImageHandle* handle = nullptr;
    if (OpenImage(path, keys, &handle) != kStatusSuccess) return false;
    return ImgClose(handle, 0) == kStatusSuccess;
  }

  TempDir dir_;
  RecordedDrives drives_;
  MountTable table_{drives_};
};

}  // namespace

TEST(MountPoint, DriveLetterInEitherCaseWithOrWithoutRoot)
{
  EXPECT_EQ(MountPointLetter(u"X:"), u'X');
  EXPECT_EQ(MountPointLetter(u"p:"), u'P');
  EXPECT_EQ(MountPointLetter(u"Q:\\"), u'Q');
  for (const char16_t* bad : {u"", u"X", u"X:\\a", u"1:", u"XY:", u"X:/", u"\\\\?\\X:"}) {
    EXPECT_EQ(MountPointLetter(bad), 0)
        << std::string(bad, bad + std::char_traits<char16_t>::length(bad));
  }
  EXPECT_EQ(MountPointLetter(nullptr), 0);
}

TEST_F(MountTableTest, MountKeepsTheImageOpenAndDescribesIt)
{
  const ImageKeys keys(kCipherBlowfish, 16);
  const std::u16string path =
      MakeImage(u"a.qvi", keys, CreateParams(4ull << 20, kCreateFixed, ~0ull));
  const uint64_t before = SysUnixTime();
  ASSERT_EQ(Mount(path, u"p:\\", kMountRemovable, keys), kStatusSuccess);
  EXPECT_FALSE(Opens(path, keys));

  ASSERT_EQ(table_.Disks().size(), 1u);
  const MountedDisk& disk = table_.Disks()[0];
  EXPECT_EQ(disk.mountPoint, u"P:");
  EXPECT_EQ(disk.imagePath, path);
  EXPECT_EQ(disk.mountFlags, kMountRemovable);
  EXPECT_EQ(disk.info.reserved0, 72u);
  EXPECT_EQ(disk.info.imageFlags & (kImageFixed | kImageInUse), kImageFixed | kImageInUse);
  EXPECT_GE(disk.info.mountTime, before);
  EXPECT_LE(disk.info.creationTime, disk.info.mountTime);
  EXPECT_GT(disk.info.creationTime, 0u);
  EXPECT_EQ(disk.info.capacity, 4ull << 20);
  EXPECT_EQ(disk.info.volumeSizeLimit, ~0ull);
  EXPECT_EQ(disk.info.algorithm, kCipherBlowfish);
  EXPECT_EQ(disk.info.keyLength, 16u);
  ASSERT_EQ(drives_.attached.count(u'P'), 1u);
  EXPECT_EQ(std::memcmp(&drives_.attached[u'P'], &disk.info.diskId, sizeof(Guid)), 0);

  ASSERT_EQ(table_.DismountByMountPoint(u"P:", false), kStatusSuccess);
  EXPECT_TRUE(drives_.attached.empty());
  EXPECT_TRUE(Opens(path, keys));
}

TEST_F(MountTableTest, ReadOnlyMountLeavesTheImageUnmarked)
{
  const std::u16string path = MakeImage(u"a.qvi", ImageKeys(), CreateParams(4ull << 20));
  ASSERT_EQ(Mount(path, u"P:", kMountReadOnly), kStatusSuccess);
  EXPECT_EQ(table_.Disks()[0].info.imageFlags & (kImageInUse | kPropertyReadOnly), 0u);
}

TEST_F(MountTableTest, ImageFailuresComeBackAsTheContainerGivesThem)
{
  const ImageKeys keys;
  const std::u16string path = MakeImage(u"a.qvi", keys, CreateParams(4ull << 20));
  EXPECT_EQ(Mount(path, u"P:", 0, ImageKeys(kCipherAes, 32, 9)), kImgWrongPassword);
  EXPECT_EQ(Mount(path, u"P:", 0, ImageKeys(kCipherAes, 16)), kImgKeyLengthMismatch);
  EXPECT_EQ(Mount(dir_.File(u"absent.qvi"), u"P:"), kSysNotFound);

  const std::u16string split =
      MakeImage(u"split.qvi", keys, CreateParams(3ull << 20, kCreateFixed, 4096 + (1 << 20)));
  std::filesystem::remove(std::filesystem::path(VolumeFilePath(split, 1)));
  EXPECT_EQ(Mount(split, u"P:"), kImgVolumeMissing);

  MarkNotEncrypted(path);
  EXPECT_EQ(Mount(path, u"P:"), kImgPlainImage);
  EXPECT_TRUE(table_.Disks().empty());
  EXPECT_TRUE(drives_.attached.empty());
}

TEST_F(MountTableTest, SecondMountOfAnImageAndTakenMountPointsAreRefused)
{
  const std::u16string a = MakeImage(u"a.qvi", ImageKeys(), CreateParams(4ull << 20));
  const std::u16string b = MakeImage(u"b.qvi", ImageKeys(), CreateParams(4ull << 20));
  ASSERT_EQ(Mount(a, u"P:"), kStatusSuccess);
  EXPECT_EQ(Mount(a, u"Q:"), kSysAccessDenied);
  EXPECT_EQ(Mount(b, u"P:"), kSysAccessDenied);
  drives_.taken.insert(u'C');
  EXPECT_EQ(Mount(b, u"C:"), kSysAccessDenied);
  EXPECT_EQ(Mount(b, u"CD"), kSysInvalidParameter);
  EXPECT_EQ(table_.Mount(nullptr, u"Q:", 0, nullptr, 0), kSysInvalidParameter);
  EXPECT_EQ(table_.Disks().size(), 1u);
}

TEST_F(MountTableTest, RefusedDriveClosesTheImageAgain)
{
  const std::u16string a = MakeImage(u"a.qvi", ImageKeys(), CreateParams(4ull << 20));
  drives_.refuse = kSysCannotCreate;
  EXPECT_EQ(Mount(a, u"P:"), kSysCannotCreate);
  EXPECT_TRUE(table_.Disks().empty());
  EXPECT_TRUE(Opens(a));
}

TEST_F(MountTableTest, DisksInUseNeedForce)
{
  const std::u16string a = MakeImage(u"a.qvi", ImageKeys(), CreateParams(4ull << 20));
  const std::u16string b = MakeImage(u"b.qvi", ImageKeys(), CreateParams(4ull << 20));
  ASSERT_EQ(Mount(a, u"P:"), kStatusSuccess);
  ASSERT_EQ(Mount(b, u"Q:"), kStatusSuccess);
  drives_.inUse.insert(u'Q');
  const Guid q = table_.Disks()[1].info.diskId;
  EXPECT_EQ(table_.DismountAll(false), kDevVolumeInUse);
  EXPECT_EQ(table_.DismountById(q, false), kDevVolumeInUse);
  EXPECT_EQ(table_.DismountByMountPoint(u"Q:", false), kDevVolumeInUse);
  EXPECT_EQ(table_.Disks().size(), 2u);
  EXPECT_EQ(table_.DismountById(q, true), kStatusSuccess);
  EXPECT_EQ(table_.DismountById(q, true), kSysNotFound);
  EXPECT_EQ(table_.Disks().size(), 1u);
  EXPECT_EQ(table_.DismountAll(false), kStatusSuccess);
  EXPECT_TRUE(table_.Disks().empty());
  EXPECT_TRUE(drives_.attached.empty());
  EXPECT_EQ(table_.DismountByMountPoint(u"P:", true), kSysNotFound);
}

TEST_F(MountTableTest, FormatAcceptsMountedDisksAndTwoSelectors)
{
  const std::u16string a = MakeImage(u"a.qvi", ImageKeys(), CreateParams(4ull << 20));
  ASSERT_EQ(Mount(a, u"P:", kMountForFormatting), kStatusSuccess);
  EXPECT_EQ(table_.Format(u"P:", kFormatSelectorSmall), kStatusSuccess);
  EXPECT_EQ(table_.Format(u"p:\\", kFormatSelectorLarge), kStatusSuccess);
  EXPECT_EQ(table_.Format(u"P:", 2), kSysInvalidParameter);
  EXPECT_EQ(table_.Format(u"Q:", kFormatSelectorSmall), kSysNotFound);
}

TEST_F(MountTableTest, DisksKeepMountOrderAndTheTableClosesThemAtTheEnd)
{
  std::vector<std::u16string> paths;
  {
    MountTable table(drives_);
    for (const char16_t letter : std::u16string(u"SPR")) {
      paths.push_back(
          MakeImage(std::u16string(1, letter) + u".qvi", ImageKeys(), CreateParams(4ull << 20)));
      const char16_t mountPoint[] = {letter, u':', 0};
      const ImageKeys keys;
      ASSERT_EQ(table.Mount(paths.back().c_str(), mountPoint, 0, keys.headerKey.data(), 32), 0u);
    }
    ASSERT_EQ(table.Disks().size(), 3u);
    EXPECT_EQ(table.Disks()[0].mountPoint, u"S:");
    EXPECT_EQ(table.Disks()[1].mountPoint, u"P:");
    EXPECT_EQ(table.Disks()[2].mountPoint, u"R:");
  }
  EXPECT_TRUE(drives_.attached.empty());
  for (const std::u16string& path : paths) EXPECT_TRUE(Opens(path));
}
