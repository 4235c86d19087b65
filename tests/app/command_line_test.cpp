#include "app/command_line.h"

#include <gtest/gtest.h>

namespace {

StartRequest Read(std::vector<std::u16string> switches)
{
  switches.insert(switches.begin(), u"C:\\Program Files\\Cryptelle\\ctell.exe");
  return ReadStartRequest(switches);
}

void ExpectAction(const StartRequest& request, StartAction action,
                  const std::u16string& argument = {}, uint32_t forced = 0)
{
  EXPECT_EQ(request.action, action);
  EXPECT_EQ(request.argument, argument);
  EXPECT_EQ(request.forced, forced);
}

}  // namespace

TEST(StartRequest, NoArgumentStartsInteractively)
{
  ExpectAction(Read({}), StartAction::kInteractive);
}

TEST(StartRequest, AnEmptyListStartsInteractively)
{
  ExpectAction(ReadStartRequest({}), StartAction::kInteractive);
}

TEST(StartRequest, NotifyInAnyAsciiCase)
{
  ExpectAction(Read({u"/notify"}), StartAction::kNotify);
  ExpectAction(Read({u"/NOTIFY"}), StartAction::kNotify);
  ExpectAction(Read({u"/NoTiFy"}), StartAction::kNotify);
}

TEST(StartRequest, NotifyIgnoresWhatFollows)
{
  ExpectAction(Read({u"/notify", u"/dismount", u"all"}), StartAction::kNotify);
}

TEST(StartRequest, NotifyWithAMinusSignIsUnknown)
{
  ExpectAction(Read({u"-notify"}), StartAction::kReject);
}

TEST(StartRequest, OnlyAsciiLettersAreFolded)
{
  // U+0130 (capital I with dot above) and U+212A (Kelvin sign) fold to 'i' and 'k' in some
  // locales; here they stay different letters.
  ExpectAction(Read({u"/not\u0130fy"}), StartAction::kReject);
  ExpectAction(Read({u"/mount", u"a.qvi"}), StartAction::kMount, u"a.qvi");
  ExpectAction(Read({u"/dismount", u"\u0430ll"}), StartAction::kDismountMountPoint, u"\u0430ll");
  EXPECT_FALSE(EqualsIgnoringAsciiCase(u"\u212a", u"k"));
  EXPECT_TRUE(EqualsIgnoringAsciiCase(u"/FORCED", u"/forced"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase(u"/force", u"/forced"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase(u"/forcedx", u"/forced"));
}

TEST(StartRequest, DismountAllNotForced)
{
  ExpectAction(Read({u"/dismount", u"all"}), StartAction::kDismountAll);
}

TEST(StartRequest, DismountAllInUpperCase)
{
  ExpectAction(Read({u"/DISMOUNT", u"ALL"}), StartAction::kDismountAll);
}

TEST(StartRequest, DismountAllForced)
{
  ExpectAction(Read({u"/dismount", u"all", u"/forced"}), StartAction::kDismountAll, {}, 1);
  ExpectAction(Read({u"/dismount", u"All", u"/FORCED"}), StartAction::kDismountAll, {}, 1);
}

TEST(StartRequest, DismountMountPointAsTyped)
{
  ExpectAction(Read({u"/dismount", u"p:"}), StartAction::kDismountMountPoint, u"p:");
  ExpectAction(Read({u"/dismount", u"Q:\\"}), StartAction::kDismountMountPoint, u"Q:\\");
}

TEST(StartRequest, DismountMountPointForced)
{
  ExpectAction(Read({u"/dismount", u"P:", u"/forced"}), StartAction::kDismountMountPoint, u"P:", 1);
}

TEST(StartRequest, FiveArgumentsAreNeverForced)
{
  ExpectAction(Read({u"/dismount", u"P:", u"/forced", u"more"}), StartAction::kDismountMountPoint,
               u"P:", 0);
  ExpectAction(Read({u"/dismount", u"all", u"/forced", u"/forced"}), StartAction::kDismountAll, {},
               0);
}

TEST(StartRequest, ForcedCountsOnlyAsTheFourthEntry)
{
  ExpectAction(Read({u"/dismount", u"P:", u"/forcedly"}), StartAction::kDismountMountPoint, u"P:",
               0);
  ExpectAction(Read({u"/dismount", u"/forced", u"P:"}), StartAction::kDismountMountPoint,
               u"/forced", 0);
}

TEST(StartRequest, DismountWithoutATargetDoesNothing)
{
  ExpectAction(Read({u"/dismount"}), StartAction::kReject);
}

TEST(StartRequest, MountTakesThePathAndIgnoresWhatFollows)
{
  ExpectAction(Read({u"/mount", u"D:\\Images\\My Disk.qvi"}), StartAction::kMount,
               u"D:\\Images\\My Disk.qvi");
  ExpectAction(Read({u"/MOUNT", u"a.qvi", u"/forced", u"x"}), StartAction::kMount, u"a.qvi");
}

TEST(StartRequest, MountWithoutAPathDoesNothing)
{
  ExpectAction(Read({u"/mount"}), StartAction::kReject);
}

TEST(StartRequest, AnythingElseDoesNothing)
{
  ExpectAction(Read({u"D:\\Images\\disk.qvi"}), StartAction::kReject);
  ExpectAction(Read({u"/forced"}), StartAction::kReject);
  ExpectAction(Read({u"all"}), StartAction::kReject);
  ExpectAction(Read({u""}), StartAction::kReject);
  ExpectAction(Read({u"/mounts", u"a.qvi"}), StartAction::kReject);
}
