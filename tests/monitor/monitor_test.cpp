// The monitor's decisions on each event, against scripted settings, device host, prompts
// and process start, with the system side recorded.
#include "monitor/monitor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/flow_fixture.h"
#include "settings/hot_key.h"
#include "settings/options.h"
#include "system/module_path.h"
#include "system/utf.h"

namespace {

// Ctrl+Alt+F11 and Ctrl+Shift+F12 as stored.
constexpr uint32_t kCtrlAltF11 = MakeHotKey(kHotKeyControl | kHotKeyAlt, 0x7A);
constexpr uint32_t kCtrlShiftF12 = 0x067B;

// Records what the monitor asks of the system, as lines in order; hot keys are refused
// while listed in `takenHotKeys`.
class CRecordedMonitorSystem final : public CMonitorSystem {
 public:
  std::vector<uint32_t> takenHotKeys;
  std::vector<std::string> log;

  bool RegisterHotKey(uint32_t modifiers, uint32_t virtualKey) override
  {
    const uint32_t hotKey = MakeHotKey(modifiers, virtualKey);
    const bool taken =
        std::find(takenHotKeys.begin(), takenHotKeys.end(), hotKey) != takenHotKeys.end();
    log.push_back("register " + std::to_string(modifiers) + "+" + std::to_string(virtualKey) +
                  (taken ? " taken" : ""));
    return !taken;
  }
  void UnregisterHotKey() override { log.push_back("unregister"); }
  void BroadcastRefresh() override { log.push_back("refresh"); }
  void SetTrayTip(const std::u16string& tip) override
  {
    log.push_back("tip " + Utf16ToUtf8(tip.c_str()));
  }
  void ShowTrayMessage(const std::u16string& text) override
  {
    log.push_back("message " + Utf16ToUtf8(text.c_str()));
  }
  WindowRef Owner() override { return this; }
  void Exit() override { log.push_back("exit"); }
};

class MonitorTest : public FlowTest {
 protected:
  void Store(uint32_t enable, uint32_t unload, uint32_t hotKey)
  {
    ASSERT_EQ(WriteMonitorOptions({enable, unload, hotKey}), kStatusSuccess);
  }

  // Starts the monitor with nothing mounted; the first check's enumeration is answered.
  void StartWithNothingMounted()
  {
    host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess});
    monitor.Start();
  }

  void Mount(const std::u16string& mountPoint)
  {
    MountedDisk disk;
    disk.mountPoint = mountPoint;
    host.AddDisk(disk);
  }

  CRecordedMonitorSystem system;
  CMonitor monitor{system};
};

using Log = std::vector<std::string>;

TEST_F(MonitorTest, MonitorThatIsNotEnabledExitsAtOnce)
{
  Store(0, 0, kCtrlAltF11);
  monitor.Start();
  EXPECT_EQ(system.log, Log({"exit"}));
  EXPECT_TRUE(host.Calls().empty());
}

TEST_F(MonitorTest, StartRegistersTheStoredHotKeyAndShowsTheDisksInTheTip)
{
  Store(1, 0, kCtrlAltF11);
  Mount(u"P:");
  Mount(u"Q:");
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess});
  monitor.Start();
  EXPECT_EQ(system.log, Log({"register 3+122", "tip Cryptelle Monitor\nMounted: P:, Q:"}));
}

TEST_F(MonitorTest, NoHotKeyStoredRegistersNothing)
{
  Store(1, 0, 0);
  StartWithNothingMounted();
  EXPECT_EQ(system.log, Log({"tip Cryptelle Monitor\nNo virtual disks are mounted."}));
}

TEST_F(MonitorTest, HotKeyDismountsEverythingForcedRefreshesAndExits)
{
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  host.Answer(DeviceHostOperation::kDismountAll, {kStatusSuccess});
  monitor.OnHotKey();
  EXPECT_EQ(host.CallTexts().back(), "DismountAll(forced 1)");
  EXPECT_EQ(system.log, Log({"refresh", "unregister", "exit"}));
  EXPECT_TRUE(prompts.Prompts().empty());
  // Nothing happens after the monitor has exited.
  monitor.OnHotKey();
  monitor.OnDiskCheck();
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log.size(), 3u);
}

