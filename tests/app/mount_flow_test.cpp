// The mount flow: the dialog, the mount with its retries, and what follows a successful
// mount, with every call the flow makes checked in order.
#include "app/mount_flow.h"

#include <gtest/gtest.h>

#include "flow_fixture.h"
#include "settings/options.h"

namespace {

using Texts = std::vector<std::string>;

const std::u16string kBlankDiskP =
    u"Virtual disk P: is not formatted. You need to format it before using.\n\nWould you like "
    u"to format it now?";

MountRequest Request(std::u16string mountPoint = u"P:")
{
  MountRequest request;
  request.imagePath = u"C:\\x.qvi";
  request.password = u"secret";
  request.mountPoint = std::move(mountPoint);
  request.invisible = true;
  return request;
}

class MountFlowTest : public FlowTest {
 protected:
  void Run(const std::u16string& initialPath = u"C:\\x.qvi")
  {
    MountFlow(Owner(), initialPath, dialog, recent);
  }

  // A successful mount of Request() onto a formatted drive P:.
  void ScriptFormattedMount()
  {
    dialog.Answer(Request());
    host.Answer(DeviceHostOperation::kMountWithPassword, {kStatusSuccess});
    probe.Answer(kErrorAccessDenied);
    shell.AnswerLookAt(kStatusSuccess);
    shell.AnswerOpen(kStatusSuccess);
  }

  void ExpectShellCalls(std::initializer_list<CScriptedShell::Kind> kinds)
  {
    ASSERT_EQ(shell.Calls().size(), kinds.size());
    size_t index = 0;
    for (const CScriptedShell::Kind kind : kinds) {
      EXPECT_EQ(shell.Calls()[index].kind, kind) << "shell call " << index;
      ++index;
    }
  }

  CScriptedMountDialog dialog;
  RecentImageList recent;
};

constexpr const char* kMountP = "MountWithPassword(C:\\x.qvi, P:, flags 0x4, password secret)";

TEST_F(MountFlowTest, CancelledDialogEndsTheFlowWithoutAnyCall)
{
  dialog.Answer(std::nullopt);
  Run(u"D:\\y.qvi");
  ASSERT_EQ(dialog.Showings().size(), 1u);
  EXPECT_EQ(dialog.Showings()[0].owner, Owner());
  EXPECT_EQ(dialog.Showings()[0].initialPath, u"D:\\y.qvi");
  EXPECT_TRUE(host.CallTexts().empty());
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_TRUE(shell.Calls().empty());
}

TEST_F(MountFlowTest, SuccessfulMountOfAFormattedDriveRecordsItLooksAtItAndOpensIt)
{
  ScriptFormattedMount();
  Run();
  EXPECT_EQ(host.CallTexts(), Texts{kMountP});
  EXPECT_EQ(probe.Paths(), std::vector<std::u16string>{u"P:\\"});
  ExpectShellCalls({CScriptedShell::Kind::kLookAt, CScriptedShell::Kind::kOpen});
  EXPECT_EQ(shell.Calls()[0].path, u"P:\\");
  EXPECT_EQ(shell.Calls()[1].path, u"P:\\");
  EXPECT_EQ(shell.Calls()[1].owner, Owner());
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_TRUE(processes.Requests().empty());
  EXPECT_EQ(recent.entries, std::vector<std::u16string>{u"C:\\x.qvi"});
  RecentImageList stored;
  ASSERT_EQ(ReadRecentList(&stored, kRecentListKeyPath), kStatusSuccess);
  EXPECT_EQ(stored.entries, std::vector<std::u16string>{u"C:\\x.qvi"});
}

TEST_F(MountFlowTest, TheOptionsBecomeTheMountFlags)
{
  struct Case {
    bool readOnly, removable, invisible;
    const char* flags;
  };
  for (const Case& c : {Case{false, false, false, "0x0"}, Case{true, false, false, "0x1"},
                        Case{false, true, false, "0x2"}, Case{true, true, true, "0x7"}}) {
    FakeDeviceHost caseHost;
    MountRequest request = Request();
    request.readOnly = c.readOnly;
    request.removable = c.removable;
    request.invisible = c.invisible;
    dialog.Answer(request);
    caseHost.Answer(DeviceHostOperation::kMountWithPassword, {0x4005000C});
    prompts.Answer(kIdOk);
    Run();
    EXPECT_EQ(caseHost.CallTexts(), Texts{std::string("MountWithPassword(C:\\x.qvi, P:, flags ") +
                                          c.flags + ", password secret)"});
  }
}

TEST_F(MountFlowTest, MissingVolumeFileShowsItsMessageOnceWithoutRetry)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {0x4005000C});
  prompts.Answer(kIdOk);
  Run();
  EXPECT_EQ(host.CallTexts(), Texts{kMountP});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Cannot open C:\\x.qvi.\nVirtual disk image volume file is missing.");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
  EXPECT_TRUE(shell.Calls().empty());
  EXPECT_TRUE(recent.entries.empty());
  EXPECT_EQ(dialog.Showings().size(), 1u);
}

