// The wizard's progress page against the reference device host over real local RPC: the
// new image is mounted for formatting at the highest free letter, formatted with the
// selector of its capacity and dismounted forced, and it opens with the chosen password,
// cipher and key length; a full disk ends with the temporary mount's failure.
#include <gtest/gtest.h>

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "devhost/device_host_api.h"
#include "devhost/mounted_disk.h"
#include "dialogs/password_image.h"
#include "progress_run.h"
#include "system/file.h"
#include "system/wide_text_win.h"
#include "tools/devhost-ref/host_control_win.h"
#include "tools/devhost-ref/service_control_win.h"

namespace {

// The system's own device host, with every call the worker makes written down, and the
// disks the host lists at the moment it is asked to format.
class CRecordingDeviceHost final : public DeviceHost {
 public:
  CRecordingDeviceHost() : previous_(ReplaceDeviceHost(this)) {}
  ~CRecordingDeviceHost() override { ReplaceDeviceHost(previous_); }
  CRecordingDeviceHost(const CRecordingDeviceHost&) = delete;
  CRecordingDeviceHost& operator=(const CRecordingDeviceHost&) = delete;

  std::vector<std::wstring> Calls() const
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    return calls_;
  }
  std::vector<MountedDisk> DisksAtFormat() const
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    return disksAtFormat_;
  }

  StatusCode MountWithPassword(const std::u16string& imagePath, const std::u16string& mountPoint,
                               uint32_t mountFlags, const std::u16string& password) override
  {
    const StatusCode status = Host().MountWithPassword(imagePath, mountPoint, mountFlags, password);
    Record(L"mount " + std::wstring(Wide(mountPoint)) + L" flags " + std::to_wstring(mountFlags),
           status);
    return status;
  }
  StatusCode DismountAll(uint32_t forced) override { return Host().DismountAll(forced); }
  StatusCode DismountMountPoint(const std::u16string& mountPoint, uint32_t forced) override
  {
    const StatusCode status = Host().DismountMountPoint(mountPoint, forced);
    Record(L"dismount " + std::wstring(Wide(mountPoint)) + L" forced " + std::to_wstring(forced),
           status);
    return status;
  }
  StatusCode DismountById(const Guid& diskId, uint32_t forced) override
  {
    return Host().DismountById(diskId, forced);
  }
  StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) override
  {
    return Host().EnumerateDisks(disks);
  }
  StatusCode FormatVolume(const std::u16string& mountPoint, uint32_t selector) override
  {
    std::vector<MountedDisk> disks;
    Host().EnumerateDisks(&disks);
    const StatusCode status = Host().FormatVolume(mountPoint, selector);
    Record(L"format " + std::wstring(Wide(mountPoint)) + L" selector " + std::to_wstring(selector),
           status);
    const std::lock_guard<std::mutex> lock(mutex_);
    disksAtFormat_ = disks;
    return status;
  }
  StatusCode StartDeviceHostService() override { return Host().StartDeviceHostService(); }

 private:
  static DeviceHost& Host() { return PlatformDeviceHost(); }
  void Record(const std::wstring& call, StatusCode status)
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    calls_.push_back(call + L" -> " + std::to_wstring(status));
  }

  DeviceHost* previous_;
  mutable std::mutex mutex_;
  std::vector<std::wstring> calls_;
  std::vector<MountedDisk> disksAtFormat_;
};

class CreationDeviceHostTest : public ProgressPageTest {
 protected:
  void SetUp() override
  {
    ClearControlValues();
    ASSERT_EQ(StartHostService(30000), 0u)
        << "the service \"pdevhost\" does not start; install it with "
           "scripts/devhost-service.sh install";
    ASSERT_EQ(PlatformDeviceHost().DismountAll(1), kStatusSuccess);
    mountPoint_ = std::wstring(Wide(ExpectedMountPoint()));
    ASSERT_FALSE(mountPoint_.empty());
  }
  void TearDown() override
  {
    PlatformDeviceHost().DismountAll(1);
    ClearControlValues();
  }

