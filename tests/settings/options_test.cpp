#include "settings/options.h"

#include <gtest/gtest.h>

#include "settings/hot_key.h"
#include "settings/memory_store.h"
#include "settings_fixture.h"

namespace {

using OptionsTest = SettingsTest;
INSTANTIATE_FOR_EVERY_STORE(OptionsTest);

TEST_P(OptionsTest, MountDefaultsWithoutKeyShowInvisibleCheckedRemovableUncheckedAndCreateEmptyKey)
{
  ASSERT_FALSE(Store().KeyExists(kAppKey));
  MountDefaults defaults;
  EXPECT_EQ(ReadMountDefaults(&defaults), kStatusSuccess);
  EXPECT_EQ(CheckStateOfOption(defaults.removable), 0u);
  EXPECT_EQ(CheckStateOfOption(defaults.invisible), 1u);
  EXPECT_EQ(defaults.privacy, 0u);
  EXPECT_TRUE(Store().KeyExists(kAppKey));
  EXPECT_TRUE(Store().ValueNames(kAppKey).empty());
}

TEST_P(OptionsTest, EveryReaderWithoutValuesGivesTheProgramDefaults)
{
  GeneralOptions general;
  EXPECT_EQ(ReadGeneralOptions(&general), kStatusSuccess);
  EXPECT_EQ(general.removable, 0u);
  EXPECT_EQ(general.invisible, 1u);
  EXPECT_EQ(general.ignoreOpenFiles, 0u);
  EXPECT_EQ(general.privacy, 0u);
  MonitorOptions monitor;
  EXPECT_EQ(ReadMonitorOptions(&monitor), kStatusSuccess);
  EXPECT_EQ(monitor.enableMonitor, 0u);
  EXPECT_EQ(monitor.unloadAutomatically, 0u);
  EXPECT_EQ(monitor.emergencyHotKey, 0u);
  uint32_t ignore = 3;
  uint32_t enable = 3;
  EXPECT_EQ(ReadIgnoreOpenFiles(&ignore), kStatusSuccess);
  EXPECT_EQ(ReadEnableMonitor(&enable), kStatusSuccess);
  EXPECT_EQ(ignore, 0u);
  EXPECT_EQ(enable, 0u);
  EXPECT_TRUE(Store().ValueNames(kAppKey).empty());
}

TEST_P(OptionsTest, MissingValuesLeaveTheCallersDefaults)
{
  Store().Put(kAppKey, u"MountInvisible", 4, DwordBytes(0));
  MountDefaults mount{5, 6, 7};
  EXPECT_EQ(ReadMountDefaults(&mount), kStatusSuccess);
  EXPECT_EQ(mount.removable, 5u);
  EXPECT_EQ(mount.invisible, 0u);
  EXPECT_EQ(mount.privacy, 7u);
}

TEST_P(OptionsTest, CheckBoxValueSevenInAnyOptionShowsUnchecked)
{
  for (const char16_t* name :
       {u"MountAsRemovable", u"MountInvisible", u"PrivacyMode", u"IgnoreOpenFilesOnUnmountAll",
        u"EnableMonitor", u"UnloadMonitorAutomatically"}) {
    Store().Put(kAppKey, name, 4, DwordBytes(7));
  }
  MountDefaults mount;
  ReadMountDefaults(&mount);
  GeneralOptions general;
  ReadGeneralOptions(&general);
  MonitorOptions monitor;
  ReadMonitorOptions(&monitor);
  uint32_t ignore = 0;
  uint32_t enable = 0;
  ReadIgnoreOpenFiles(&ignore);
  ReadEnableMonitor(&enable);
  for (const uint32_t value :
       {mount.removable, mount.invisible, mount.privacy, general.removable, general.invisible,
        general.ignoreOpenFiles, general.privacy, monitor.enableMonitor,
        monitor.unloadAutomatically, ignore, enable}) {
    EXPECT_EQ(value, 7u);
    EXPECT_EQ(CheckStateOfOption(value), 0u);
  }
}

TEST_P(OptionsTest, CheckStatesZeroOneTwoPassUnchangedOthersBecomeUnchecked)
{
  EXPECT_EQ(CheckStateOfOption(0), 0u);
  EXPECT_EQ(CheckStateOfOption(1), 1u);
  EXPECT_EQ(CheckStateOfOption(2), 2u);
  EXPECT_EQ(CheckStateOfOption(3), 0u);
  EXPECT_EQ(CheckStateOfOption(0xFFFFFFFF), 0u);
}

TEST_P(OptionsTest, OptionsAreReadWithoutTypeCheckWhenFourBytesLong)
{
  Store().Put(kAppKey, u"MountAsRemovable", 3, {1, 0, 0, 0});          // REG_BINARY
  Store().Put(kAppKey, u"MountInvisible", 1, StringBytes(u"\x0002"));  // REG_SZ "\2" + NUL
  Store().Put(kAppKey, u"PrivacyMode", 0, {5, 0, 0, 0});               // REG_NONE
  MountDefaults defaults;
  EXPECT_EQ(ReadMountDefaults(&defaults), kStatusSuccess);
  EXPECT_EQ(defaults.removable, 1u);
  EXPECT_EQ(defaults.invisible, 2u);
  EXPECT_EQ(defaults.privacy, 5u);
}

TEST_P(OptionsTest, OptionLongerThanFourBytesKeepsTheDefault)
{
  Store().Put(kAppKey, u"MountInvisible", 11, {0, 0, 0, 0, 0, 0, 0, 0});  // REG_QWORD 0
  MountDefaults defaults;
  EXPECT_EQ(ReadMountDefaults(&defaults), kStatusSuccess);
  EXPECT_EQ(defaults.invisible, 1u);
}

TEST_P(OptionsTest, OptionShorterThanFourBytesReplacesOnlyItsLowBytes)
{
  Store().Put(kAppKey, u"EmergencyHotKey", 3, {0x41, 0x03});
  MonitorOptions monitor;
  monitor.emergencyHotKey = 0x12345678;
  EXPECT_EQ(ReadMonitorOptions(&monitor), kStatusSuccess);
  EXPECT_EQ(monitor.emergencyHotKey, 0x12340341u);
}

TEST_P(OptionsTest, GeneralOptionsAreWrittenAsFourByteDwordsAndReadBack)
{
  EXPECT_EQ(WriteGeneralOptions({1, 0, 2, 1}), kStatusSuccess);
  ExpectDword(kAppKey, u"MountAsRemovable", 1);
  ExpectDword(kAppKey, u"MountInvisible", 0);
  ExpectDword(kAppKey, u"IgnoreOpenFilesOnUnmountAll", 2);
  ExpectDword(kAppKey, u"PrivacyMode", 1);
  EXPECT_EQ(Store().ValueNames(kAppKey).size(), 4u);
  GeneralOptions read;
  EXPECT_EQ(ReadGeneralOptions(&read), kStatusSuccess);
  EXPECT_EQ(read.removable, 1u);
  EXPECT_EQ(read.invisible, 0u);
  EXPECT_EQ(read.ignoreOpenFiles, 2u);
  EXPECT_EQ(read.privacy, 1u);
  MountDefaults mount;
  ReadMountDefaults(&mount);
  EXPECT_EQ(mount.removable, 1u);
  EXPECT_EQ(mount.invisible, 0u);
  EXPECT_EQ(mount.privacy, 1u);
  uint32_t ignore = 0;
  ReadIgnoreOpenFiles(&ignore);
  EXPECT_EQ(ignore, 2u);
}

TEST_P(OptionsTest, MonitorOptionsAreWrittenAsFourByteDwordsAndReadBack)
{
  EXPECT_EQ(WriteMonitorOptions({1, 1, 0x067B}), kStatusSuccess);
  ExpectDword(kAppKey, u"EnableMonitor", 1);
  ExpectDword(kAppKey, u"UnloadMonitorAutomatically", 1);
  ExpectDword(kAppKey, u"EmergencyHotKey", 0x067B);
  MonitorOptions read;
  EXPECT_EQ(ReadMonitorOptions(&read), kStatusSuccess);
  EXPECT_EQ(read.enableMonitor, 1u);
  EXPECT_EQ(read.unloadAutomatically, 1u);
  EXPECT_EQ(read.emergencyHotKey, 0x067Bu);
  uint32_t enable = 0;
  ReadEnableMonitor(&enable);
  EXPECT_EQ(enable, 1u);
}

TEST_P(OptionsTest, EmergencyHotKey0x0341MeansCtrlAltA)
{
  Store().Put(kAppKey, u"EmergencyHotKey", 4, DwordBytes(0x0341));
  MonitorOptions monitor;
  ReadMonitorOptions(&monitor);
  EXPECT_EQ(HotKeyModifiers(monitor.emergencyHotKey), 3u);
  EXPECT_EQ(HotKeyModifiers(monitor.emergencyHotKey), kHotKeyAlt | kHotKeyControl);
  EXPECT_EQ(HotKeyVirtualKey(monitor.emergencyHotKey), 0x41u);
  // The hot-key control shows it with its own flags: Ctrl 2 and Alt 4.
  EXPECT_EQ(HotKeyToControl(monitor.emergencyHotKey), 0x0641);
}

TEST(HotKeyTest, CtrlShiftF12InTheControlIsStoredAs0x067B)
{
  const uint16_t control = (kHotKeyControlCtrl | kHotKeyControlShift) << 8 | 0x7B;
  EXPECT_EQ(HotKeyFromControl(control), 0x067Bu);
  EXPECT_EQ(HotKeyToControl(0x067B), control);
}

TEST(HotKeyTest, EveryModifierConvertsBothWays)
{
  EXPECT_EQ(HotKeyToControl(MakeHotKey(kHotKeyAlt, 0x20)), (kHotKeyControlAlt << 8) | 0x20);
  EXPECT_EQ(HotKeyToControl(MakeHotKey(kHotKeyShift, 0x20)), (kHotKeyControlShift << 8) | 0x20);
  EXPECT_EQ(HotKeyToControl(MakeHotKey(kHotKeyControl, 0x20)), (kHotKeyControlCtrl << 8) | 0x20);
  for (uint32_t modifiers = 0; modifiers < 8; ++modifiers) {
    const uint32_t stored = MakeHotKey(modifiers, 0x70);
    EXPECT_EQ(HotKeyFromControl(HotKeyToControl(stored)), stored);
  }
  EXPECT_EQ(HotKeyToControl(0), 0);
  EXPECT_EQ(HotKeyFromControl(0), 0u);
}

// The memory store records every change in order and can refuse key opens.
class OptionsOrderTest : public ::testing::Test {
 protected:
  void SetUp() override { SetSettingsBackend(&store_); }
  void TearDown() override { SetSettingsBackend(nullptr); }
  MemorySettingsBackend store_;
};

TEST_F(OptionsOrderTest, GeneralOptionsAreWrittenRemovableInvisibleIgnoreOpenFilesPrivacy)
{
  WriteGeneralOptions({});
  const std::vector<std::u16string> expected = {
      u"create " + kAppKey, u"set " + kAppKey + u":MountAsRemovable",
      u"set " + kAppKey + u":MountInvisible", u"set " + kAppKey + u":IgnoreOpenFilesOnUnmountAll",
      u"set " + kAppKey + u":PrivacyMode"};
  EXPECT_EQ(store_.Journal(), expected);
}

TEST_F(OptionsOrderTest, MonitorOptionsAreWrittenEnableUnloadHotKey)
{
  WriteMonitorOptions({});
  const std::vector<std::u16string> expected = {
      u"create " + kAppKey, u"set " + kAppKey + u":EnableMonitor",
      u"set " + kAppKey + u":UnloadMonitorAutomatically", u"set " + kAppKey + u":EmergencyHotKey"};
  EXPECT_EQ(store_.Journal(), expected);
}

TEST_F(OptionsOrderTest, KeyThatCannotOpenLeavesDefaultsAndWritesNothing)
{
  store_.FailKeyOpens(5);  // ERROR_ACCESS_DENIED
  MountDefaults mount{7, 7, 7};
  EXPECT_EQ(ReadMountDefaults(&mount), kSysAccessDenied);
  EXPECT_EQ(mount.removable, 7u);
  EXPECT_EQ(mount.invisible, 7u);
  EXPECT_EQ(mount.privacy, 7u);
  uint32_t enable = 9;
  EXPECT_EQ(ReadEnableMonitor(&enable), kSysAccessDenied);
  EXPECT_EQ(enable, 0u);
  EXPECT_EQ(WriteGeneralOptions({1, 1, 1, 1}), kSysAccessDenied);
  EXPECT_EQ(WriteMonitorOptions({1, 1, 1}), kSysAccessDenied);
  EXPECT_TRUE(store_.Root().subkeys.empty());
}

}  // namespace
