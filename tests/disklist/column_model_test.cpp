#include "disklist/column_model.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kMountPoint = 1;
constexpr uint32_t kCapacity = 2;
constexpr uint32_t kFreeSpace = 4;
constexpr uint32_t kImagePath = 8;
constexpr uint32_t kAlgorithm = 16;
constexpr uint32_t kCreated = 32;
constexpr uint32_t kMounted = 64;

// One insertion as "column@index:order/width".
std::string Describe(const ColumnInsertion& insertion)
{
  return std::to_string(static_cast<uint32_t>(insertion.column)) + "@" +
         std::to_string(insertion.index) + ":" + std::to_string(insertion.order) + "/" +
         std::to_string(insertion.width);
}

std::vector<std::string> Insertions(const ColumnRebuildPlan& plan)
{
  std::vector<std::string> described;
  for (const ColumnInsertion& insertion : plan.insertions) {
    described.push_back(Describe(insertion));
  }
  return described;
}

std::vector<uint16_t> StoredOrders(const ColumnModel& model)
{
  std::vector<uint16_t> orders;
  for (const ColumnPlacement& placement : model.Layout().columns) orders.push_back(placement.order);
  return orders;
}

ListLayout LayoutShowing(uint32_t mask, int32_t sortColumn = 1)
{
  ListLayout layout;
  layout.visibleColumns = mask;
  layout.sortColumn = sortColumn;
  return layout;
}

// A model whose list shows all seven columns in their default order.
ColumnModel AllColumnsShown()
{
  return ColumnModel(LayoutShowing(0x7F));
}

TEST(ColumnModelTest, SortArrowFlagsAreTheHeadersValues)
{
  EXPECT_EQ(kHeaderSortDown, 0x0200u);
  EXPECT_EQ(kHeaderSortUp, 0x0400u);
}

TEST(ColumnModelTest, FirstRunBuildsMountPointCapacityImagePathSortedByMountPointAscending)
{
  ColumnModel model;
  EXPECT_EQ(model.VisibleColumns(), 11u);
  EXPECT_EQ(model.SortColumn(), 1);
  const ColumnRebuildPlan plan = model.Rebuild(0);
  EXPECT_TRUE(plan.deletions.empty());
  EXPECT_EQ(Insertions(plan), (std::vector<std::string>{"0@0:0/80", "1@1:1/60", "3@2:2/200"}));
  EXPECT_EQ(plan.insertions[0].titleId, 40086u);
  EXPECT_EQ(plan.insertions[1].titleId, 40087u);
  EXPECT_EQ(plan.insertions[2].titleId, 40089u);
  EXPECT_EQ(plan.sortArrowIndex, 0u);
  EXPECT_EQ(plan.sortArrowFormat, kHeaderSortDown);
  EXPECT_EQ(ColumnOrderArray(plan), (std::vector<int32_t>{0, 1, 2}));
}

TEST(ColumnModelTest, RebuildDeletesTheListsColumnsFromTheLastToTheFirst)
{
  ColumnModel model;
  EXPECT_EQ(model.Rebuild(3).deletions, (std::vector<uint32_t>{2, 1, 0}));
  EXPECT_EQ(model.Rebuild(1).deletions, (std::vector<uint32_t>{0}));
}

TEST(ColumnModelTest, ColumnIndexesCountTheVisibleColumnsInBitOrder)
{
  const ColumnModel model(LayoutShowing(kCapacity | kImagePath | kMounted));
  EXPECT_EQ(model.VisibleCount(), 3u);
  EXPECT_EQ(model.ColumnAtIndex(0), DiskColumn::kCapacity);
  EXPECT_EQ(model.ColumnAtIndex(1), DiskColumn::kImagePath);
  EXPECT_EQ(model.ColumnAtIndex(2), DiskColumn::kMounted);
  EXPECT_FALSE(model.ColumnAtIndex(3).has_value());
  EXPECT_EQ(model.IndexOfColumn(DiskColumn::kMounted), 2u);
  EXPECT_FALSE(model.IndexOfColumn(DiskColumn::kMountPoint).has_value());
}

TEST(ColumnModelTest, StoredOrdersWithGapsAreRankedAndStoredBack)
{
  ListLayout layout = LayoutShowing(kMountPoint | kImagePath | kMounted);
  layout.columns[0].order = 4;
  layout.columns[3].order = 9;
  layout.columns[6].order = 1;
  ColumnModel model(layout);
  const ColumnRebuildPlan plan = model.Rebuild(0);
  EXPECT_EQ(Insertions(plan), (std::vector<std::string>{"0@0:1/80", "3@1:2/200", "6@2:0/80"}));
  EXPECT_EQ(ColumnOrderArray(plan), (std::vector<int32_t>{2, 0, 1}));
  EXPECT_EQ(StoredOrders(model), (std::vector<uint16_t>{1, 1, 2, 2, 4, 5, 0}));
}

