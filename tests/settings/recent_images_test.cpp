#include "settings/recent_images.h"

#include <gtest/gtest.h>

#include "settings/memory_store.h"
#include "settings/options.h"
#include "settings_fixture.h"

namespace {

using RecentImagesTest = SettingsTest;
INSTANTIATE_FOR_EVERY_STORE(RecentImagesTest);

std::u16string DocumentName(int number)
{
  std::u16string name = u"Document";
  for (const char c : std::to_string(number)) name += static_cast<char16_t>(c);
  return name;
}

RecentImageList ListOf(uint32_t maximum, std::vector<std::u16string> entries)
{
  RecentImageList list;
  list.maximum = maximum;
  list.entries = std::move(entries);
  return list;
}

using Entries = std::vector<std::u16string>;

TEST_P(RecentImagesTest, DocumentCountBelowTwoGivesTwo)
{
  for (const uint32_t count : {0u, 1u}) {
    Store().Put(kListKey, u"DocumentCount", 4, DwordBytes(count));
    RecentImageList list;
    EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kStatusSuccess);
    EXPECT_EQ(list.maximum, 2u) << "count " << count;
  }
}

TEST_P(RecentImagesTest, DocumentCountAboveSixteenGivesSixteen)
{
  Store().Put(kListKey, u"DocumentCount", 4, DwordBytes(40));
  RecentImageList list;
  EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kStatusSuccess);
  EXPECT_EQ(list.maximum, 16u);
}

TEST_P(RecentImagesTest, DocumentCountWithinRangeIsKept)
{
  Store().Put(kListKey, u"DocumentCount", 4, DwordBytes(9));
  RecentImageList list;
  ReadRecentList(&list, kMruKey.c_str());
  EXPECT_EQ(list.maximum, 9u);
}

TEST_P(RecentImagesTest, DocumentCountStoredAsStringKeepsTheCurrentListUntouched)
{
  Store().Put(kListKey, u"DocumentCount", 1, StringBytes(u"8"));
  Store().Put(kListKey, u"Document1", 1, StringBytes(u"C:\\stored.qvi"));
  RecentImageList list = ListOf(3, {u"C:\\a.qvi", u"C:\\b.qvi"});
  EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kStatusSuccess);
  EXPECT_EQ(list.maximum, 3u);
  EXPECT_EQ(list.entries, (Entries{u"C:\\a.qvi", u"C:\\b.qvi"}));
}

TEST_P(RecentImagesTest, MissingKeysKeepTheCurrentListAndAreNotCreated)
{
  RecentImageList list = ListOf(3, {u"C:\\a.qvi"});
  EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kSysNotFound);
  EXPECT_EQ(list.entries, Entries{u"C:\\a.qvi"});
  EXPECT_FALSE(Store().KeyExists(kMruKey));
  Store().Put(kMruKey, u"Other", 4, DwordBytes(1));  // the parent alone
  EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kSysNotFound);
  EXPECT_EQ(list.entries, Entries{u"C:\\a.qvi"});
  EXPECT_FALSE(Store().KeyExists(kListKey));
}

TEST_P(RecentImagesTest, DocumentOneIsReadAsTheNewestEntry)
{
  Store().Put(kListKey, u"DocumentCount", 4, DwordBytes(4));
  Store().Put(kListKey, u"Document1", 1, StringBytes(u"C:\\newest.qvi"));
  Store().Put(kListKey, u"Document2", 1, StringBytes(u"C:\\middle.qvi"));
  Store().Put(kListKey, u"Document3", 1, StringBytes(u"C:\\oldest.qvi"));
  Store().Put(kListKey, u"Document5", 1, StringBytes(u"C:\\beyond.qvi"));  // above the maximum
  RecentImageList list = ListOf(4, {u"C:\\replaced.qvi"});
  EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kStatusSuccess);
  EXPECT_EQ(list.entries, (Entries{u"C:\\oldest.qvi", u"C:\\middle.qvi", u"C:\\newest.qvi"}));
}

TEST_P(RecentImagesTest, OnlyTerminatedStringsOfEvenSizeAreReadAsEntries)
{
  Store().Put(kListKey, u"DocumentCount", 4, DwordBytes(16));
  Store().Put(kListKey, u"Document1", 2, StringBytes(u"C:\\expand.qvi"));  // REG_EXPAND_SZ
  Store().Put(kListKey, u"Document2", 3, StringBytes(u"C:\\binary.qvi"));  // REG_BINARY
  Store().Put(kListKey, u"Document3", 1, StringBytes(u"C:\\open.qvi", false));
  std::vector<uint8_t> odd = StringBytes(u"C:\\odd.qvi");
  odd.push_back(0);
  Store().Put(kListKey, u"Document4", 1, odd);
  Store().Put(kListKey, u"Document5", 1, {});  // empty value
  Store().Put(kListKey, u"Document6", 1, StringBytes(std::u16string(259, u'x')));
  Store().Put(kListKey, u"Document7", 1, StringBytes(std::u16string(260, u'y')));  // 522 bytes
  Store().Put(kListKey, u"Document8", 4, DwordBytes(0));                           // REG_DWORD
  Store().Put(kListKey, u"Document16", 1, StringBytes(u"C:\\sixteen.qvi"));
  RecentImageList list;
  EXPECT_EQ(ReadRecentList(&list, kMruKey.c_str()), kStatusSuccess);
  EXPECT_EQ(list.maximum, 16u);
  EXPECT_EQ(list.entries,
            (Entries{u"C:\\sixteen.qvi", std::u16string(259, u'x'), u"", u"C:\\expand.qvi"}));
}

