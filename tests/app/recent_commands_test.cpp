// The recently mounted images in the File menu: which image each command mounts and the
// items' texts.
#include "app/recent_commands.h"

#include <gtest/gtest.h>

namespace {

RecentImageList ListOf(std::vector<std::u16string> oldestFirst)
{
  RecentImageList list;
  list.maximum = 16;
  list.entries = std::move(oldestFirst);
  return list;
}

}  // namespace

TEST(RecentCommandsTest, IndexIsTheCountLessTheCommandsPosition)
{
  EXPECT_EQ(RecentEntryIndex(4, 57616), 3u);
  EXPECT_EQ(RecentEntryIndex(4, 57617), 2u);
  EXPECT_EQ(RecentEntryIndex(4, 57619), 0u);
  EXPECT_EQ(RecentEntryIndex(16, 57631), 0u);
}

TEST(RecentCommandsTest, CommandsBeyondTheListOrOutsideTheRangeOpenNothing)
{
  EXPECT_EQ(RecentEntryIndex(4, 57620), std::nullopt);
  EXPECT_EQ(RecentEntryIndex(0, 57616), std::nullopt);
  EXPECT_EQ(RecentEntryIndex(4, 57615), std::nullopt);
  EXPECT_EQ(RecentEntryIndex(20, 57632), std::nullopt);
}

TEST(RecentCommandsTest, FirstCommandOpensTheNewestImage)
{
  const RecentImageList list = ListOf({u"C:\\old.qvi", u"C:\\middle.qvi", u"C:\\new.qvi"});
  EXPECT_EQ(RecentImageOfCommand(list, 57616), u"C:\\new.qvi");
  EXPECT_EQ(RecentImageOfCommand(list, 57618), u"C:\\old.qvi");
  EXPECT_EQ(RecentImageOfCommand(list, 57619), std::nullopt);
}

TEST(RecentCommandsTest, PathsOf260CharactersOrMoreAreNotMounted)
{
  const std::u16string longest(259, u'a');
  const RecentImageList list = ListOf({std::u16string(260, u'b'), longest});
  EXPECT_EQ(RecentImageOfCommand(list, 57616), longest);
  EXPECT_EQ(RecentImageOfCommand(list, 57617), std::nullopt);
}

TEST(RecentCommandsTest, MenuItemsAreNumberedNewestFirst)
{
  const RecentImageList list = ListOf({u"C:\\old.qvi", u"D:\\new.qvi"});
  const std::vector<RecentMenuItem> expected = {{57616, u"&1 D:\\new.qvi"},
                                                {57617, u"&2 C:\\old.qvi"}};
  EXPECT_EQ(RecentMenuItems(list), expected);
}

TEST(RecentCommandsTest, TenthItemOnTakesItsLastDigitAsMnemonic)
{
  std::vector<std::u16string> entries;
  for (int n = 0; n < 12; ++n) entries.push_back(u"C:\\i.qvi");
  const std::vector<RecentMenuItem> items = RecentMenuItems(ListOf(entries));
  ASSERT_EQ(items.size(), 12u);
  EXPECT_EQ(items[8].text, u"&9 C:\\i.qvi");
  EXPECT_EQ(items[9].text, u"1&0 C:\\i.qvi");
  EXPECT_EQ(items[11].command, 57627u);
  EXPECT_EQ(items[11].text, u"1&2 C:\\i.qvi");
}

TEST(RecentCommandsTest, EmptyListHasNoItems)
{
  EXPECT_TRUE(RecentMenuItems(ListOf({})).empty());
}

TEST(RecentCommandsTest, ShortPathsShowWhole)
{
  const std::u16string path = u"C:\\Users\\Ada\\Documents\\Work\\Private.qvi";
  EXPECT_EQ(RecentMenuPath(path), path);
}

TEST(RecentCommandsTest, LongPathsKeepTheirDriveAndLastFolders)
{
  EXPECT_EQ(
      RecentMenuPath(u"C:\\Users\\Ada\\Documents\\Projects\\2026\\Quarterly\\Reports\\Q1.qvi"),
      u"C:\\...\\Projects\\2026\\Quarterly\\Reports\\Q1.qvi");
  EXPECT_EQ(RecentMenuPath(u"\\\\server\\share\\department\\archive\\long folder name\\x.qvi"),
            u"\\\\server\\...\\archive\\long folder name\\x.qvi");
}

TEST(RecentCommandsTest, LongFileNameShowsWholeAfterTheDrive)
{
  const std::u16string name(60, u'n');
  EXPECT_EQ(RecentMenuPath(u"C:\\folder\\" + name), u"C:\\...\\" + name);
}
