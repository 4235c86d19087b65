// The list view and header wrappers on a real report list view: what a wrapper sets is what
// the control's own messages read back, and the other way round.
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "support/control_host.h"
#include "support/ui_harness.h"
#include "ui/controls/list_view.h"

namespace {

class ListViewTest : public UiTest {
 protected:
  CListViewCtrl CreateList(DWORD style = LVS_REPORT | LVS_SHOWSELALWAYS)
  {
    return CListViewCtrl(host_.Create(WC_LISTVIEWW, style));
  }

  // A list with the columns Mount Point, Capacity, Image Path and the rows E:, F:, G:
  // carrying the parameters 30, 10 and 20.
  CListViewCtrl CreateFilledList()
  {
    const CListViewCtrl list = CreateList();
    list.InsertColumn(0, L"Mount Point", 80, 0);
    list.InsertColumn(1, L"Capacity", 60, 1, LVCFMT_RIGHT);
    list.InsertColumn(2, L"Image Path", 200, 2);
    const wchar_t* const points[3] = {L"E:", L"F:", L"G:"};
    const LPARAM params[3] = {30, 10, 20};
    for (int row = 0; row < 3; ++row) {
      list.InsertItem(list.ItemCount(), points[row], params[row]);
      list.SetItemText(row, 1, std::to_wstring(params[row]) + L" GB");
    }
    return list;
  }

  std::vector<std::wstring> MountPoints(const CListViewCtrl& list)
  {
    std::vector<std::wstring> points;
    for (int row = 0; row < ListRowCount(list.Handle()); ++row) {
      points.push_back(ListCellText(list.Handle(), row, 0));
    }
    return points;
  }

