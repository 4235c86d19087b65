#include "settings/autostart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "settings_fixture.h"
#include "system/module_path.h"

namespace {

using AutostartTest = SettingsTest;
INSTANTIATE_FOR_EVERY_STORE(AutostartTest);

std::u16string ThisMonitor()
{
  std::u16string path;
  EXPECT_EQ(MonitorProgramPath(&path), kStatusSuccess);
  return path;
}

std::u16string Swapped(std::u16string text)
{
  for (char16_t& c : text) {
    if (c >= u'a' && c <= u'z') {
      c = static_cast<char16_t>(c - u'a' + u'A');
    } else if (c >= u'A' && c <= u'Z') {
      c = static_cast<char16_t>(c - u'A' + u'a');
    }
  }
  return text;
}

TEST(MonitorProgramPathTest, MonitorLivesBesideTheRunningExecutable)
{
  const std::u16string monitor = ThisMonitor();
  const std::u16string tail = std::u16string(1, kSysPathSeparator) + u"ctellmon.exe";
  ASSERT_GT(monitor.size(), tail.size());
  EXPECT_EQ(monitor.substr(monitor.size() - tail.size()), tail);
  // The directory is the one this test program runs from.
  const std::filesystem::path directory = std::filesystem::path(monitor).parent_path();
  std::u16string executable;
  ASSERT_EQ(SysGetModulePath(&executable), kStatusSuccess);
  EXPECT_EQ(std::filesystem::path(executable).parent_path(), directory);
  EXPECT_TRUE(std::filesystem::exists(executable));
}

TEST(MonitorProgramPathTest, EverythingAfterTheLastSeparatorIsReplaced)
{
  const std::u16string s(1, kSysPathSeparator);
  EXPECT_EQ(
      MonitorProgramPathBeside(u"C:" + s + u"Program Files" + s + u"Cryptelle" + s + u"ctell.exe"),
      u"C:" + s + u"Program Files" + s + u"Cryptelle" + s + u"ctellmon.exe");
  EXPECT_EQ(MonitorProgramPathBeside(s + u"app" + s), s + u"app" + s + u"ctellmon.exe");
}

TEST(MonitorProgramPathTest, PathWithoutSeparatorIsLeftUnchanged)
{
  EXPECT_EQ(MonitorProgramPathBeside(u"ctell.exe"), u"ctell.exe");
}

TEST_P(AutostartTest, EnablingStoresTheQuotedMonitorPathAsTerminatedString)
{
  EXPECT_EQ(WriteAutostartValue(true), kStatusSuccess);
  ExpectString(kRunKey, u"PellmoraCryptelleMonitor", u"\"" + ThisMonitor() + u"\"");
  EXPECT_EQ(Store().ValueNames(kRunKey).size(), 1u);
  bool enabled = false;
  EXPECT_EQ(ReadAutostartEnabled(&enabled), kStatusSuccess);
  EXPECT_TRUE(enabled);
}

TEST_P(AutostartTest, DisablingDeletesTheValueAndLeavesOthers)
{
  Store().Put(kRunKey, u"SomethingElse", 1, StringBytes(u"other.exe"));
  WriteAutostartValue(true);
  EXPECT_EQ(WriteAutostartValue(false), kStatusSuccess);
  EXPECT_FALSE(Store().Get(kRunKey, u"PellmoraCryptelleMonitor").has_value());
  EXPECT_TRUE(Store().Get(kRunKey, u"SomethingElse").has_value());
  bool enabled = true;
  ReadAutostartEnabled(&enabled);
  EXPECT_FALSE(enabled);
}

TEST_P(AutostartTest, ValueNamingAnotherInstallationIsNotOurs)
{
  const std::u16string s(1, kSysPathSeparator);
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 1,
              StringBytes(u"\"" + s + u"elsewhere" + s + u"ctellmon.exe\""));
  std::u16string value;
  EXPECT_EQ(ReadAutostartValue(&value), kStatusSuccess);
  EXPECT_EQ(value, u"\"" + s + u"elsewhere" + s + u"ctellmon.exe\"");
  bool enabled = true;
  ReadAutostartEnabled(&enabled);
  EXPECT_FALSE(enabled);
  // Applying with the box unchecked deletes it.
  WriteAutostartValue(false);
  EXPECT_FALSE(Store().Get(kRunKey, u"PellmoraCryptelleMonitor").has_value());
}

TEST_P(AutostartTest, ValueDifferingOnlyInCaseIsNotOurs)
{
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 1,
              StringBytes(u"\"" + Swapped(ThisMonitor()) + u"\""));
  bool enabled = true;
  EXPECT_EQ(ReadAutostartEnabled(&enabled), kStatusSuccess);
  EXPECT_FALSE(enabled);
}

TEST_P(AutostartTest, UnquotedPathIsNotOurs)
{
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 1, StringBytes(ThisMonitor()));
  bool enabled = true;
  ReadAutostartEnabled(&enabled);
  EXPECT_FALSE(enabled);
}

TEST_P(AutostartTest, ExpandableStringWithOurPathIsOurs)
{
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 2, StringBytes(u"\"" + ThisMonitor() + u"\""));
  bool enabled = false;
  ReadAutostartEnabled(&enabled);
  EXPECT_TRUE(enabled);
}

TEST_P(AutostartTest, OurPathStoredAsBinaryIsNotOurs)
{
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 3, StringBytes(u"\"" + ThisMonitor() + u"\""));
  std::u16string value = u"x";
  ReadAutostartValue(&value);
  EXPECT_TRUE(value.empty());
  bool enabled = true;
  ReadAutostartEnabled(&enabled);
  EXPECT_FALSE(enabled);
}

TEST_P(AutostartTest, ValueLongerThan520BytesIsNotRead)
{
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 1, StringBytes(std::u16string(260, u'x')));
  std::u16string value = u"x";
  ReadAutostartValue(&value);
  EXPECT_TRUE(value.empty());
  Store().Put(kRunKey, u"PellmoraCryptelleMonitor", 1, StringBytes(std::u16string(259, u'x')));
  ReadAutostartValue(&value);
  EXPECT_EQ(value, std::u16string(259, u'x'));
}

TEST_P(AutostartTest, MissingRunKeyReadsAsDisabledWithoutCreatingIt)
{
  bool enabled = true;
  EXPECT_EQ(ReadAutostartEnabled(&enabled), kSysNotFound);
  EXPECT_FALSE(enabled);
  EXPECT_FALSE(Store().KeyExists(kRunKey));
}

}  // namespace