TEST_F(MountFlowTest, StoppedDriverIsStartedSilentlyAndTheMountRetried)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {0x4006000B, kStatusSuccess});
  host.Answer(DeviceHostOperation::kStartDeviceHostService, {kStatusSuccess});
  probe.Answer(kErrorAccessDenied);
  shell.AnswerLookAt(kStatusSuccess);
  shell.AnswerOpen(kStatusSuccess);
  Run();
  EXPECT_EQ(host.CallTexts(), (Texts{kMountP, "StartDeviceHostService()", kMountP}));
  EXPECT_TRUE(prompts.Prompts().empty());
  ExpectShellCalls({CScriptedShell::Kind::kLookAt, CScriptedShell::Kind::kOpen});
  EXPECT_EQ(dialog.Showings().size(), 1u);
}

TEST_F(MountFlowTest, DriverThatCannotBeStartedEndsTheFlowWithItsCode)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {0x4006000B});
  host.Answer(DeviceHostOperation::kStartDeviceHostService, {0x40000013});
  prompts.Answer(kIdOk);
  Run();
  EXPECT_EQ(host.CallTexts(), (Texts{kMountP, "StartDeviceHostService()"}));
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, u"Cannot start image mount driver.\nError code: 40000013");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_TRUE(shell.Calls().empty());
}

TEST_F(MountFlowTest, AccessDeniedRetryRepeatsTheMountWithTheSamePasswordAndCancelEnds)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {0x40000008, 0x40000008, 0x40000008});
  prompts.Answer(kIdRetry);
  prompts.Answer(kIdRetry);
  prompts.Answer(kIdCancel);
  Run();
  EXPECT_EQ(host.CallTexts(), (Texts{kMountP, kMountP, kMountP}));
  ASSERT_EQ(prompts.Prompts().size(), 3u);
  for (const CScriptedMessageBoxes::Prompt& shown : prompts.Prompts()) {
    EXPECT_EQ(shown.text, u"Cannot open C:\\x.qvi.\nAccess denied.");
    EXPECT_EQ(shown.caption, u"Cannot Mount Virtual Disk Image");
    EXPECT_EQ(shown.flags, 0x15u);
  }
  EXPECT_EQ(dialog.Showings().size(), 1u);
  EXPECT_TRUE(shell.Calls().empty());
  EXPECT_TRUE(recent.entries.empty());
}

TEST_F(MountFlowTest, AccessDeniedRetryThatSucceedsGoesOnAsAnyMount)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {0x40000008, kStatusSuccess});
  prompts.Answer(kIdRetry);
  probe.Answer(kErrorAccessDenied);
  shell.AnswerLookAt(kStatusSuccess);
  shell.AnswerOpen(kStatusSuccess);
  Run();
  EXPECT_EQ(host.CallTexts(), (Texts{kMountP, kMountP}));
  EXPECT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(recent.entries, std::vector<std::u16string>{u"C:\\x.qvi"});
}

TEST_F(MountFlowTest, PrivacyModeKeepsTheImageOutOfTheRecentList)
{
  GeneralOptions options;
  options.privacy = 1;
  ASSERT_EQ(WriteGeneralOptions(options), kStatusSuccess);
  ScriptFormattedMount();
  Run();
  EXPECT_TRUE(recent.entries.empty());
  RecentImageList stored;
  stored.entries = {u"untouched"};
  ReadRecentList(&stored, kRecentListKeyPath);
  EXPECT_EQ(stored.entries, std::vector<std::u16string>{u"untouched"});
}

TEST_F(MountFlowTest, EnabledMonitorIsStartedAfterTheMount)
{
  MonitorOptions monitor;
  monitor.enableMonitor = 1;
  ASSERT_EQ(WriteMonitorOptions(monitor), kStatusSuccess);
  ScriptFormattedMount();
  processes.AnswerStart(kStatusSuccess);
  Run();
  ASSERT_EQ(processes.Requests().size(), 1u);
  EXPECT_EQ(processes.Requests()[0].program, u"");
  EXPECT_EQ(processes.Requests()[0].commandLine, u"ctellmon.exe");
  EXPECT_EQ(processes.Requests()[0].desktop, std::optional<std::u16string>(u""));
  EXPECT_TRUE(prompts.Prompts().empty());
  ExpectShellCalls({CScriptedShell::Kind::kLookAt, CScriptedShell::Kind::kOpen});
}

