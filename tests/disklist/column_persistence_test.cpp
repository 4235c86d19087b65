// The column layout kept between runs, over the in-memory settings store.
#include <gtest/gtest.h>

#include "disklist/column_model.h"
#include "settings/memory_store.h"

namespace {

const char16_t kAppKey[] = u"Software\\Pellmora\\Cryptelle\\1.0";

struct StoredValue {
  uint32_t type = 0;
  std::vector<uint8_t> data;
};

class ColumnPersistenceTest : public ::testing::Test {
 protected:
  void SetUp() override { previous_ = SetSettingsBackend(&store_); }
  void TearDown() override { SetSettingsBackend(previous_); }

  void Put(const char16_t* name, uint32_t type, const std::vector<uint8_t>& data)
  {
    ASSERT_EQ(AppKey()->SetValue(name, type, data.data(), static_cast<uint32_t>(data.size())),
              kStatusSuccess);
  }

  StoredValue Get(const char16_t* name)
  {
    StoredValue value;
    value.data.resize(64);
    uint32_t size = static_cast<uint32_t>(value.data.size());
    EXPECT_EQ(AppKey()->QueryValue(name, &value.type, value.data.data(), &size), kStatusSuccess);
    value.data.resize(size);
    return value;
  }

  MemorySettingsBackend store_;

 private:
  SettingsKeyPtr AppKey()
  {
    SettingsKeyPtr root;
    SettingsKeyPtr key;
    EXPECT_EQ(store_.OpenUserRoot(&root), kStatusSuccess);
    EXPECT_EQ(root->CreateSubKey(kAppKey, &key), kStatusSuccess);
    return key;
  }

  SettingsBackend* previous_ = nullptr;
};

std::vector<uint8_t> Dword(uint32_t value)
{
  return {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
          static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)};
}

TEST_F(ColumnPersistenceTest, FirstRunShowsMountPointCapacityImagePathSortedByMountPoint)
{
  ColumnModel model;
  EXPECT_EQ(model.Load(), kStatusSuccess);
  EXPECT_EQ(model.VisibleColumns(), 11u);
  EXPECT_EQ(model.SortColumn(), 1);
  const ColumnRebuildPlan plan = model.Rebuild(0);
  ASSERT_EQ(plan.insertions.size(), 3u);
  EXPECT_EQ(plan.insertions[0].column, DiskColumn::kMountPoint);
  EXPECT_EQ(plan.insertions[0].width, 80);
  EXPECT_EQ(plan.insertions[1].column, DiskColumn::kCapacity);
  EXPECT_EQ(plan.insertions[1].width, 60);
  EXPECT_EQ(plan.insertions[2].column, DiskColumn::kImagePath);
  EXPECT_EQ(plan.insertions[2].width, 200);
  EXPECT_EQ(plan.sortArrowIndex, 0u);
  EXPECT_EQ(plan.sortArrowFormat, kHeaderSortDown);
}

TEST_F(ColumnPersistenceTest, ASortColumnStoredAsTextIsIgnored)
{
  Put(u"SortColumn", kValueString, {u'8', 0, 0, 0});
  ColumnModel model;
  model.Load();
  EXPECT_EQ(model.SortColumn(), 1);
}

TEST_F(ColumnPersistenceTest, ASortColumnStoredAsDwordIsTaken)
{
  Put(u"SortColumn", kValueDword, Dword(static_cast<uint32_t>(-8)));
  ColumnModel model;
  model.Load();
  EXPECT_EQ(model.SortColumn(), -8);
  EXPECT_EQ(model.Rebuild(0).sortArrowFormat, kHeaderSortUp);
}

TEST_F(ColumnPersistenceTest, VisibleColumnsStoredWithAnotherTypeIsStillRead)
{
  Put(u"VisibleColumns", kValueBinary, {0x15, 0, 0, 0});
  ColumnModel model;
  model.Load();
  EXPECT_EQ(model.VisibleColumns(), 0x15u);
}