TEST_P(RecentImagesTest, ListIsWrittenNewestFirstAsTerminatedStrings)
{
  const RecentImageList list = ListOf(5, {u"C:\\old.qvi", u"D:\\mid.qvi", u"E:\\new.qvi"});
  EXPECT_EQ(WriteRecentList(list, kMruKey.c_str()), kStatusSuccess);
  ExpectDword(kListKey, u"DocumentCount", 5);
  ExpectString(kListKey, u"Document1", u"E:\\new.qvi");
  ExpectString(kListKey, u"Document2", u"D:\\mid.qvi");
  ExpectString(kListKey, u"Document3", u"C:\\old.qvi");
  EXPECT_EQ(Store().ValueNames(kListKey).size(), 4u);
  EXPECT_TRUE(Store().ValueNames(kMruKey).empty());
  RecentImageList read;
  EXPECT_EQ(ReadRecentList(&read, kMruKey.c_str()), kStatusSuccess);
  EXPECT_EQ(read.maximum, 5u);
  EXPECT_EQ(read.entries, list.entries);
}

TEST_P(RecentImagesTest, AfterAListOfThreeIsWrittenNumbersFourToFifteenDoNotExist)
{
  for (int number = 1; number <= 15; ++number) {
    Store().Put(kListKey, DocumentName(number), 1, StringBytes(u"C:\\stale.qvi"));
  }
  WriteRecentList(ListOf(16, {u"C:\\1.qvi", u"C:\\2.qvi", u"C:\\3.qvi"}), kMruKey.c_str());
  for (int number = 1; number <= 3; ++number) {
    EXPECT_TRUE(Store().Get(kListKey, DocumentName(number)).has_value());
  }
  for (int number = 4; number <= 15; ++number) {
    EXPECT_FALSE(Store().Get(kListKey, DocumentName(number)).has_value()) << number;
  }
}

TEST_P(RecentImagesTest, MountingAFifthImageIntoAFullListOfFourDropsTheOldest)
{
  RecentImageList list = ListOf(4, {u"C:\\1.qvi", u"C:\\2.qvi", u"C:\\3.qvi", u"C:\\4.qvi"});
  EXPECT_EQ(AddRecentImage(&list, u"C:\\5.qvi"), kStatusSuccess);
  EXPECT_EQ(list.entries, (Entries{u"C:\\2.qvi", u"C:\\3.qvi", u"C:\\4.qvi", u"C:\\5.qvi"}));
  ExpectDword(kListKey, u"DocumentCount", 4);
  ExpectString(kListKey, u"Document1", u"C:\\5.qvi");
  ExpectString(kListKey, u"Document4", u"C:\\2.qvi");
  EXPECT_FALSE(Store().Get(kListKey, u"Document5").has_value());
}

TEST_P(RecentImagesTest, MountingAListedImageInOtherCaseMovesItToTheTopWithTheNewSpelling)
{
  RecentImageList list =
      ListOf(4, {u"C:\\Images\\Alpha.qvi", u"C:\\Images\\Beta.qvi", u"C:\\Images\\Gamma.qvi"});
  EXPECT_EQ(AddRecentImage(&list, u"c:\\IMAGES\\alpha.QVI"), kStatusSuccess);
  EXPECT_EQ(list.entries,
            (Entries{u"C:\\Images\\Beta.qvi", u"C:\\Images\\Gamma.qvi", u"c:\\IMAGES\\alpha.QVI"}));
  ExpectString(kListKey, u"Document1", u"c:\\IMAGES\\alpha.QVI");
  ExpectString(kListKey, u"Document3", u"C:\\Images\\Beta.qvi");
  EXPECT_FALSE(Store().Get(kListKey, u"Document4").has_value());
}

TEST_P(RecentImagesTest, ListedImageInAFullListIsMovedWithoutDroppingAnother)
{
  RecentImageList list = ListOf(2, {u"C:\\a.qvi", u"C:\\b.qvi"});
  AddRecentImage(&list, u"C:\\A.QVI");
  EXPECT_EQ(list.entries, (Entries{u"C:\\b.qvi", u"C:\\A.QVI"}));
}

