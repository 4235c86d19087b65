// Dismounting all disks or one mount point against the reference device host: the host
// refuses a dismount that is not forced while a disk's letter is listed as in use, so what
// stays mounted tells whether a call went out forced.
#include "app/dismount_flows.h"

#include "devhost/host_screen_fixture.h"
#include "settings/options.h"

namespace {

const std::u16string kDisksInUse =
    u"Some virtual disks are still used by applications. If you dismount them, data loss may "
    u"occur.\nPlease close all applications that use mounted virtual disks before dismounting "
    u"them.\n\nProceed with dismount?";

std::u16string DiskInUse(const std::u16string& mountPoint)
{
  return u"File system volume on drive " + mountPoint +
         u" is still used by applications. If you dismount it, data loss may occur.\nPlease "
         u"close all applications that use this disk before dismounting it.\n\nProceed with "
         u"dismount?";
}

std::u16string OperationFailed(const std::u16string& code)
{
  return u"Operation failed.\nError code: " + code +
         u"\n\nPlease contact technical support if the problem persists.";
}

void ExpectPrompt(const CScriptedMessageBoxes::Prompt& prompt, const std::u16string& text,
                  const std::u16string& caption, uint32_t flags)
{
  EXPECT_EQ(prompt.text, text);
  EXPECT_EQ(prompt.caption, caption);
  EXPECT_EQ(prompt.flags, flags);
}

std::vector<std::u16string> MountedPoints()
{
  std::vector<std::u16string> points;
  for (const ListedDisk& disk : ListDisks()) points.push_back(disk.mountPoint);
  return points;
}

using Points = std::vector<std::u16string>;

class DismountFlowHostTest : public HostScreenTest {
 protected:
  // Two disks, at P: and Q:.
  void SetUp() override
  {
    HostScreenTest::SetUp();
    const std::u16string first = MakeImage(u"first.qvi");
    const std::u16string second = MakeImage(u"second.qvi");
    ASSERT_EQ(ImgMountWithPassword(first.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
    ASSERT_EQ(ImgMountWithPassword(second.c_str(), u"Q:", 0, u"secret"), kStatusSuccess);
    ASSERT_EQ(MountedPoints(), (Points{u"P:", u"Q:"}));
  }

  static void SetIgnoreOpenFiles(uint32_t value)
  {
    GeneralOptions options;
    options.ignoreOpenFiles = value;
    ASSERT_EQ(WriteGeneralOptions(options), kStatusSuccess);
  }

  // The owner every flow gets; only its identity matters.
  WindowRef Owner() { return &ownerObject_; }

 private:
  int ownerObject_ = 0;
};

TEST_F(DismountFlowHostTest, DismountAllWithoutDisksInUseIsSilent)
{
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
  EXPECT_TRUE(MountedPoints().empty());
  EXPECT_TRUE(prompts_.Prompts().empty());
}

TEST_F(DismountFlowHostTest, DismountAllAsksFirstWhenADiskIsInUseAndNoKeepsEveryDisk)
{
  WriteControlText(kControlInUse, L"Q");
  prompts_.Answer(kIdNo);
  DismountAllFlow(Owner(), 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].owner, Owner());
  ExpectPrompt(prompts_.Prompts()[0], kDisksInUse, u"Warning", 0x34);
  EXPECT_EQ(MountedPoints(), (Points{u"P:", u"Q:"}));
}

TEST_F(DismountFlowHostTest, DismountAllYesDismountsForced)
{
  WriteControlText(kControlInUse, L"Q");
  prompts_.Answer(kIdYes);
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
  EXPECT_TRUE(MountedPoints().empty());
}

TEST_F(DismountFlowHostTest, DismountAllWithIgnoreOpenFilesForcesWithoutAQuestion)
{
  SetIgnoreOpenFiles(1);
  WriteControlText(kControlInUse, L"PQ");
  DismountAllFlow(Owner(), 0);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_TRUE(MountedPoints().empty());
}

TEST_F(DismountFlowHostTest, ForcedDismountAllGoesOutForcedAtOnce)
{
  WriteControlText(kControlInUse, L"P");
  DismountAllFlow(Owner(), 1);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_TRUE(MountedPoints().empty());
}

TEST_F(DismountFlowHostTest, DismountAllWhenTheDriverIsNotStartedShowsNothing)
{
  WriteControlNumber(kControlNotStartedCalls, 1);
  DismountAllFlow(Owner(), 0);
  EXPECT_EQ(LastCall(), L"3 DismountAll");
  EXPECT_EQ(ReadControlNumber(kControlNotStartedCalls), 0u);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_EQ(MountedPoints(), (Points{u"P:", u"Q:"}));
}

// Only "driver not started" is silent: with the service stopped nobody answers, and the
// RPC failure is shown.
TEST_F(DismountFlowHostTest, DismountAllWithTheServiceStoppedShowsTheFailure)
{
  ASSERT_EQ(StopHostService(30000), 0u);
  prompts_.Answer(kIdOk);
  DismountAllFlow(nullptr, 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].owner, nullptr);
  ExpectPrompt(prompts_.Prompts()[0], OperationFailed(u"40000007"), u"Cannot Dismount Virtual Disk",
               0x10);
}

TEST_F(DismountFlowHostTest, DismountMountPointDismountsThatDiskOnly)
{
  DismountMountPointFlow(Owner(), u"P:", 0);
  EXPECT_EQ(LastCall(), L"4 DismountByMountPoint");
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_EQ(MountedPoints(), Points{u"Q:"});
}

TEST_F(DismountFlowHostTest, DismountMountPointInUseAsksEvenWithIgnoreOpenFilesAndYesForces)
{
  SetIgnoreOpenFiles(1);
  WriteControlText(kControlInUse, L"P");
  prompts_.Answer(kIdYes);
  DismountMountPointFlow(Owner(), u"P:", 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].owner, Owner());
  ExpectPrompt(prompts_.Prompts()[0], DiskInUse(u"P:"), u"Warning", 0x34);
  EXPECT_EQ(LastCall(), L"4 DismountByMountPoint");
  EXPECT_EQ(MountedPoints(), Points{u"Q:"});
}

