// The options pages' decisions over the settings in memory: what each page shows for the
// stored values and what applying it writes, with the hot-key test and the broadcast seen
// through a recording system.
#include "dialogs/options_pages.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "settings/autostart.h"
#include "settings/hot_key.h"
#include "settings/memory_store.h"
#include "settings/settings_backend.h"
#include "support/scripted_message_boxes.h"
#include "support/scripted_processes.h"

namespace {

// Records the hot keys tried and the broadcasts; answers each try with `hotKeyFree`.
class CRecordingMonitorSystem final : public CMonitorPageSystem {
 public:
  bool HotKeyIsFree(uint32_t modifiers, uint32_t virtualKey) override
  {
    tries.emplace_back(modifiers, virtualKey);
    return hotKeyFree;
  }
  void BroadcastSettingsChanged() override { ++broadcasts; }

  bool hotKeyFree = true;
  std::vector<std::pair<uint32_t, uint32_t>> tries;
  int broadcasts = 0;
};

class OptionsPagesTest : public testing::Test {
 protected:
  OptionsPagesTest() : previous_(SetSettingsBackend(&store_)) {}
  ~OptionsPagesTest() override { SetSettingsBackend(previous_); }

  // The Run value naming this installation's monitor.
  static std::u16string OwnAutostartText()
  {
    std::u16string path;
    EXPECT_FALSE(IsFailure(MonitorProgramPath(&path)));
    return AutostartText(path);
  }
  void PutRunValue(const std::u16string& text)
  {
    SettingsNode* run = &store_.Root();
    for (const char16_t* part :
         {u"Software", u"Microsoft", u"Windows", u"CurrentVersion", u"Run"}) {
      run = run->AddSubKey(part);
    }
    std::vector<uint8_t> bytes;
    for (char16_t c : text + u'\0') {
      bytes.push_back(static_cast<uint8_t>(c & 0xFF));
      bytes.push_back(static_cast<uint8_t>(c >> 8));
    }
    run->values.push_back({kAutostartValueName, 1, bytes});
  }
  static MonitorOptions StoredMonitor()
  {
    MonitorOptions options{9, 9, 9};
    EXPECT_FALSE(IsFailure(ReadMonitorOptions(&options)));
    return options;
  }
  static std::u16string StoredRunValue()
  {
    std::u16string value;
    ReadAutostartValue(&value);
    return value;
  }

  MemorySettingsBackend store_;
  CScriptedMessageBoxes prompts_;
  CScriptedProcesses processes_;
  CRecordingMonitorSystem system_;
  int ownerObject_ = 0;

 private:
  SettingsBackend* previous_;
};

TEST(HotKeyTakenPrompt, AsksForAnotherCombination)
{
  EXPECT_EQ(HotKeyTakenPrompt(),
            (Prompt{40058,
                    u"Key combination assigned to emergency hot key is used by another "
                    u"application.\nPlease use another key combination.",
                    40035, kMbOk | kMbIconError}));
}

}  // namespace

TEST_F(OptionsPagesTest, GeneralPageWithoutValuesShowsOnlyInvisibleChecked)
{
  const GeneralOptions shown = LoadGeneralPage();
  EXPECT_EQ(shown.removable, 0u);
  EXPECT_EQ(shown.invisible, 1u);
  EXPECT_EQ(shown.ignoreOpenFiles, 0u);
  EXPECT_EQ(shown.privacy, 0u);
}

TEST_F(OptionsPagesTest, GeneralPageShowsTheStoredValues)
{
  ASSERT_FALSE(IsFailure(WriteGeneralOptions({1, 0, 1, 2})));
  const GeneralOptions shown = LoadGeneralPage();
  EXPECT_EQ(shown.removable, 1u);
  EXPECT_EQ(shown.invisible, 0u);
  EXPECT_EQ(shown.ignoreOpenFiles, 1u);
  EXPECT_EQ(shown.privacy, 2u);
}