TEST(ColumnModelTest, RemovingAMiddleColumnClosesItsGapInTheDisplayOrders)
{
  ColumnModel model = AllColumnsShown();
  const std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(0x7F & ~kFreeSpace, 7);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.VisibleColumns(), 0x7Bu);
  EXPECT_EQ(plan->deletions, (std::vector<uint32_t>{6, 5, 4, 3, 2, 1, 0}));
  EXPECT_EQ(Insertions(*plan), (std::vector<std::string>{"0@0:0/80", "1@1:1/60", "3@2:2/200",
                                                         "4@3:3/60", "5@4:4/80", "6@5:5/80"}));
  // The hidden column keeps its order for later.
  EXPECT_EQ(StoredOrders(model), (std::vector<uint16_t>{0, 1, 2, 2, 3, 4, 5}));
}

TEST(ColumnModelTest, RemovingTheFirstDisplayedColumnMovesEveryOtherOneLeft)
{
  ListLayout layout = LayoutShowing(kMountPoint | kCapacity | kImagePath);
  layout.columns[0].order = 2;  // dragged to the right end
  layout.columns[1].order = 0;
  layout.columns[3].order = 1;
  ColumnModel model(layout);
  const std::optional<ColumnRebuildPlan> plan =
      model.SetVisibleColumns(kMountPoint | kImagePath, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(Insertions(*plan), (std::vector<std::string>{"0@0:1/80", "3@1:0/200"}));
  EXPECT_EQ(model.Layout().columns[1].order, 0);  // the removed column keeps its order
}

TEST(ColumnModelTest, RemovingTheLastDisplayedColumnLeavesTheOthersInPlace)
{
  ColumnModel model;
  model.Rebuild(0);
  const std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(kMountPoint | kCapacity, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(Insertions(*plan), (std::vector<std::string>{"0@0:0/80", "1@1:1/60"}));
  EXPECT_EQ(plan->deletions, (std::vector<uint32_t>{2, 1, 0}));
}

TEST(ColumnModelTest, AnAddedColumnGoesToTheRightEnd)
{
  ColumnModel model;
  model.Rebuild(0);
  std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(11 | kFreeSpace, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(Insertions(*plan),
            (std::vector<std::string>{"0@0:0/80", "1@1:1/60", "2@2:3/72", "3@3:2/200"}));
  EXPECT_EQ(ColumnOrderArray(*plan), (std::vector<int32_t>{0, 1, 3, 2}));
  plan = model.SetVisibleColumns(11 | kFreeSpace | kMounted, 4);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(ColumnOrderArray(*plan), (std::vector<int32_t>{0, 1, 3, 2, 4}));
}

TEST(ColumnModelTest, AnAddedFirstColumnStillGoesToTheRightEnd)
{
  ColumnModel model(LayoutShowing(kCapacity | kImagePath, 2));
  model.Rebuild(0);
  const std::optional<ColumnRebuildPlan> plan =
      model.SetVisibleColumns(kMountPoint | kCapacity | kImagePath, 2);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(Insertions(*plan), (std::vector<std::string>{"0@0:2/80", "1@1:0/60", "3@2:1/200"}));
  EXPECT_EQ(ColumnOrderArray(*plan), (std::vector<int32_t>{1, 2, 0}));
}

TEST(ColumnModelTest, OnlyTheLowestChangedColumnIsAdjusted)
{
  ListLayout layout = LayoutShowing(kMountPoint);
  layout.columns[0].order = 0;
  layout.columns[1].order = 5;
  layout.columns[6].order = 0;
  ColumnModel model(layout);
  const std::optional<ColumnRebuildPlan> plan =
      model.SetVisibleColumns(kMountPoint | kCapacity | kMounted, 1);
  ASSERT_TRUE(plan.has_value());
  // Capacity goes to the end (order 1 of the list of one column); Mounted keeps its stored
  // order 0 and lands after Mount Point, its equal.
  EXPECT_EQ(Insertions(*plan), (std::vector<std::string>{"0@0:0/80", "1@1:2/60", "6@2:1/80"}));
}

TEST(ColumnModelTest, WidthsComeFromTheLayout)
{
  ListLayout layout;
  layout.columns[3].width = 333;
  ColumnModel model(layout);
  EXPECT_EQ(model.Rebuild(0).insertions[2].width, 333);
}

TEST(ColumnModelTest, HidingTheSortColumnSortsByMountPointAscending)
{
  ColumnModel model(LayoutShowing(11, -static_cast<int32_t>(kImagePath)));
  model.Rebuild(0);
  const std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(kMountPoint | kCapacity, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), 1);
  EXPECT_EQ(plan->sortArrowIndex, 0u);
  EXPECT_EQ(plan->sortArrowFormat, kHeaderSortDown);
}

TEST(ColumnModelTest, HidingTheSortColumnWithMountPointHiddenSortsByTheLowestVisibleColumn)
{
  ColumnModel model(
      LayoutShowing(kCapacity | kImagePath | kCreated, -static_cast<int32_t>(kCapacity)));
  const std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(kImagePath | kCreated, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), static_cast<int32_t>(kImagePath));
  EXPECT_EQ(plan->sortArrowIndex, 0u);
  EXPECT_EQ(plan->sortArrowFormat, kHeaderSortDown);
}

TEST(ColumnModelTest, HidingMountPointWhileItIsTheSortColumnSortsByTheNextVisibleColumn)
{
  ColumnModel model(LayoutShowing(11, -1));
  const std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(kCapacity | kImagePath, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), static_cast<int32_t>(kCapacity));
}

