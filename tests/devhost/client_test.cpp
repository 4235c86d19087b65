// The client operations' argument checks and failure codes.
#include <windows.h>

#include <utility>

#include "devhost/binding_win.h"
#include "devhost_rpc.h"
#include "host_fixture.h"
#include "image/image_set.h"
#include "system/memory.h"
#include "system/wide_text_win.h"

namespace {

StatusCode CountDisk(const char16_t*, const char16_t*, uint32_t, const MountedDiskInfo*,
                     void* context)
{
  ++*static_cast<int*>(context);
  return kStatusSuccess;
}

}  // namespace

TEST_F(DeviceHostTest, InvalidArgumentsAreRefusedWithoutACall)
{
  const std::u16string image = MakeImage();
  const Guid id{};
  ForgetLastCall();
  EXPECT_EQ(DevDismountAll(2), 0x40060002u);
  EXPECT_EQ(DevDismountMountPoint(nullptr, 0), 0x40060002u);
  EXPECT_EQ(DevDismountMountPoint(u"P:", 2), 0x40060002u);
  EXPECT_EQ(DevDismountById(nullptr, 1), 0x40060002u);
  EXPECT_EQ(DevDismountById(&id, 2), 0x40060002u);
  EXPECT_EQ(DevFormatVolume(nullptr, 0), 0x40060002u);
  EXPECT_EQ(DevFormatVolume(u"P:", 2), 0x40060002u);
  EXPECT_EQ(DevEnumerateDisks(nullptr, nullptr), 0x40060002u);
  EXPECT_EQ(ImgMountWithPassword(nullptr, u"P:", 0, u"secret"), 0x40060002u);
  EXPECT_EQ(LastCall(), L"none");
}

TEST_F(DeviceHostTest, DismountAllWithForcedTwoNeedsNoServer)
{
  ASSERT_EQ(StopHostService(30000), 0u);
  EXPECT_EQ(DevDismountAll(2), 0x40060002u);
  // The same call with a valid argument does reach for the server.
  EXPECT_EQ(DevDismountAll(0), 0x40000007u);
}

TEST_F(DeviceHostTest, NoServerIsTheMappedGenericFailure)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(StopHostService(30000), 0u);
  // Binding succeeds without a server; the call raises 1722, which is not in the map.
  const Guid id{};
  int calls = 0;
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), 0x40000007u);
  EXPECT_EQ(DevDismountAll(0), 0x40000007u);
  EXPECT_EQ(DevDismountMountPoint(u"P:", 0), 0x40000007u);
  EXPECT_EQ(DevDismountById(&id, 0), 0x40000007u);
  EXPECT_EQ(DevFormatVolume(u"P:", 0), 0x40000007u);
  EXPECT_EQ(DevEnumerateDisks(CountDisk, &calls), 0x40000007u);
  EXPECT_EQ(calls, 0);
}

TEST_F(DeviceHostTest, WrongPasswordIsAnsweredByTheHost)
{
  const std::u16string image = MakeImage();
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"Secret"), 0x4005000Bu);
  EXPECT_EQ(LastCall(), L"1 MountImage");
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(DeviceHostTest, PlainImageIsNotAValidImage)
{
  const std::u16string image = MakeImage();
  MarkNotEncrypted(image);
  ForgetLastCall();
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), 0x40060009u);
  EXPECT_EQ(LastCall(), L"none");
  // Asked directly, the host itself refuses the plain image with the container's code.
  uint8_t key[32] = {};
  const StatusCode hostAnswer = CallDeviceHost([&](RPC_BINDING_HANDLE binding) {
    return MountImage(binding, Wide(image), L"P:", 0, key, sizeof key);
  });
  EXPECT_EQ(hostAnswer, 0x40050017u);
}

TEST_F(DeviceHostTest, MissingImageFileFailsBeforeTheCall)
{
  ForgetLastCall();
  EXPECT_EQ(ImgMountWithPassword(dir_.File(u"absent.qvi").c_str(), u"P:", 0, u"secret"),
            0x4000000Fu);
  EXPECT_EQ(LastCall(), L"none");
}

// Out of memory before the call: the key information's unit buffer is the image
// container's (0x40050005), the key buffer is the client's own (0x40060005). Neither
// reaches the host, and neither leaves a block allocated.
TEST_F(DeviceHostTest, OutOfMemoryFailsBeforeTheCallWithTheCodeOfItsLayer)
{
  const std::u16string image = MakeImage();
  ForgetLastCall();
  for (const auto& [allocation, expected] : {std::pair<uint64_t, StatusCode>{1, 0x40050005u},
                                             std::pair<uint64_t, StatusCode>{2, 0x40060005u}}) {
    SysAllocationFaults faults;
    faults.failingAllocation = allocation;
    SysSetAllocationFaults(&faults);
    const StatusCode status = ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret");
    SysSetAllocationFaults(nullptr);
    EXPECT_EQ(status, expected) << "allocation " << allocation;
    EXPECT_EQ(faults.allocationsSeen, allocation);
    EXPECT_EQ(faults.blocksLive, 0u);
  }
  EXPECT_EQ(LastCall(), L"none");
}

TEST_F(DeviceHostTest, MissingVolumeFileIsAnsweredByTheHost)
{
  // A fixed image of 3 MiB in volume files of 1 MiB of data each.
  const std::u16string image = dir_.File(u"split.qvi");
  ASSERT_EQ(CreatePasswordImage(image, u"secret",
                                CreateParams(3ull << 20, kCreateFixed, 4096 + (1 << 20))),
            kStatusSuccess);
  const std::u16string second = VolumeFilePath(image, 1);
  ASSERT_TRUE(Exists(second));
  std::filesystem::remove(std::filesystem::path(second));
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), 0x4005000Cu);
  EXPECT_EQ(LastCall(), L"1 MountImage");
}

// An empty password gets no check of its own in the client: it goes to the key
// derivation, which refuses a password of no characters, so nothing is sent.
TEST_F(DeviceHostTest, EmptyPasswordGoesToTheDerivation)
{
  const std::u16string image = MakeImage();
  ForgetLastCall();
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u""), 0x40030002u);
  EXPECT_EQ(LastCall(), L"none");
}

TEST_F(DeviceHostTest, SecondMountOfTheSameImageIsAccessDenied)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"Q:", 0, u"secret"), 0x40000008u);
  EXPECT_EQ(ListDisks().size(), 1u);
}

TEST_F(DeviceHostTest, TakenMountPointIsRefused)
{
  const std::u16string first = MakeImage(u"first.qvi");
  const std::u16string second = MakeImage(u"second.qvi");
  ASSERT_EQ(ImgMountWithPassword(first.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
  EXPECT_EQ(ImgMountWithPassword(second.c_str(), u"P:", 0, u"secret"), 0x40000008u);
  // A drive letter of the system is taken as well.
  EXPECT_EQ(ImgMountWithPassword(second.c_str(), u"C:", 0, u"secret"), 0x40000008u);
  EXPECT_EQ(ListDisks().size(), 1u);
}

TEST_F(DeviceHostTest, DriverNotStartedIsAnsweredUntilTheFaultIsSpent)
{
  const std::u16string image = MakeImage();
  WriteControlNumber(kControlNotStartedCalls, 1);
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), 0x4006000Bu);
  EXPECT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
}