TEST_P(RecentImagesTest, CaseIsIgnoredBeyondAscii)
{
  RecentImageList list = ListOf(4, {u"C:\\Ärger\\Öl.qvi"});
  AddRecentImage(&list, u"c:\\ärger\\öl.qvi");
  EXPECT_EQ(list.entries, Entries{u"c:\\ärger\\öl.qvi"});
}

TEST_P(RecentImagesTest, WithPrivacyModeSetAMountLeavesTheMruKeyUntouched)
{
  Store().Put(kAppKey, u"PrivacyMode", 4, DwordBytes(1));
  Store().Put(kListKey, u"DocumentCount", 4, DwordBytes(4));
  Store().Put(kListKey, u"Document1", 1, StringBytes(u"C:\\kept.qvi"));
  RecentImageList list = ListOf(4, {u"C:\\kept.qvi"});
  EXPECT_EQ(AddRecentImage(&list, u"C:\\secret.qvi"), kStatusSuccess);
  EXPECT_EQ(list.entries, Entries{u"C:\\kept.qvi"});
  EXPECT_EQ(Store().ValueNames(kListKey).size(), 2u);
  ExpectString(kListKey, u"Document1", u"C:\\kept.qvi");
  ExpectDword(kListKey, u"DocumentCount", 4);
}

TEST_P(RecentImagesTest, WithPrivacyModeSetAFirstMountCreatesNoMruKey)
{
  Store().Put(kAppKey, u"PrivacyMode", 3, {2, 0, 0, 0});  // any 4-byte type counts
  RecentImageList list;
  AddRecentImage(&list, u"C:\\secret.qvi");
  EXPECT_TRUE(list.entries.empty());
  EXPECT_FALSE(Store().KeyExists(kMruKey));
}

TEST_P(RecentImagesTest, WithoutPrivacyModeAFirstMountCreatesTheList)
{
  RecentImageList list;
  EXPECT_EQ(AddRecentImage(&list, u"C:\\first.qvi"), kStatusSuccess);
  ExpectDword(kListKey, u"DocumentCount", 4);
  ExpectString(kListKey, u"Document1", u"C:\\first.qvi");
  EXPECT_TRUE(Store().KeyExists(kAppKey));
}

TEST_P(RecentImagesTest, PathLongerThan259CharactersIsNotRecorded)
{
  RecentImageList list;
  EXPECT_EQ(AddRecentImage(&list, std::u16string(260, u'p').c_str()), kSysInvalidParameter);
  EXPECT_TRUE(list.entries.empty());
  EXPECT_FALSE(Store().KeyExists(kMruKey));
  EXPECT_EQ(AddRecentImage(&list, std::u16string(259, u'p').c_str()), kStatusSuccess);
  ExpectString(kListKey, u"Document1", std::u16string(259, u'p'));
}

TEST_P(RecentImagesTest, ClearingKeepsDocumentCountAndDeletesEveryEntry)
{
  RecentImageList list = ListOf(6, {u"C:\\1.qvi", u"C:\\2.qvi", u"C:\\3.qvi"});
  WriteRecentList(list, kMruKey.c_str());
  EXPECT_EQ(ClearRecentList(&list), kStatusSuccess);
  EXPECT_TRUE(list.entries.empty());
  EXPECT_EQ(Store().ValueNames(kListKey), std::vector<std::u16string>{u"DocumentCount"});
  ExpectDword(kListKey, u"DocumentCount", 6);
}

TEST(RecentImagesJournalTest, WithPrivacyModeSetAMountChangesNothingInTheStore)
{
  MemorySettingsBackend store;
  SetSettingsBackend(&store);
  WriteRecentList(ListOf(4, {u"C:\\kept.qvi"}), kRecentListKeyPath);
  GeneralOptions options;
  options.privacy = 1;
  WriteGeneralOptions(options);
  store.ClearJournal();
  RecentImageList list = ListOf(4, {u"C:\\kept.qvi"});
  AddRecentImage(&list, u"C:\\secret.qvi");
  SetSettingsBackend(nullptr);
  // Only the application key is opened to read the privacy value.
  EXPECT_EQ(store.Journal(), std::vector<std::u16string>{u"create " + kAppKey});
}

TEST(RecentImagesJournalTest, ListIsWrittenCountFirstThenNewestDownThenDeletions)
{
  MemorySettingsBackend store;
  SetSettingsBackend(&store);
  WriteRecentList(ListOf(4, {u"C:\\old.qvi", u"C:\\new.qvi"}), kRecentListKeyPath);
  SetSettingsBackend(nullptr);
  std::vector<std::u16string> expected = {
      u"create " + kMruKey, u"create " + kListKey, u"set " + kListKey + u":DocumentCount",
      u"set " + kListKey + u":Document2", u"set " + kListKey + u":Document1"};
  for (int number = 3; number <= 15; ++number) {
    expected.push_back(u"delete " + kListKey + u":" + DocumentName(number));
  }
  EXPECT_EQ(store.Journal(), expected);
}

}  // namespace
