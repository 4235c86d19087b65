// "/mount" in a process of its own against the reference device host: the mount dialog
// alone, filled in and confirmed from outside, mounts the image and remembers it among the
// recent images; a wrong password is told in a box and mounts nothing. Either way the
// copy ends with -1.
#include <gtest/gtest.h>

#include <string>

#include "app/startup/ctell_process_win.h"
#include "devhost/host_fixture.h"
#include "res/resource.h"
#include "system/wide_text_win.h"

namespace {

constexpr wchar_t kRecentListKey[] = L"Software\\Pellmora\\Cryptelle\\1.0\\MRU";
constexpr wchar_t kRecentEntriesKey[] =
    L"Software\\Pellmora\\Cryptelle\\1.0\\MRU\\Recent Document List";

std::wstring NewestRecentImage()
{
  wchar_t text[512] = {};
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_CURRENT_USER, kRecentEntriesKey, L"Document1", RRF_RT_REG_SZ, nullptr, text,
                   &size) != ERROR_SUCCESS) {
    return {};
  }
  return text;
}

class CtellMount : public DeviceHostTest {
 protected:
  void SetUp() override
  {
    DeviceHostTest::SetUp();
    RegDeleteTreeW(HKEY_CURRENT_USER, kRecentListKey);
  }

  void TearDown() override
  {
    RegDeleteTreeW(HKEY_CURRENT_USER, kRecentListKey);
    DeviceHostTest::TearDown();
  }

  // Starts "/mount" on `image`, types `password`, picks Q: and presses OK.
  static void MountWith(CtellProcess& mount, const std::u16string& image, const wchar_t* password)
  {
    const HWND dialog = mount.WaitForWindow(kMountDialogCaption, 20000);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_IMAGE_PATH), Wide(image));
    SetDlgItemTextW(dialog, IDC_PASSWORD, password);
    ASSERT_NE(SendDlgItemMessageW(dialog, IDC_MOUNT_POINT, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                                  reinterpret_cast<LPARAM>(L"Q:")),
              CB_ERR);
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  }
};

}  // namespace

TEST_F(CtellMount, TheDialogAloneMountsTheImageAndRemembersIt)
{
  const std::u16string image = MakeImage();
  CtellProcess mount(L"/mount \"" + std::wstring(Wide(image)) + L"\"");
  MountWith(mount, image, L"secret");
  EXPECT_EQ(mount.WaitForExit(20000), kExitMinusOne);

  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].mountPoint, u"Q:");
  EXPECT_EQ(disks[0].imagePath, image);
  EXPECT_EQ(NewestRecentImage(), Wide(image));
}

TEST_F(CtellMount, AWrongPasswordIsToldInABoxAndMountsNothing)
{
  const std::u16string image = MakeImage();
  CtellProcess mount(L"/mount " + std::wstring(Wide(image)));
  MountWith(mount, image, L"not the password");
  const HWND box = mount.WaitForWindow(L"Cannot Mount Virtual Disk Image", 20000);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(mount.WaitForExit(20000), kExitMinusOne);

  EXPECT_TRUE(ListDisks().empty());
  EXPECT_EQ(NewestRecentImage(), L"");
}