TEST_F(OptionsPagesTest, ApplyingTheGeneralPageWritesTheFourValuesInOrder)
{
  RecentImageList recent;
  recent.entries = {u"C:\\a.qvi"};
  store_.ClearJournal();
  ApplyGeneralPage({1, 0, 1, 0}, &recent);
  const std::u16string key = u"Software\\Pellmora\\Cryptelle\\1.0";
  const std::vector<std::u16string> expected = {
      u"create " + key, u"set " + key + u":MountAsRemovable", u"set " + key + u":MountInvisible",
      u"set " + key + u":IgnoreOpenFilesOnUnmountAll", u"set " + key + u":PrivacyMode"};
  EXPECT_EQ(store_.Journal(), expected);
  GeneralOptions stored{7, 7, 7, 7};
  ReadGeneralOptions(&stored);
  EXPECT_EQ(stored.removable, 1u);
  EXPECT_EQ(stored.invisible, 0u);
  EXPECT_EQ(stored.ignoreOpenFiles, 1u);
  EXPECT_EQ(stored.privacy, 0u);
  EXPECT_EQ(recent.entries.size(), 1u);
}

TEST_F(OptionsPagesTest, TurningPrivacyOnEmptiesTheRecentListAndItsStoredEntries)
{
  RecentImageList recent;
  recent.entries = {u"C:\\old.qvi", u"C:\\new.qvi"};
  ASSERT_FALSE(IsFailure(WriteRecentList(recent, kRecentListKeyPath)));
  ApplyGeneralPage({0, 1, 0, 1}, &recent);
  EXPECT_TRUE(recent.entries.empty());
  RecentImageList stored;
  ReadRecentList(&stored, kRecentListKeyPath);
  EXPECT_TRUE(stored.entries.empty());
}

TEST_F(OptionsPagesTest, MonitorPageWithoutValuesShowsEverythingOffAndDependentsDisabled)
{
  const MonitorPageFields fields = LoadMonitorPage();
  EXPECT_TRUE(fields.appKeyOpened);
  EXPECT_EQ(fields.enableMonitor, 0u);
  EXPECT_EQ(fields.autostart, 0u);
  EXPECT_EQ(fields.unloadAutomatically, 0u);
  EXPECT_EQ(fields.openingHotKey, 0u);
  EXPECT_FALSE(MonitorDependentsEnabled(fields));
}

TEST_F(OptionsPagesTest, MonitorPageShowsTheStoredValuesAndEnablesTheDependents)
{
  ASSERT_FALSE(IsFailure(WriteMonitorOptions({1, 1, 0x067B})));
  const MonitorPageFields fields = LoadMonitorPage();
  EXPECT_EQ(fields.enableMonitor, 1u);
  EXPECT_EQ(fields.autostart, 0u);
  EXPECT_EQ(fields.unloadAutomatically, 1u);
  EXPECT_EQ(fields.openingHotKey, 0x067Bu);
  EXPECT_TRUE(MonitorDependentsEnabled(fields));
}

TEST_F(OptionsPagesTest, MonitorPageWithAClosedAppKeyLeavesTheHotKeyControlAlone)
{
  store_.FailKeyOpens(5);
  const MonitorPageFields fields = LoadMonitorPage();
  EXPECT_FALSE(fields.appKeyOpened);
}

TEST_F(OptionsPagesTest, OwnRunValueChecksAutostartAndEnablesTheMonitorWhateverWasStored)
{
  ASSERT_FALSE(IsFailure(WriteMonitorOptions({0, 0, 0})));
  PutRunValue(OwnAutostartText());
  const MonitorPageFields fields = LoadMonitorPage();
  EXPECT_EQ(fields.autostart, 1u);
  EXPECT_EQ(fields.enableMonitor, 1u);

  processes_.AnswerStart(kStatusSuccess);
  ASSERT_EQ(ApplyMonitorPage(fields, 0, &ownerObject_, system_), MonitorApplyResult::kSaved);
  EXPECT_EQ(StoredMonitor().enableMonitor, 1u);
  EXPECT_EQ(processes_.Requests().size(), 1u);
  EXPECT_EQ(StoredRunValue(), OwnAutostartText());
}

TEST_F(OptionsPagesTest, AnotherInstallationsRunValueIsUncheckedAndDeletedOnApply)
{
  PutRunValue(u"\"D:\\Other\\ctellmon.exe\"");
  const MonitorPageFields fields = LoadMonitorPage();
  EXPECT_EQ(fields.autostart, 0u);
  EXPECT_EQ(fields.enableMonitor, 0u);

  ASSERT_EQ(ApplyMonitorPage(fields, 0, &ownerObject_, system_), MonitorApplyResult::kSaved);
  EXPECT_EQ(StoredRunValue(), u"");
  EXPECT_EQ(system_.broadcasts, 1);
}