TEST(ColumnModelTest, ASortColumnThatIsShownStaysAsItIs)
{
  ColumnModel model(LayoutShowing(11, -static_cast<int32_t>(kImagePath)));
  const std::optional<ColumnRebuildPlan> plan = model.SetVisibleColumns(11 | kAlgorithm, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), -8);
  EXPECT_EQ(plan->sortArrowIndex, 2u);
  EXPECT_EQ(plan->sortArrowFormat, kHeaderSortUp);
}

TEST(ColumnModelTest, ASortValueNamingNoSingleColumnFallsBackOnRebuild)
{
  for (const int32_t sortColumn : {0, 3, 128, INT32_MIN}) {
    ColumnModel model(LayoutShowing(kCapacity | kImagePath, sortColumn));
    const ColumnRebuildPlan plan = model.Rebuild(0);
    EXPECT_EQ(model.SortColumn(), static_cast<int32_t>(kCapacity)) << sortColumn;
    EXPECT_EQ(plan.sortArrowIndex, 0u);
  }
}

TEST(ColumnModelTest, TheOnlyVisibleColumnCannotBeHidden)
{
  ColumnModel model(LayoutShowing(kImagePath, 8));
  EXPECT_FALSE(model.CanToggleColumn(DiskColumn::kImagePath));
  EXPECT_TRUE(model.CanToggleColumn(DiskColumn::kMountPoint));
  EXPECT_TRUE(model.CanToggleColumn(DiskColumn::kMounted));
  EXPECT_FALSE(model.SetVisibleColumns(0, 1).has_value());
  EXPECT_FALSE(model.SetVisibleColumns(0x180, 1).has_value());  // no column bit either
  EXPECT_EQ(model.VisibleColumns(), kImagePath);
  EXPECT_EQ(model.SortColumn(), 8);
}

TEST(ColumnModelTest, EveryColumnCanBeToggledWhileAnotherIsVisible)
{
  const ColumnModel model(LayoutShowing(kMountPoint | kMounted));
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    EXPECT_TRUE(model.CanToggleColumn(static_cast<DiskColumn>(column))) << column;
  }
}

TEST(ColumnModelTest, BitsAboveTheSevenColumnsAreDropped)
{
  ColumnModel model(LayoutShowing(0x100 | kCapacity));
  EXPECT_EQ(model.VisibleColumns(), kCapacity);
  const std::optional<ColumnRebuildPlan> plan =
      model.SetVisibleColumns(0x200 | kCapacity | kCreated, 1);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.VisibleColumns(), kCapacity | kCreated);
  EXPECT_EQ(ColumnModel(LayoutShowing(0x100)).VisibleColumns(), 11u);
}

TEST(ColumnModelTest, ClickingTheSortedColumnTwiceReturnsToAscending)
{
  ColumnModel model;
  model.Rebuild(0);
  std::optional<ColumnRebuildPlan> plan = model.ClickHeader(0, kHeaderLeftButton, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), -1);
  EXPECT_EQ(plan->sortArrowIndex, 0u);
  EXPECT_EQ(plan->sortArrowFormat, kHeaderSortUp);
  EXPECT_EQ(plan->deletions, (std::vector<uint32_t>{2, 1, 0}));
  plan = model.ClickHeader(0, kHeaderLeftButton, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), 1);
  EXPECT_EQ(plan->sortArrowFormat, kHeaderSortDown);
}