  CControlHost host_;
};

TEST_F(ListViewTest, ExtendedStylesChangeOnlyTheMaskedFlags)
{
  const CListViewCtrl list = CreateList();
  list.SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP,
                        LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
  EXPECT_EQ(list.Send(LVM_GETEXTENDEDLISTVIEWSTYLE) & 0x30, 0x30);
  list.SetExtendedStyle(LVS_EX_FULLROWSELECT, 0);
  EXPECT_EQ(list.ExtendedStyle() & 0x30, static_cast<DWORD>(LVS_EX_HEADERDRAGDROP));
}

TEST_F(ListViewTest, ColumnsAreInsertedReadBackAndDeleted)
{
  const CListViewCtrl list = CreateFilledList();
  EXPECT_EQ(ListColumnCount(list.Handle()), 3);
  EXPECT_EQ(list.ColumnCount(), 3);

  const auto capacity = list.Column(1);
  ASSERT_TRUE(capacity.has_value());
  EXPECT_EQ(capacity->title, L"Capacity");
  EXPECT_EQ(capacity->width, 60);
  EXPECT_EQ(capacity->subItem, 1);
  EXPECT_EQ(capacity->format & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
  EXPECT_EQ(capacity->order, 1);
  EXPECT_EQ(list.Send(LVM_GETCOLUMNWIDTH, 2), 200);

  EXPECT_FALSE(list.Column(3).has_value());
  EXPECT_TRUE(list.DeleteColumn(2));
  EXPECT_TRUE(list.DeleteColumn(1));
  EXPECT_EQ(ListColumnCount(list.Handle()), 1);
  EXPECT_EQ(list.Column(0)->title, L"Mount Point");
}

TEST_F(ListViewTest, ColumnOrderIsSetAndReadAsTheDisplayOrder)
{
  const CListViewCtrl list = CreateFilledList();
  EXPECT_EQ(list.ColumnOrderArray(), (std::vector<int>{0, 1, 2}));
  ASSERT_TRUE(list.SetColumnOrderArray({2, 0, 1}));

  int raw[3] = {};
  ASSERT_NE(list.Send(LVM_GETCOLUMNORDERARRAY, 3, reinterpret_cast<LPARAM>(raw)), 0);
  EXPECT_EQ((std::vector<int>{raw[0], raw[1], raw[2]}), (std::vector<int>{2, 0, 1}));
  EXPECT_EQ(list.ColumnOrderArray(), (std::vector<int>{2, 0, 1}));
  EXPECT_EQ(list.Header().OrderArray(), (std::vector<int>{2, 0, 1}));
  // Each column reports its own display position.
  EXPECT_EQ(list.Column(2)->order, 0);
  EXPECT_EQ(list.Column(0)->order, 1);
  EXPECT_EQ(list.Column(1)->order, 2);
}

TEST_F(ListViewTest, HeaderSortArrowReplacesTheOtherArrowAndKeepsTheFormat)
{
  const CListViewCtrl list = CreateFilledList();
  const CHeaderCtrl header = list.Header();
  ASSERT_TRUE(header.IsWindow());
  EXPECT_EQ(header.ItemCount(), 3);

  const auto rawFormat = [&](int index) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    header.Send(HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    return item.fmt;
  };
  ASSERT_TRUE(header.SetSortArrow(1, HDF_SORTDOWN));
  EXPECT_EQ(rawFormat(1) & (HDF_SORTUP | HDF_SORTDOWN), HDF_SORTDOWN);
  EXPECT_EQ(rawFormat(1) & HDF_JUSTIFYMASK, HDF_RIGHT);
  EXPECT_EQ(header.SortArrow(1), HDF_SORTDOWN);

  ASSERT_TRUE(header.SetSortArrow(1, HDF_SORTUP));
  EXPECT_EQ(rawFormat(1) & (HDF_SORTUP | HDF_SORTDOWN), HDF_SORTUP);
  EXPECT_EQ(rawFormat(1) & HDF_JUSTIFYMASK, HDF_RIGHT);
  EXPECT_EQ(header.SortArrow(0), 0);

  ASSERT_TRUE(header.SetSortArrow(1, 0));
  EXPECT_EQ(rawFormat(1) & (HDF_SORTUP | HDF_SORTDOWN), 0);
  EXPECT_FALSE(header.SetSortArrow(7, HDF_SORTUP));
}

TEST_F(ListViewTest, RowsCarryTextsPerSubItemAndTheirParameter)
{
  const CListViewCtrl list = CreateFilledList();
  EXPECT_EQ(ListRowCount(list.Handle()), 3);
  EXPECT_EQ(list.ItemCount(), 3);
  EXPECT_EQ(ListCellText(list.Handle(), 1, 0), L"F:");
  EXPECT_EQ(ListCellText(list.Handle(), 1, 1), L"10 GB");
  EXPECT_EQ(list.ItemText(2, 1), L"20 GB");
  EXPECT_EQ(list.ItemData(0), 30);
  EXPECT_EQ(list.ItemData(2), 20);

  // A text longer than the first read buffer comes back whole.
  const std::wstring longPath = L"C:\\" + std::wstring(300, L'x') + L".qvi";
  ASSERT_TRUE(list.SetItemText(0, 2, longPath));
  EXPECT_EQ(list.ItemText(0, 2), longPath);

  // An insert in the middle moves the rows behind it.
  EXPECT_EQ(list.InsertItem(1, L"Z:", 99), 1);
  EXPECT_EQ(MountPoints(list), (std::vector<std::wstring>{L"E:", L"Z:", L"F:", L"G:"}));
  EXPECT_EQ(list.ItemData(1), 99);

  EXPECT_TRUE(list.DeleteItem(1));
  EXPECT_EQ(MountPoints(list), (std::vector<std::wstring>{L"E:", L"F:", L"G:"}));
  EXPECT_TRUE(list.DeleteAllItems());
  EXPECT_EQ(ListRowCount(list.Handle()), 0);
  EXPECT_EQ(list.ItemData(0), 0);
}

TEST_F(ListViewTest, SelectionIsSetCountedAndWalked)
{
  const CListViewCtrl list = CreateFilledList();
  EXPECT_EQ(list.NextSelected(), -1);
  EXPECT_EQ(list.SelectedCount(), 0);

  ASSERT_TRUE(list.SetItemSelected(0, true));
  ASSERT_TRUE(list.SetItemSelected(2, true));
  EXPECT_EQ(ListSelectedCount(list.Handle()), 2);
  EXPECT_EQ(list.SelectedCount(), 2);
  EXPECT_EQ(list.NextSelected(), 0);
  EXPECT_EQ(list.NextSelected(0), 2);
  EXPECT_EQ(list.NextSelected(2), -1);
  EXPECT_TRUE(list.IsItemSelected(2));
  EXPECT_FALSE(list.IsItemSelected(1));

  SelectListRow(list.Handle(), 0, false);
  EXPECT_FALSE(list.IsItemSelected(0));
  EXPECT_EQ(list.NextSelected(), 2);

  ASSERT_TRUE(list.SelectAll());
  EXPECT_EQ(ListSelectedCount(list.Handle()), 3);
}

TEST_F(ListViewTest, SortItemsOrdersByTheRowsParameters)
{
  const CListViewCtrl list = CreateFilledList();
  ASSERT_TRUE(
      list.SortItems([](LPARAM first, LPARAM second) { return static_cast<int>(first - second); }));
  EXPECT_EQ(MountPoints(list), (std::vector<std::wstring>{L"F:", L"G:", L"E:"}));

  // The comparison object is used as it is, state included.
  int comparisons = 0;
  const int direction = -1;
  const auto descending = [&](LPARAM first, LPARAM second) {
    ++comparisons;
    return direction * static_cast<int>(first - second);
  };
  ASSERT_TRUE(list.SortItems(descending));
  EXPECT_GT(comparisons, 0);
  EXPECT_EQ(MountPoints(list), (std::vector<std::wstring>{L"E:", L"G:", L"F:"}));
  EXPECT_EQ(list.ItemData(0), 30);
}

TEST_F(ListViewTest, SortItemsByIndexHandsOverTheRowsIndexes)
{
  const CListViewCtrl list = CreateFilledList();
  // Descending by the row's own text, read through the indexes the control hands over.
  ASSERT_TRUE(list.SortItemsByIndex([&](LPARAM first, LPARAM second) {
    const std::wstring a = list.ItemText(static_cast<int>(first), 0);
    const std::wstring b = list.ItemText(static_cast<int>(second), 0);
    return b.compare(a);
  }));
  EXPECT_EQ(MountPoints(list), (std::vector<std::wstring>{L"G:", L"F:", L"E:"}));
}

TEST_F(ListViewTest, EnsureVisibleScrollsAndHitTestFindsTheRow)
{
  const CListViewCtrl list = CreateFilledList();
  for (int row = 3; row < 60; ++row) list.InsertItem(row, L"row", row);
  ASSERT_EQ(list.Send(LVM_GETTOPINDEX), 0);

  ASSERT_TRUE(list.EnsureVisible(50));
  EXPECT_GT(list.Send(LVM_GETTOPINDEX), 0);
  RECT cell{LVIR_BOUNDS, 0, 0, 0};
  ASSERT_NE(list.Send(LVM_GETITEMRECT, 50, reinterpret_cast<LPARAM>(&cell)), 0);
  RECT client{};
  GetClientRect(list.Handle(), &client);
  EXPECT_GE(cell.top, 0);
  EXPECT_LE(cell.bottom, client.bottom);

  const POINT inside{cell.left + 5, (cell.top + cell.bottom) / 2};
  EXPECT_EQ(list.HitTest(inside), 50);
  // Left of every column's end but below the last row after scrolling back: no row.
  ASSERT_TRUE(list.EnsureVisible(0));
  list.DeleteAllItems();
  list.InsertItem(0, L"only", 1);
  EXPECT_EQ(list.HitTest(POINT{5, client.bottom - 3}), -1);
}

TEST_F(ListViewTest, RedrawOffKeepsChangesFromInvalidatingTheList)
{
  const CListViewCtrl list = CreateFilledList();
  UpdateWindow(list.Handle());
  ASSERT_FALSE(GetUpdateRect(list.Handle(), nullptr, FALSE));

  list.SetRedraw(false);
  list.InsertItem(0, L"H:", 40);
  EXPECT_FALSE(GetUpdateRect(list.Handle(), nullptr, FALSE));

  list.SetRedraw(true);
  list.InsertItem(0, L"I:", 50);
  EXPECT_TRUE(GetUpdateRect(list.Handle(), nullptr, FALSE));
}

}  // namespace