TEST_F(MountFlowTest, BlankVolumeAsksToFormatAndOpensAfterASuccessfulFullFormat)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {kStatusSuccess});
  probe.Answer(kErrorUnrecognizedVolume);
  prompts.Answer(kIdYes);
  shell.AnswerFormatDrive(0);
  shell.AnswerLookAt(kStatusSuccess);
  shell.AnswerOpen(kStatusSuccess);
  Run();
  EXPECT_EQ(host.CallTexts(), Texts{kMountP});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text, kBlankDiskP);
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Virtual Disk Needs Formatting");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x34u);
  ExpectShellCalls({CScriptedShell::Kind::kFormatDrive, CScriptedShell::Kind::kLookAt,
                    CScriptedShell::Kind::kOpen});
  EXPECT_EQ(shell.Calls()[0].owner, Owner());
  EXPECT_EQ(shell.Calls()[0].drive, 15u);
  EXPECT_EQ(shell.Calls()[0].formatId, 0xFFFFu);
  EXPECT_EQ(shell.Calls()[0].options, 1u);
  EXPECT_EQ(shell.Calls()[2].path, u"P:\\");
}

TEST_F(MountFlowTest, BlankVolumeAndNoLeavesTheDriveUnopened)
{
  dialog.Answer(Request());
  host.Answer(DeviceHostOperation::kMountWithPassword, {kStatusSuccess});
  probe.Answer(kErrorUnrecognizedVolume);
  prompts.Answer(kIdNo);
  shell.AnswerLookAt(kStatusSuccess);
  Run();
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text, kBlankDiskP);
  ExpectShellCalls({CScriptedShell::Kind::kLookAt});
  EXPECT_EQ(shell.Calls()[0].path, u"P:\\");
}

TEST_F(MountFlowTest, FormatThatFailsIsCancelledOrImpossibleLeavesTheDriveUnopened)
{
  for (const uint32_t result : {kShFmtError, kShFmtCancel, kShFmtNoFormat}) {
    CScriptedShell caseShell;
    dialog.Answer(Request());
    host.Answer(DeviceHostOperation::kMountWithPassword, {kStatusSuccess});
    probe.Answer(kErrorUnrecognizedVolume);
    prompts.Answer(kIdYes);
    caseShell.AnswerFormatDrive(result);
    caseShell.AnswerLookAt(kStatusSuccess);
    Run();
    ASSERT_EQ(caseShell.Calls().size(), 2u) << std::hex << result;
    EXPECT_EQ(caseShell.Calls()[0].kind, CScriptedShell::Kind::kFormatDrive);
    EXPECT_EQ(caseShell.Calls()[1].kind, CScriptedShell::Kind::kLookAt);
  }
}

TEST_F(MountFlowTest, MountPointNotStartingWithALetterGetsNoFormatPromptAndIsNotOpened)
{
  dialog.Answer(Request(u"1:"));
  host.Answer(DeviceHostOperation::kMountWithPassword, {kStatusSuccess});
  probe.Answer(kErrorUnrecognizedVolume);
  shell.AnswerLookAt(kStatusSuccess);
  Run();
  EXPECT_EQ(host.CallTexts(),
            Texts{"MountWithPassword(C:\\x.qvi, 1:, flags 0x4, password secret)"});
  EXPECT_EQ(probe.Paths(), std::vector<std::u16string>{u"1:\\"});
  EXPECT_TRUE(prompts.Prompts().empty());
  ExpectShellCalls({CScriptedShell::Kind::kLookAt});
  EXPECT_EQ(shell.Calls()[0].path, u"1:\\");
}

TEST_F(MountFlowTest, EmptyMountPointIsLookedAtAsItsRootAndNotOpened)
{
  dialog.Answer(Request(u""));
  host.Answer(DeviceHostOperation::kMountWithPassword, {kStatusSuccess});
  probe.Answer(3);
  shell.AnswerLookAt(kStatusSuccess);
  Run();
  EXPECT_EQ(host.CallTexts(), Texts{"MountWithPassword(C:\\x.qvi, , flags 0x4, password secret)"});
  ExpectShellCalls({CScriptedShell::Kind::kLookAt});
  EXPECT_EQ(shell.Calls()[0].path, u"\\");
}

}  // namespace