TEST(ColumnModelTest, ClickingAnotherColumnSortsByItAscending)
{
  ColumnModel model(LayoutShowing(11, -1));
  const std::optional<ColumnRebuildPlan> plan = model.ClickHeader(2, kHeaderLeftButton, 3);
  ASSERT_TRUE(plan.has_value());
  EXPECT_EQ(model.SortColumn(), static_cast<int32_t>(kImagePath));
  EXPECT_EQ(plan->sortArrowIndex, 2u);
  EXPECT_EQ(plan->sortArrowFormat, kHeaderSortDown);
  EXPECT_EQ(model.VisibleColumns(), 11u);
}

TEST(ColumnModelTest, ClickingAColumnMapsItsIndexToTheNthVisibleColumn)
{
  ColumnModel model(LayoutShowing(kFreeSpace | kAlgorithm | kMounted));
  model.ClickHeader(1, kHeaderLeftButton, 3);
  EXPECT_EQ(model.SortColumn(), static_cast<int32_t>(kAlgorithm));
}

TEST(ColumnModelTest, ClicksWithOtherButtonsOrOutsideTheColumnsAreIgnored)
{
  ColumnModel model;
  EXPECT_FALSE(model.ClickHeader(1, 1, 3).has_value());  // right button
  EXPECT_FALSE(model.ClickHeader(1, 2, 3).has_value());  // middle button
  EXPECT_FALSE(model.ClickHeader(3, kHeaderLeftButton, 3).has_value());
  EXPECT_EQ(model.SortColumn(), 1);
}

TEST(ColumnModelTest, HeaderItemsAreStoredInTheirColumnsEntries)
{
  ColumnModel model(LayoutShowing(kCapacity | kImagePath));
  model.StoreHeaderItem(1, 150, 0);
  model.StoreHeaderItem(0, 90, 1);
  model.StoreHeaderItem(2, 10, 9);  // no such column: ignored
  EXPECT_EQ(model.Layout().columns[3].width, 150);
  EXPECT_EQ(model.Layout().columns[3].order, 0);
  EXPECT_EQ(model.Layout().columns[1].width, 90);
  EXPECT_EQ(model.Layout().columns[1].order, 1);
  EXPECT_EQ(model.Layout().columns[0].width, 80);
  EXPECT_EQ(ColumnOrderArray(model.Rebuild(2)), (std::vector<int32_t>{1, 0}));
}

TEST(ColumnModelTest, RowTextsAreTheVisibleColumnsInBitOrder)
{
  MountedDisk disk;
  disk.mountPoint = u"P:";
  disk.imagePath = u"C:\\a.qvi";
  disk.info.capacity = 1073741824;
  disk.info.keyLength = 16;
  EXPECT_EQ(ColumnModel().RowTexts(disk, std::nullopt),
            (std::vector<std::u16string>{u"P:", u"1.0 GB", u"C:\\a.qvi"}));
  EXPECT_EQ(ColumnModel(LayoutShowing(kFreeSpace | kImagePath | kAlgorithm))
                .RowTexts(disk, uint64_t{2048}),
            (std::vector<std::u16string>{u"2.0 KB", u"C:\\a.qvi", u"AES-128"}));
  EXPECT_EQ(ColumnModel(LayoutShowing(kFreeSpace)).RowTexts(disk, std::nullopt),
            (std::vector<std::u16string>{u""}));
}

TEST(ColumnModelTest, WithTheFreeSpaceColumnHiddenTheTimerDoesNothing)
{
  EXPECT_FALSE(ColumnModel().FreeSpaceUpdateIndex(5).has_value());
  EXPECT_FALSE(ColumnModel(LayoutShowing(0x7F & ~kFreeSpace)).FreeSpaceUpdateIndex(5).has_value());
}

TEST(ColumnModelTest, WithoutRowsTheTimerDoesNothing)
{
  EXPECT_FALSE(ColumnModel(LayoutShowing(0x7F)).FreeSpaceUpdateIndex(0).has_value());
}

TEST(ColumnModelTest, TheTimerUpdatesTheFreeSpaceColumnAfterMountPointAndCapacity)
{
  EXPECT_EQ(ColumnModel(LayoutShowing(0x7F)).FreeSpaceUpdateIndex(1), 2u);
  EXPECT_EQ(ColumnModel(LayoutShowing(kMountPoint | kFreeSpace)).FreeSpaceUpdateIndex(3), 1u);
  EXPECT_EQ(ColumnModel(LayoutShowing(kFreeSpace | kMounted)).FreeSpaceUpdateIndex(3), 0u);
}

}  // namespace
