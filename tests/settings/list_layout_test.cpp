#include "settings/list_layout.h"

#include <gtest/gtest.h>

#include "settings/memory_store.h"
#include "settings_fixture.h"

namespace {

using ListLayoutTest = SettingsTest;
INSTANTIATE_FOR_EVERY_STORE(ListLayoutTest);

std::vector<uint8_t> ColumnBytes(const std::vector<uint16_t>& pairs)
{
  std::vector<uint8_t> bytes;
  for (const uint16_t number : pairs) {
    bytes.push_back(static_cast<uint8_t>(number & 0xFF));
    bytes.push_back(static_cast<uint8_t>(number >> 8));
  }
  return bytes;
}

void ExpectDefaultColumns(const ListLayout& layout)
{
  const uint16_t widths[] = {80, 60, 72, 200, 60, 80, 80};
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    EXPECT_EQ(layout.columns[column].width, widths[column]) << "column " << column;
    EXPECT_EQ(layout.columns[column].order, column) << "column " << column;
  }
}

TEST_P(ListLayoutTest, FirstRunShowsMountPointCapacityImagePathSortedByMountPointAscending)
{
  ListLayout layout;
  EXPECT_EQ(ReadListLayout(&layout), kStatusSuccess);
  ExpectDefaultColumns(layout);
  EXPECT_EQ(layout.visibleColumns, 11u);
  EXPECT_EQ(layout.sortColumn, 1);
  EXPECT_TRUE(Store().KeyExists(kAppKey));
}

TEST_P(ListLayoutTest, LayoutIsWrittenAsColumnPosBinaryAndTwoDwords)
{
  ListLayout layout;
  layout.columns[3] = {0x1234, 6};
  layout.columns[6] = {90, 3};
  layout.visibleColumns = 0x7F;
  layout.sortColumn = -8;
  EXPECT_EQ(WriteListLayout(layout), kStatusSuccess);
  const std::optional<RawValue> columns = Store().Get(kAppKey, u"ColumnPos");
  ASSERT_TRUE(columns.has_value());
  EXPECT_EQ(columns->type, 3u);
  EXPECT_EQ(columns->data, ColumnBytes({80, 0, 60, 1, 72, 2, 0x1234, 6, 60, 4, 80, 5, 90, 3}));
  ExpectDword(kAppKey, u"VisibleColumns", 0x7F);
  ExpectDword(kAppKey, u"SortColumn", 0xFFFFFFF8);
  ListLayout read;
  EXPECT_EQ(ReadListLayout(&read), kStatusSuccess);
  EXPECT_EQ(read.columns[3].width, 0x1234);
  EXPECT_EQ(read.columns[3].order, 6);
  EXPECT_EQ(read.columns[6].order, 3);
  EXPECT_EQ(read.visibleColumns, 0x7Fu);
  EXPECT_EQ(read.sortColumn, -8);
}

TEST_P(ListLayoutTest, SortColumnStoredAsTextIsIgnored)
{
  Store().Put(kAppKey, u"SortColumn", 1, StringBytes(u"4"));  // 4 bytes of text
  ListLayout layout;
  layout.sortColumn = -2;
  EXPECT_EQ(ReadListLayout(&layout), kStatusSuccess);
  EXPECT_EQ(layout.sortColumn, -2);
}

TEST_P(ListLayoutTest, VisibleColumnsStoredWithAnotherTypeIsStillRead)
{
  Store().Put(kAppKey, u"VisibleColumns", 3, {0x15, 0, 0, 0});
  ListLayout layout;
  EXPECT_EQ(ReadListLayout(&layout), kStatusSuccess);
  EXPECT_EQ(layout.visibleColumns, 0x15u);
}

TEST_P(ListLayoutTest, ColumnPosIsReadWithoutTypeCheck)
{
  Store().Put(kAppKey, u"ColumnPos", 4,
              ColumnBytes({10, 6, 20, 5, 30, 4, 40, 3, 50, 2, 60, 1, 70, 0}));
  ListLayout layout;
  EXPECT_EQ(ReadListLayout(&layout), kStatusSuccess);
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    EXPECT_EQ(layout.columns[column].width, 10 * (column + 1));
    EXPECT_EQ(layout.columns[column].order, 6 - column);
  }
}

TEST_P(ListLayoutTest, ShortColumnPosReplacesOnlyTheColumnsItHolds)
{
  Store().Put(kAppKey, u"ColumnPos", 3, ColumnBytes({111, 2, 222, 0}));
  ListLayout layout;
  EXPECT_EQ(ReadListLayout(&layout), kStatusSuccess);
  EXPECT_EQ(layout.columns[0].width, 111);
  EXPECT_EQ(layout.columns[0].order, 2);
  EXPECT_EQ(layout.columns[1].width, 222);
  EXPECT_EQ(layout.columns[1].order, 0);
  EXPECT_EQ(layout.columns[2].width, 72);
  EXPECT_EQ(layout.columns[6].width, 80);
}

TEST_P(ListLayoutTest, ColumnPosLongerThan28BytesKeepsTheDefaults)
{
  std::vector<uint8_t> bytes = ColumnBytes({1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
  bytes.push_back(0);
  Store().Put(kAppKey, u"ColumnPos", 3, bytes);
  ListLayout layout;
  EXPECT_EQ(ReadListLayout(&layout), kStatusSuccess);
  ExpectDefaultColumns(layout);
}

TEST(ListLayoutOrderTest, LayoutIsWrittenColumnPosFirstThenVisibleColumnsThenSortColumn)
{
  MemorySettingsBackend store;
  SetSettingsBackend(&store);
  WriteListLayout(ListLayout{});
  SetSettingsBackend(nullptr);
  const std::vector<std::u16string> expected = {
      u"create " + kAppKey, u"set " + kAppKey + u":ColumnPos",
      u"set " + kAppKey + u":VisibleColumns", u"set " + kAppKey + u":SortColumn"};
  EXPECT_EQ(store.Journal(), expected);
}

}  // namespace