  // The new image's properties, opened with the wizard's password.
  ImageProperties OpenedProperties()
  {
    ImageProperties properties{};
    properties.recordSize = sizeof(properties);
    ImageHandle* image = nullptr;
    EXPECT_EQ(OpenImageWithPassword(Path(), wizard_.Request().password, &image), kStatusSuccess);
    if (image == nullptr) return properties;
    EXPECT_EQ(ImgGetProperties(image, &properties), kStatusSuccess);
    EXPECT_EQ(ImgClose(image, 0), kStatusSuccess);
    return properties;
  }

  // The worker's three device host calls when all went well.
  std::vector<std::wstring> ReadyingCalls(int selector) const
  {
    return {L"mount " + mountPoint_ + L" flags 8 -> 0",
            L"format " + mountPoint_ + L" selector " + std::to_wstring(selector) + L" -> 0",
            L"dismount " + mountPoint_ + L" forced 1 -> 0"};
  }

  std::vector<MountedDisk> DisksNow() const
  {
    std::vector<MountedDisk> disks;
    EXPECT_EQ(PlatformDeviceHost().EnumerateDisks(&disks), kStatusSuccess);
    return disks;
  }

  CRecordingDeviceHost host_;
  std::wstring mountPoint_;
};

}  // namespace

TEST_F(CreationDeviceHostTest, AnAesImageIsMountedForFormattingFormattedDismountedAndOpens)
{
  Open();
  ASSERT_TRUE(WaitForSummary(std::chrono::seconds(30)));

  EXPECT_EQ(host_.Calls(), ReadyingCalls(0));
  const std::vector<MountedDisk> disks = host_.DisksAtFormat();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].imagePath, Path());
  EXPECT_EQ(std::wstring(Wide(disks[0].mountPoint)).substr(0, 2), mountPoint_);
  EXPECT_EQ(disks[0].mountFlags, kMountForFormatting);
  EXPECT_EQ(ReadControlText(kControlLastFormat), mountPoint_ + L" 0");
  EXPECT_TRUE(DisksNow().empty());
  EXPECT_TRUE(prompts_.Prompts().empty());

  const ImageProperties properties = OpenedProperties();
  EXPECT_EQ(properties.algorithm, kCipherAes);
  EXPECT_EQ(properties.keyLength, 32u);
  EXPECT_EQ(properties.capacity, 8 * kMegabyte);
}

TEST_F(CreationDeviceHostTest, AFourGigabyteBlowfishImageIsFormattedWithTheLargeSelector)
{
  NewImageRequest& request = wizard_.Request();
  request.capacity = 4 * kGigabyte;
  request.algorithm = kCipherBlowfish;
  request.keyBits = 448;
  request.fatCompatible = 1;
  Open();
  ASSERT_TRUE(WaitForSummary(std::chrono::seconds(30)));

  EXPECT_EQ(host_.Calls(), ReadyingCalls(1));
  EXPECT_EQ(ReadControlText(kControlLastFormat), mountPoint_ + L" 1");
  const ImageProperties properties = OpenedProperties();
  EXPECT_EQ(properties.algorithm, kCipherBlowfish);
  EXPECT_EQ(properties.keyLength, 56u);
  EXPECT_EQ(properties.capacity, 4 * kGigabyte);
  EXPECT_EQ(properties.volumeSizeLimit, kFileSystemLimit);
}

TEST_F(CreationDeviceHostTest, AFullDiskEndsWithTheTemporaryMountsFailureAndClosesTheWizard)
{
  wizard_.Request().fixedSize = 1;
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 2 * kMegabyte;
  SysSetFileFaults(&faults);
  prompts_.Answer(kIdOk);
  Open();
  const bool closed = WaitUntilClosed(std::chrono::seconds(30));
  SysSetFileFaults(nullptr);
  ASSERT_TRUE(closed);

  // The creation ran out of room and removed its file; the mount that follows finds no
  // image, and its failure is the one reported.
  ASSERT_EQ(host_.Calls().size(), 1u);
  EXPECT_EQ(host_.Calls()[0],
            L"mount " + mountPoint_ + L" flags 8 -> " + std::to_wstring(kSysNotFound));
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text,
            u"Operation failed.\nError code: 4000000F\n\nPlease "
            u"contact technical support if the problem persists.");
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Error");
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(Path())));
  EXPECT_TRUE(DisksNow().empty());
}
