// Tests against the reference device host running as the service "pdevhost".
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "crypto/cipher.h"
#include "crypto/keys.h"
#include "devhost/device_host.h"
#include "support/image_fixture.h"
#include "tools/devhost-ref/host_control_win.h"
#include "tools/devhost-ref/service_control_win.h"

// Creates an encrypted image whose header key comes from `password`, as creation does.
inline StatusCode CreatePasswordImage(const std::u16string& path, const std::u16string& password,
                                      const ImageCreateParams& params,
                                      uint32_t algorithm = kCipherAes, uint32_t keyLength = 32)
{
  ImageKeys keys(algorithm, keyLength);
  const StatusCode status =
      CryptoDeriveKey(password.data(), static_cast<uint32_t>(password.size()), keys.identity.data(),
                      64, keys.headerKey.data(), keyLength);
  return IsFailure(status) ? status : CreateImage(path, keys, params);
}

// One disk as the enumeration passed it on.
struct ListedDisk {
  std::u16string imagePath;
  std::u16string mountPoint;
  uint32_t mountFlags;
  MountedDiskInfo info;
};

inline StatusCode CollectDisk(const char16_t* imagePath, const char16_t* mountPoint,
                              uint32_t mountFlags, const MountedDiskInfo* info, void* context)
{
  static_cast<std::vector<ListedDisk>*>(context)->push_back(
      {imagePath, mountPoint, mountFlags, *info});
  return kStatusSuccess;
}

inline std::vector<ListedDisk> ListDisks()
{
  std::vector<ListedDisk> disks;
  EXPECT_EQ(DevEnumerateDisks(CollectDisk, &disks), kStatusSuccess);
  return disks;
}

// Brings the reference host to the state every case starts from: the service running, no
// disk mounted and no fault scripted.
inline testing::AssertionResult PrepareReferenceHost()
{
  ClearControlValues();
  if (StartHostService(30000) != 0) {
    return testing::AssertionFailure() << "the service \"pdevhost\" does not start; install it "
                                          "with scripts/devhost-service.sh install";
  }
  const StatusCode status = DevDismountAll(1);
  if (status != kStatusSuccess) {
    return testing::AssertionFailure()
           << "the host does not dismount everything: 0x" << std::hex << status;
  }
  return testing::AssertionSuccess();
}

// Leaves the host as a case found it: nothing mounted, no fault scripted.
inline void ReleaseReferenceHost()
{
  DevDismountAll(1);
  ClearControlValues();
}

// An 8 MiB dynamic AES-256 image with the password "secret", named `name` inside `dir`.
inline std::u16string MakeSecretImage(const TempDir& dir, const std::u16string& name)
{
  const std::u16string path = dir.File(name);
  EXPECT_EQ(CreatePasswordImage(path, u"secret", CreateParams(8ull << 20)), kStatusSuccess);
  return path;
}

// Marks the record of the last call so that a test can tell whether a call was made.
inline void ForgetLastCall()
{
  WriteControlText(kControlLastCall, L"none");
}

inline std::wstring LastCall()
{
  return ReadControlText(kControlLastCall);
}

// Each case starts with the service running, no disk mounted and no fault scripted.
class DeviceHostTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(PrepareReferenceHost()); }
  void TearDown() override { ReleaseReferenceHost(); }

  // An 8 MiB dynamic AES image with the password "secret", named `name`.
  std::u16string MakeImage(const std::u16string& name = u"disk.qvi")
  {
    return MakeSecretImage(dir_, name);
  }

  TempDir dir_;
};