TEST_F(MonitorTest, HotKeyWithTheDeviceHostNotRunningStillExits)
{
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  host.Answer(DeviceHostOperation::kDismountAll, {kDevNotRunning});
  monitor.OnHotKey();
  EXPECT_EQ(system.log, Log({"refresh", "unregister", "exit"}));
}

TEST_F(MonitorTest, FailedEmergencyDismountIsShownAndTheMonitorStays)
{
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  host.Answer(DeviceHostOperation::kDismountAll, {kDevUnreachable});
  monitor.OnHotKey();
  EXPECT_EQ(system.log,
            Log({"refresh", "message Emergency dismount failed.\nError code: 4006000A"}));
}

TEST_F(MonitorTest, SettingsChangeWithANewHotKeyReplacesTheHeldOne)
{
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  Store(1, 0, kCtrlShiftF12);
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log, Log({"unregister", "register 6+123"}));
  // The same key again changes nothing.
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log.size(), 2u);
  // A cleared key is released.
  Store(1, 0, 0);
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log.back(), "unregister");
  EXPECT_EQ(system.log.size(), 3u);
}

TEST_F(MonitorTest, SettingsChangeThatDisablesTheMonitorEndsIt)
{
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  Store(0, 0, kCtrlAltF11);
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log, Log({"unregister", "exit"}));
}

TEST_F(MonitorTest, TakenHotKeyIsReportedOnceAndTriedAgainOnEachChange)
{
  system.takenHotKeys = {kCtrlAltF11};
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  EXPECT_EQ(system.log[0], "register 3+122 taken");
  EXPECT_EQ(system.log[1],
            "message The emergency hot key is used by another application.\nPlease assign "
            "another key combination in the Cryptelle options.");
  system.log.clear();
  // Still taken: tried again, not reported again.
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log, Log({"register 3+122 taken"}));
  // Released by the other program: the next change takes it.
  system.takenHotKeys.clear();
  monitor.OnSettingsChanged();
  EXPECT_EQ(system.log.back(), "register 3+122");
}

TEST_F(MonitorTest, AnotherTakenHotKeyIsReportedAgain)
{
  system.takenHotKeys = {kCtrlAltF11, kCtrlShiftF12};
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  Store(1, 0, kCtrlShiftF12);
  monitor.OnSettingsChanged();
  ASSERT_EQ(system.log.size(), 2u);
  EXPECT_EQ(system.log[0], "register 6+123 taken");
  EXPECT_EQ(system.log[1].rfind("message The emergency hot key", 0), 0u);
}

TEST_F(MonitorTest, UnloadingMonitorExitsAfterTwoChecksInARowFindNoDisk)
{
  Store(1, 1, 0);
  Mount(u"P:");
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess});
  monitor.Start();
  host.Answer(DeviceHostOperation::kDismountAll, {kStatusSuccess});
  ASSERT_EQ(CurrentDeviceHost().DismountAll(0), kStatusSuccess);
  system.log.clear();
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess, kStatusSuccess});
  monitor.OnDiskCheck();
  EXPECT_EQ(system.log, Log({"tip Cryptelle Monitor\nNo virtual disks are mounted."}));
  monitor.OnDiskCheck();
  EXPECT_EQ(system.log.back(), "exit");
}

TEST_F(MonitorTest, DiskMountedBetweenChecksStartsTheCountAgain)
{
  Store(1, 1, 0);
  StartWithNothingMounted();
  Mount(u"P:");
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess, kStatusSuccess});
  monitor.OnDiskCheck();
  host.Answer(DeviceHostOperation::kDismountAll, {kStatusSuccess});
  ASSERT_EQ(CurrentDeviceHost().DismountAll(0), kStatusSuccess);
  monitor.OnDiskCheck();
  EXPECT_NE(system.log.back(), "exit");
}

