// "/dismount" in a process of its own against the reference device host: the one-shot
// reaches the host, with force when "/forced" is the fourth argument, and ends with -1.
// Only cases that end without a question or a failure message are run here: ctell.exe
// shows those in message boxes that nobody could answer (the decisions behind them are
// tested with the scripted device host).
#include <gtest/gtest.h>

#include "app/startup/ctell_process_win.h"
#include "devhost/host_fixture.h"

namespace {

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
