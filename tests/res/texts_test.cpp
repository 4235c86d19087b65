#include "res/texts.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "res/resource.h"

namespace {

using Names = std::vector<std::u16string>;

}  // namespace

TEST(TextTable, IdsAreUniqueAndAscending)
{
  const auto table = TextTable();
  ASSERT_FALSE(table.empty());
  for (size_t i = 1; i < table.size(); ++i) {
    EXPECT_LT(table[i - 1].id, table[i].id) << "entry " << i;
  }
}

TEST(TextTable, NoTextIsEmpty)
{
  for (const TextEntry& entry : TextTable()) EXPECT_FALSE(entry.text.empty()) << entry.id;
}

TEST(TextTable, FindsEveryEntryAndNothingElse)
{
  for (const TextEntry& entry : TextTable()) {
    const std::u16string_view* text = FindTableText(entry.id);
    ASSERT_NE(text, nullptr) << entry.id;
    EXPECT_EQ(*text, entry.text);
  }
  EXPECT_EQ(FindTableText(0), nullptr);
  EXPECT_EQ(FindTableText(IDS_IDLE_MESSAGE), nullptr);
  EXPECT_EQ(FindTableText(ID_FILE_MRU_FIRST), nullptr);
}

// On Windows LoadText reads the program's string-table resource, elsewhere the compiled
// table: in both builds every id must give the table's text, character for character.
TEST(LoadText, GivesTheTableTextForEveryId)
{
  for (const TextEntry& entry : TextTable()) {
    EXPECT_EQ(LoadText(entry.id), std::u16string(entry.text)) << entry.id;
  }
}

TEST(LoadText, MissingIdGivesEmptyText)
{
  EXPECT_EQ(LoadText(IDS_IDLE_MESSAGE), u"");
  EXPECT_EQ(LoadText(1), u"");
  EXPECT_EQ(LoadText(65535), u"");
}

TEST(LoadText, KnownTextsAreSpelledAsTheProgramShowsThem)
{
  EXPECT_EQ(LoadText(IDR_MAINFRAME), u"Cryptelle");
  EXPECT_EQ(LoadText(IDS_CANNOT_MOUNT),
            u"Cannot mount %s.\nError code: %X\n\nPlease contact technical support if the "
            u"problem persists.");
  EXPECT_EQ(LoadText(IDS_FORMAT_DISK_NOW),
            u"Virtual disk %c: is not formatted. You need to format it before using.\n\n"
            u"Would you like to format it now?");
  EXPECT_EQ(LoadText(IDS_PASSWORD_CHANGED),
            u"Virtual disk image password has been successfuly changed.");
  EXPECT_EQ(LoadText(ID_APP_EXIT), u"Close application\nExit");
  EXPECT_EQ(LoadText(IDS_SECONDS), u"%u seconds");
}

TEST(LoadText, FilterListHoldsNamesAndPatternsEndedByTwoNuls)
{
  const std::u16string filter = LoadText(IDS_IMAGE_FILE_FILTER);
  static constexpr char16_t kExpected[] =
      u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*\0\0";
  const std::u16string expected(kExpected, std::size(kExpected) - 1);
  EXPECT_EQ(filter, expected);
  ASSERT_GE(filter.size(), 2u);
  EXPECT_EQ(filter[filter.size() - 1], u'\0');
  EXPECT_EQ(filter[filter.size() - 2], u'\0');
}

TEST(LoadText, ToolbarTextListSplitsIntoTheFiveButtonNames)
{
  EXPECT_EQ(SplitTextList(LoadText(IDS_TOOLBAR_TEXTS)),
            (Names{u"Create", u"Mount", u"Dismount", u"Dismount All", u"Options"}));
}

TEST(LoadText, ToolbarCommandsHavePromptAndToolTip)
{
  for (int id : {ID_FILE_NEW_IMAGE, ID_FILE_MOUNT_IMAGE, ID_FILE_DISMOUNT, ID_FILE_DISMOUNT_ALL,
                 ID_TOOLS_OPTIONS}) {
    const std::u16string text = LoadText(static_cast<unsigned>(id));
    const size_t newline = text.find(u'\n');
    ASSERT_NE(newline, std::u16string::npos) << id;
    EXPECT_GT(newline, 0u) << id;
    EXPECT_LT(newline + 1, text.size()) << id;
  }
}

TEST(SplitTextList, FirstCharacterIsTheSeparator)
{
  EXPECT_EQ(SplitTextList(u";a;b c;d;"), (Names{u"a", u"b c", u"d"}));
  EXPECT_EQ(SplitTextList(u"|a|b"), (Names{u"a", u"b"}));
}

TEST(SplitTextList, EmptyNameEndsTheList)
{
  EXPECT_EQ(SplitTextList(u"|a||b|"), (Names{u"a"}));
  EXPECT_EQ(SplitTextList(u"||a|"), Names{});
}

TEST(SplitTextList, EmptyOrSeparatorOnlyGivesNoNames)
{
  EXPECT_EQ(SplitTextList(u""), Names{});
  EXPECT_EQ(SplitTextList(u"|"), Names{});
}
