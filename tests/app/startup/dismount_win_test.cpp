// "/dismount" in a process of its own against the reference device host: the one-shot
// reaches the host, with force when "/forced" is the fourth argument, and ends with -1.
// Questions and failures appear in message boxes without an owner; the cases that expect
// one find it by its caption and answer it from outside. A box nobody expects makes its
// case fail once the wait for the process runs out (the process is then terminated).
#include <gtest/gtest.h>

#include <string>

#include "app/startup/ctell_process_win.h"
#include "devhost/host_fixture.h"

namespace {

std::wstring MessageBoxText(HWND box)
{
  return ControlText(box, kMessageBoxTextId);
}

bool StartsWith(const std::wstring& text, const std::wstring& start)
{
  return text.compare(0, start.size(), start) == 0;
}

class CtellDismount : public DeviceHostTest {
 protected:
  // Mounts an image at P: whose volume counts as in use by applications, so that only a
  // forced dismount takes it away without a question.
  void MountDiskInUseAtP()
  {
    const std::u16string image = MakeImage();
    ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
    WriteControlText(kControlInUse, L"P");
    ASSERT_EQ(ListDisks().size(), 1u);
  }
};

}  // namespace

TEST_F(CtellDismount, DismountAllReachesTheHostAndEndsWithMinusOne)
{
  ForgetLastCall();
  EXPECT_EQ(RunCtell(L"/dismount all"), kExitMinusOne);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
}

TEST_F(CtellDismount, AllInUpperCaseDismountsEverything)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"Q:", 0, u"secret"), kStatusSuccess);
  ForgetLastCall();
  EXPECT_EQ(RunCtell(L"/DISMOUNT ALL"), kExitMinusOne);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(CtellDismount, DismountAllForcedTakesAwayADiskInUse)
{
  MountDiskInUseAtP();
  ForgetLastCall();
  EXPECT_EQ(RunCtell(L"/dismount all /forced"), kExitMinusOne);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(CtellDismount, DismountMountPointForcedTakesAwayADiskInUse)
{
  MountDiskInUseAtP();
  ForgetLastCall();
  EXPECT_EQ(RunCtell(L"/dismount P: /FORCED"), kExitMinusOne);
  EXPECT_EQ(LastCall(), L"4 DismountByMountPoint");
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(CtellDismount, DismountMountPointNotInUseNeedsNoForce)
{
  const std::u16string image = MakeImage();
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"R:", 0, u"secret"), kStatusSuccess);
  ForgetLastCall();
  EXPECT_EQ(RunCtell(L"/dismount r:"), kExitMinusOne);
  EXPECT_EQ(LastCall(), L"4 DismountByMountPoint");
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(CtellDismount, AFailedDismountIsToldInABoxWithoutOwner)
{
  CtellProcess dismount(L"/dismount Z:");
  const HWND box = dismount.WaitForWindow(L"Cannot Dismount Virtual Disk", 20000);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
  EXPECT_TRUE(StartsWith(MessageBoxText(box), L"Operation failed.\nError code: 4000000F\n"))
      << MessageBoxText(box);
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(dismount.WaitForExit(10000), kExitMinusOne);
  EXPECT_EQ(LastCall(), L"4 DismountByMountPoint");
}

TEST_F(CtellDismount, ADiskInUseIsAskedAboutAndNoLeavesItMounted)
{
  MountDiskInUseAtP();
  CtellProcess dismount(L"/dismount P:");
  const HWND box = dismount.WaitForWindow(L"Warning", 20000);
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(StartsWith(MessageBoxText(box), L"File system volume on drive P: is still used"))
      << MessageBoxText(box);
  PostMessageW(box, WM_COMMAND, IDNO, 0);
  EXPECT_EQ(dismount.WaitForExit(10000), kExitMinusOne);
  EXPECT_EQ(ListDisks().size(), 1u);
}

TEST_F(CtellDismount, FiveArgumentsAskInsteadOfForcing)
{
  MountDiskInUseAtP();
  CtellProcess dismount(L"/dismount P: /forced more");
  const HWND box = dismount.WaitForWindow(L"Warning", 20000);
  ASSERT_NE(box, nullptr);
  PostMessageW(box, WM_COMMAND, IDYES, 0);
  EXPECT_EQ(dismount.WaitForExit(10000), kExitMinusOne);
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(CtellDismount, DismountAllNotForcedAsksWhenADiskIsInUse)
{
  MountDiskInUseAtP();
  CtellProcess dismount(L"/dismount all");
  const HWND box = dismount.WaitForWindow(L"Warning", 20000);
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(StartsWith(MessageBoxText(box), L"Some virtual disks are still used"))
      << MessageBoxText(box);
  PostMessageW(box, WM_COMMAND, IDNO, 0);
  EXPECT_EQ(dismount.WaitForExit(10000), kExitMinusOne);
  EXPECT_EQ(ListDisks().size(), 1u);
}