TEST_F(MonitorTest, DeviceHostNotRunningCountsAsNothingMountedOtherFailuresAsUnknown)
{
  Store(1, 1, 0);
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kDevUnreachable, kDevUnreachable});
  monitor.Start();
  monitor.OnDiskCheck();
  EXPECT_TRUE(system.log.empty());
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kDevNotRunning, kDevNotRunning});
  monitor.OnDiskCheck();
  monitor.OnDiskCheck();
  EXPECT_EQ(system.log, Log({"tip Cryptelle Monitor\nNo virtual disks are mounted.", "exit"}));
}

TEST_F(MonitorTest, WithoutUnloadingTheMonitorStaysWhenNothingIsMounted)
{
  Store(1, 0, 0);
  StartWithNothingMounted();
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess, kStatusSuccess});
  monitor.OnDiskCheck();
  monitor.OnDiskCheck();
  EXPECT_EQ(system.log, Log({"tip Cryptelle Monitor\nNo virtual disks are mounted."}));
}

TEST_F(MonitorTest, UnloadTurnedOnByTheOptionsTakesEffectAtTheNextChecks)
{
  Store(1, 0, 0);
  StartWithNothingMounted();
  Store(1, 1, 0);
  monitor.OnSettingsChanged();
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess});
  monitor.OnDiskCheck();
  EXPECT_EQ(system.log.back(), "exit");
}

TEST_F(MonitorTest, MenuDismountAllRunsTheProgramsFlowAndRefreshes)
{
  Store(1, 0, 0);
  StartWithNothingMounted();
  system.log.clear();
  Mount(u"P:");
  // In use: the question of the dismount-all flow, then forced.
  host.Answer(DeviceHostOperation::kDismountAll, {kDevVolumeInUse, kStatusSuccess});
  host.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess});
  prompts.Answer(kIdYes);
  monitor.OnCommand(MonitorCommand::kDismountAll);
  const std::vector<std::string> calls = host.CallTexts();
  ASSERT_GE(calls.size(), 3u);
  EXPECT_EQ(calls[calls.size() - 3], "DismountAll(forced 0)");
  EXPECT_EQ(calls[calls.size() - 2], "DismountAll(forced 1)");
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, system.Owner());
  EXPECT_EQ(system.log[0], "refresh");
}

TEST_F(MonitorTest, MenuExitReleasesTheHotKeyAndExits)
{
  Store(1, 0, kCtrlAltF11);
  StartWithNothingMounted();
  system.log.clear();
  monitor.OnCommand(MonitorCommand::kExit);
  EXPECT_EQ(system.log, Log({"unregister", "exit"}));
}

TEST_F(MonitorTest, OpenStartsTheProgramBesideTheMonitor)
{
  Store(1, 0, 0);
  StartWithNothingMounted();
  std::u16string expected;
  ASSERT_EQ(SysGetPathBesideModule(u"ctell.exe", &expected), kStatusSuccess);
  processes.AnswerStart(kStatusSuccess);
  monitor.OnCommand(MonitorCommand::kOpenProgram);
  ASSERT_EQ(processes.Requests().size(), 1u);
  EXPECT_EQ(processes.Requests()[0].program, expected);
  EXPECT_EQ(processes.Requests()[0].commandLine, u"\"" + expected + u"\"");
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(MonitorTest, OpenThatCannotStartTheProgramSaysWhy)
{
  Store(1, 0, 0);
  StartWithNothingMounted();
  processes.AnswerStart(kSysNotFound, u"The system cannot find the file specified.\r\n");
  prompts.Answer(kIdOk);
  monitor.OnCommand(MonitorCommand::kOpenProgram);
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, system.Owner());
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Unable to start Cryptelle.\nThe system cannot find the file specified.\r\n");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Error");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
}

TEST(ProgramStartFailure, FollowsTheTextWithTheSystemsText)
{
  EXPECT_EQ(ProgramStartFailure(u"Access is denied.\r\n"),
            (Prompt{40406, u"Unable to start Cryptelle.\nAccess is denied.\r\n", 40035,
                    kMbOk | kMbIconError}));
}

}  // namespace