TEST_F(ColumnPersistenceTest, ColumnPosIsReadWithoutTypeCheck)
{
  std::vector<uint8_t> bytes;
  for (uint16_t column = 0; column < kListColumnCount; ++column) {
    for (const uint16_t number :
         {static_cast<uint16_t>(100 + column), static_cast<uint16_t>(6 - column)}) {
      bytes.push_back(static_cast<uint8_t>(number));
      bytes.push_back(static_cast<uint8_t>(number >> 8));
    }
  }
  Put(u"ColumnPos", kValueDword, bytes);
  ColumnModel model;
  model.Load();
  EXPECT_EQ(model.Layout().columns[3].width, 103);
  EXPECT_EQ(model.Layout().columns[3].order, 3);
  EXPECT_EQ(model.Rebuild(0).insertions[2].width, 103);
}

TEST_F(ColumnPersistenceTest, AStoredMaskWithoutAnyColumnShowsTheFirstRunColumns)
{
  Put(u"VisibleColumns", kValueDword, Dword(0x180));
  ColumnModel model;
  model.Load();
  EXPECT_EQ(model.VisibleColumns(), 11u);
}

TEST_F(ColumnPersistenceTest, AStoredSortColumnThatIsHiddenFallsBackAtTheFirstBuild)
{
  Put(u"VisibleColumns", kValueDword, Dword(11));
  Put(u"SortColumn", kValueDword, Dword(static_cast<uint32_t>(-16)));
  ColumnModel model;
  model.Load();
  EXPECT_EQ(model.Rebuild(0).sortArrowIndex, 0u);
  EXPECT_EQ(model.SortColumn(), 1);
}

TEST_F(ColumnPersistenceTest, SaveWritesColumnPosAndTwoDwordsThatTheNextRunReads)
{
  ColumnModel model;
  model.Rebuild(0);
  model.SetVisibleColumns(11 | 4, 3);  // Free Space to the right end
  model.ClickHeader(1, kHeaderLeftButton, 4);
  model.ClickHeader(1, kHeaderLeftButton, 4);  // Capacity descending
  model.StoreHeaderItem(3, 210, 2);            // Image Path resized
  EXPECT_EQ(model.Save(), kStatusSuccess);

  const StoredValue columns = Get(u"ColumnPos");
  EXPECT_EQ(columns.type, kValueBinary);
  EXPECT_EQ(columns.data, (std::vector<uint8_t>{80, 0, 0,  0, 60, 0, 1,  0, 72, 0, 3,  0, 210, 0,
                                                2,  0, 60, 0, 4,  0, 80, 0, 5,  0, 80, 0, 6,   0}));
  const StoredValue visible = Get(u"VisibleColumns");
  EXPECT_EQ(visible.type, kValueDword);
  EXPECT_EQ(visible.data, Dword(15));
  const StoredValue sort = Get(u"SortColumn");
  EXPECT_EQ(sort.type, kValueDword);
  EXPECT_EQ(sort.data, Dword(0xFFFFFFFE));

  ColumnModel nextRun;
  nextRun.Load();
  EXPECT_EQ(nextRun.VisibleColumns(), 15u);
  EXPECT_EQ(nextRun.SortColumn(), -2);
  EXPECT_EQ(ColumnOrderArray(nextRun.Rebuild(0)), (std::vector<int32_t>{0, 1, 3, 2}));
}

TEST_F(ColumnPersistenceTest, AStoreThatCannotBeOpenedLeavesTheLayoutAsItWas)
{
  Put(u"VisibleColumns", kValueDword, Dword(0x7F));
  store_.FailKeyOpens(5);  // access denied
  ColumnModel model;
  EXPECT_TRUE(IsFailure(model.Load()));
  EXPECT_EQ(model.VisibleColumns(), 11u);
  EXPECT_EQ(model.SortColumn(), 1);
  EXPECT_TRUE(IsFailure(model.Save()));
}

}  // namespace