TEST_F(DismountFlowHostTest, DismountMountPointInUseAndNoKeepsTheDisk)
{
  WriteControlText(kControlInUse, L"P");
  prompts_.Answer(kIdNo);
  DismountMountPointFlow(Owner(), u"P:", 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectPrompt(prompts_.Prompts()[0], DiskInUse(u"P:"), u"Warning", 0x34);
  EXPECT_EQ(MountedPoints(), (Points{u"P:", u"Q:"}));
}

// The question names the mount point as the caller gave it.
TEST_F(DismountFlowHostTest, DismountMountPointQuestionNamesTheMountPointAsGiven)
{
  WriteControlText(kControlInUse, L"Q");
  prompts_.Answer(kIdYes);
  DismountMountPointFlow(Owner(), u"q:\\", 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, DiskInUse(u"q:\\"));
  EXPECT_EQ(MountedPoints(), Points{u"P:"});
}

TEST_F(DismountFlowHostTest, ForcedDismountMountPointAsksNothing)
{
  WriteControlText(kControlInUse, L"P");
  DismountMountPointFlow(Owner(), u"P:", 1);
  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_EQ(MountedPoints(), Points{u"Q:"});
}

TEST_F(DismountFlowHostTest, DismountMountPointWhenTheDriverIsNotStartedShowsTheCode)
{
  WriteControlNumber(kControlNotStartedCalls, 1);
  prompts_.Answer(kIdOk);
  DismountMountPointFlow(Owner(), u"P:", 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectPrompt(prompts_.Prompts()[0], OperationFailed(u"4006000B"), u"Cannot Dismount Virtual Disk",
               0x10);
  EXPECT_EQ(MountedPoints(), (Points{u"P:", u"Q:"}));
}

TEST_F(DismountFlowHostTest, DismountOfAMountPointWithoutADiskShowsTheHostsCode)
{
  prompts_.Answer(kIdOk);
  DismountMountPointFlow(Owner(), u"R:", 0);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectPrompt(prompts_.Prompts()[0], OperationFailed(u"4000000F"), u"Cannot Dismount Virtual Disk",
               0x10);
  EXPECT_EQ(MountedPoints(), (Points{u"P:", u"Q:"}));
}

TEST_F(DismountFlowHostTest, DismountDiskGoesByItsIdAndAsksAboutItsMountPoint)
{
  WriteControlText(kControlInUse, L"Q");
  const std::vector<MountedDisk> disks = [] {
    std::vector<MountedDisk> listed;
    EXPECT_EQ(CurrentDeviceHost().EnumerateDisks(&listed), kStatusSuccess);
    return listed;
  }();
  ASSERT_EQ(disks.size(), 2u);
  prompts_.Answer(kIdYes);
  DismountDiskFlow(Owner(), disks[1]);
  EXPECT_EQ(LastCall(), L"5 DismountById");
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectPrompt(prompts_.Prompts()[0], DiskInUse(u"Q:"), u"Warning", 0x34);
  EXPECT_EQ(MountedPoints(), Points{u"P:"});
}

}  // namespace