TEST_F(OptionsPagesTest, AnUnchangedHotKeyIsNotTestedEvenWhenTaken)
{
  ASSERT_FALSE(IsFailure(WriteMonitorOptions({0, 0, 0x067B})));
  system_.hotKeyFree = false;
  const MonitorPageFields fields = LoadMonitorPage();
  EXPECT_EQ(ApplyMonitorPage(fields, 0x067B, &ownerObject_, system_), MonitorApplyResult::kSaved);
  EXPECT_TRUE(system_.tries.empty());
  EXPECT_EQ(system_.broadcasts, 1);
}

TEST_F(OptionsPagesTest, ANewHotKeyIsTestedWithItsStoredModifiersAndSaved)
{
  const MonitorPageFields fields = LoadMonitorPage();
  const uint32_t ctrlShiftF12 = HotKeyFromControl(0x037B);  // control flags Ctrl|Shift, F12
  EXPECT_EQ(ctrlShiftF12, 0x067Bu);
  ASSERT_EQ(ApplyMonitorPage(fields, ctrlShiftF12, &ownerObject_, system_),
            MonitorApplyResult::kSaved);
  const std::vector<std::pair<uint32_t, uint32_t>> expected = {{6u, 0x7Bu}};
  EXPECT_EQ(system_.tries, expected);
  EXPECT_EQ(StoredMonitor().emergencyHotKey, 0x067Bu);
}

TEST_F(OptionsPagesTest, ATakenHotKeySavesNothingAndSendsNothing)
{
  ASSERT_FALSE(IsFailure(WriteMonitorOptions({1, 0, 0x067B})));
  system_.hotKeyFree = false;
  MonitorPageFields fields = LoadMonitorPage();
  fields.unloadAutomatically = 1;
  fields.autostart = 1;
  store_.ClearJournal();
  EXPECT_EQ(ApplyMonitorPage(fields, 0, &ownerObject_, system_), MonitorApplyResult::kHotKeyTaken);
  const std::vector<std::pair<uint32_t, uint32_t>> expected = {{0u, 0u}};
  EXPECT_EQ(system_.tries, expected);  // a cleared hot key is tested like any other
  EXPECT_TRUE(store_.Journal().empty());
  EXPECT_EQ(system_.broadcasts, 0);
  EXPECT_TRUE(processes_.Requests().empty());
}

TEST_F(OptionsPagesTest, ApplyingWithTheMonitorEnabledStartsItEachTime)
{
  MonitorPageFields fields = LoadMonitorPage();
  fields.enableMonitor = 1;
  processes_.AnswerStart(kStatusSuccess);
  processes_.AnswerStart(kStatusSuccess);
  ApplyMonitorPage(fields, 0, &ownerObject_, system_);
  ApplyMonitorPage(fields, 0, &ownerObject_, system_);
  ASSERT_EQ(processes_.Requests().size(), 2u);
  EXPECT_EQ(processes_.Requests()[0].commandLine, u"ctellmon.exe");
  EXPECT_EQ(system_.broadcasts, 2);
}

TEST_F(OptionsPagesTest, ApplyingWritesTheMonitorValuesInOrderThenTheRunValue)
{
  MonitorPageFields fields = LoadMonitorPage();
  fields.unloadAutomatically = 1;
  fields.autostart = 1;
  store_.ClearJournal();
  ApplyMonitorPage(fields, 0, &ownerObject_, system_);
  const std::u16string app = u"Software\\Pellmora\\Cryptelle\\1.0";
  const std::u16string run = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
  const std::vector<std::u16string> expected = {u"create " + app,
                                                u"set " + app + u":EnableMonitor",
                                                u"set " + app + u":UnloadMonitorAutomatically",
                                                u"set " + app + u":EmergencyHotKey",
                                                u"create " + run,
                                                u"set " + run + u":PellmoraCryptelleMonitor"};
  EXPECT_EQ(store_.Journal(), expected);
  EXPECT_EQ(StoredMonitor().unloadAutomatically, 1u);
}

TEST_F(OptionsPagesTest, WithoutTheStoreNothingIsBroadcastAndNothingStarts)
{
  MonitorPageFields fields = LoadMonitorPage();
  fields.enableMonitor = 1;
  store_.FailKeyOpens(5);
  EXPECT_EQ(ApplyMonitorPage(fields, 0, &ownerObject_, system_), MonitorApplyResult::kSaved);
  EXPECT_EQ(system_.broadcasts, 0);
  EXPECT_TRUE(processes_.Requests().empty());
}
