// The mounted disk view under Wine: its columns, the rows of the disks the device host
// reports, sorting by header clicks, showing columns, dismounting the selected disks, the
// free-space timer and the layout kept between runs.
#include "disklist/mounted_disk_view_win.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "app/flow_fixture.h"
#include "res/resource.h"
#include "settings/key_access.h"
#include "support/ui_harness.h"

namespace {

constexpr uint32_t kInUse = 0x4006000D;

MountedDisk SampleDisk(const char16_t* mountPoint, const char16_t* imagePath, uint64_t capacity,
                       uint32_t idWord)
{
  MountedDisk disk;
  disk.mountPoint = mountPoint;
  disk.imagePath = imagePath;
  disk.info.capacity = capacity;
  disk.info.diskId.data1 = idWord;
  disk.info.algorithm = 0;
  disk.info.keyLength = 32;
  return disk;
}

// A real mouse click on a header item, as the header control receives it.
void ClickHeaderItem(HWND header, int index)
{
  RECT item{};
  SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(&item));
  const LPARAM point = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
  SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, point);
  SendMessageW(header, WM_LBUTTONUP, 0, point);
}

// The frame: it records the popup menus that open for it and the commands it receives, and
// drives each menu by keys from inside the menu loop: Down to the first item, then Enter.
class CMenuDrivenFrame : public CCustomWindow {
 public:
  std::vector<UINT> firstItemsOfMenus;
  std::vector<UINT> commands;

 protected:
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    switch (message) {
      case WM_INITMENUPOPUP:
        firstItemsOfMenus.push_back(GetMenuItemID(reinterpret_cast<HMENU>(wParam), 0));
        keysPosted_ = 0;
        return false;
      case WM_ENTERIDLE:
        if (wParam == MSGF_MENU) {
          const WPARAM keys[] = {VK_DOWN, VK_RETURN, VK_ESCAPE};
          PostMessageW(Handle(), WM_KEYDOWN, keys[std::min(keysPosted_, 2)], 1);
          ++keysPosted_;
        }
        return false;
      default: return CCustomWindow::HandleMessage(message, wParam, lParam, result);
    }
  }
  bool OnCommand(UINT id, UINT, HWND) override
  {
    commands.push_back(id);
    return true;
  }

 private:
  int keysPosted_ = 0;
};

class MountedDiskViewTest : public UiTest {
 protected:
  MountedDiskViewTest()
  {
    host_.AddDisk(SampleDisk(u"Q:", u"C:\\Images\\Work.qvi", 1610612736, 1));
    host_.AddDisk(SampleDisk(u"P:", u"D:\\Backup\\Archive.qvi", 1023, 2));
    host_.AddDisk(SampleDisk(u"R:", u"C:\\Images\\Travel.qvi", 1572864, 3));
  }

  // Creates the frame and the view, and lets the view's first rebuild run.
  void Show()
  {
    ASSERT_NE(
        frame_.Create(nullptr, RECT{0, 0, 640, 300}, L"frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
        nullptr);
    ASSERT_NE(view_.Create(frame_.Handle(), RECT{0, 0, 620, 260}), nullptr);
    PumpMessages();
  }

  HWND List() const { return view_.Handle(); }
  CHeaderCtrl Header() const { return view_.List().Header(); }

  std::vector<std::wstring> Column(int column) const
  {
    std::vector<std::wstring> texts;
    for (int row = 0; row < ListRowCount(List()); ++row) {
      texts.push_back(ListCellText(List(), row, column));
    }
    return texts;
  }

  std::optional<uint64_t> FreeBytes(const std::u16string& mountPoint)
  {
    ++freeSpaceQueries_;
    const auto found = freeBytes_.find(mountPoint);
    if (found == freeBytes_.end()) return std::nullopt;
    return found->second;
  }

  CMemorySettings settings_;
  FakeDeviceHost host_;
  std::map<std::u16string, uint64_t> freeBytes_;
  int freeSpaceQueries_ = 0;
  CMenuDrivenFrame frame_;
  CMountedDiskView view_{
      [this](const std::u16string& mountPoint) { return FreeBytes(mountPoint); }};
};

using Texts = std::vector<std::wstring>;

TEST_F(MountedDiskViewTest, FirstRunShowsMountPointCapacityAndImagePathInReportStyle)
{
  Show();
  EXPECT_EQ(GetWindowLongW(List(), GWL_STYLE) & LVS_TYPEMASK, LVS_REPORT);
  EXPECT_EQ(view_.List().ExtendedStyle() & 0x30u, 0x30u);
  ASSERT_EQ(ListColumnCount(List()), 3);
  const Texts titles = {L"Mount Point", L"Capacity", L"Image Path"};
  const int widths[] = {80, 60, 200};
  for (int index = 0; index < 3; ++index) {
    const std::optional<ListViewColumn> column = view_.List().Column(index);
    ASSERT_TRUE(column);
    EXPECT_EQ(column->title, titles[static_cast<size_t>(index)]);
    EXPECT_EQ(column->width, widths[index]);
    EXPECT_EQ(column->subItem, index);
    EXPECT_EQ(column->order, index);
  }
  EXPECT_EQ(Header().SortArrow(0), HDF_SORTDOWN);  // ascending
  EXPECT_EQ(Header().SortArrow(1), 0);
  EXPECT_EQ(view_.GetVisibleColumns(), 11u);
}

TEST_F(MountedDiskViewTest, RefreshShowsEveryDiskSortedByMountPoint)
{
  Show();
  EXPECT_EQ(Column(0), (Texts{L"P:", L"Q:", L"R:"}));
  EXPECT_EQ(Column(1), (Texts{L"1023", L"1.5 GB", L"1.0 MB"}));
  EXPECT_EQ(Column(2), (Texts{L"D:\\Backup\\Archive.qvi", L"C:\\Images\\Work.qvi",
                              L"C:\\Images\\Travel.qvi"}));

  host_.AddDisk(SampleDisk(u"A:", u"C:\\Images\\Floppy.qvi", 1023, 4));
  view_.Refresh();
  EXPECT_EQ(Column(0), (Texts{L"A:", L"P:", L"Q:", L"R:"}));
}

TEST_F(MountedDiskViewTest, FailedEnumerationLeavesTheListEmptyWithoutAMessage)
{
  host_.Answer(DeviceHostOperation::kEnumerateDisks, {kStatusSuccess, 0x4006000A});
  Show();
  EXPECT_EQ(ListRowCount(List()), 3);
  view_.Refresh();
  EXPECT_EQ(ListRowCount(List()), 0);
  EXPECT_TRUE(prompts_.Prompts().empty());
}

TEST_F(MountedDiskViewTest, HeaderClickSortsByTheColumnAndAgainReversesIt)
{
  Show();
  ClickHeaderItem(Header().Handle(), 1);
  PumpMessages();
  EXPECT_EQ(Column(0), (Texts{L"P:", L"R:", L"Q:"}));  // by capacity ascending
  EXPECT_EQ(Header().SortArrow(0), 0);
  EXPECT_EQ(Header().SortArrow(1), HDF_SORTDOWN);
  EXPECT_EQ(view_.Columns().SortColumn(), 2);

  ClickHeaderItem(Header().Handle(), 1);
  PumpMessages();
  EXPECT_EQ(Column(0), (Texts{L"Q:", L"R:", L"P:"}));
  EXPECT_EQ(Header().SortArrow(1), HDF_SORTUP);  // descending
  EXPECT_EQ(view_.Columns().SortColumn(), -2);
}

TEST_F(MountedDiskViewTest,
       ShowingAColumnAddsItAtTheRightEndAndHidingTheSortColumnSortsByMountPoint)
{
  freeBytes_[u"P:"] = 1024;
  Show();
  ClickHeaderItem(Header().Handle(), 1);  // sort by capacity
  PumpMessages();

  view_.SetVisibleColumns(0x0F);
  ASSERT_EQ(ListColumnCount(List()), 4);
  EXPECT_EQ(view_.List().Column(2)->title, L"Free Space");
  EXPECT_EQ(view_.List().Column(2)->width, 72);
  EXPECT_EQ(view_.List().ColumnOrderArray(), (std::vector<int>{0, 1, 3, 2}));
  EXPECT_EQ(Column(2), (Texts{L"1.0 KB", L"", L""}));
  EXPECT_EQ(Column(3)[0], L"D:\\Backup\\Archive.qvi");

  view_.SetVisibleColumns(0x0D);  // hides Capacity, the sort column
  ASSERT_EQ(ListColumnCount(List()), 3);
  EXPECT_EQ(view_.List().Column(1)->title, L"Free Space");
  EXPECT_EQ(view_.Columns().SortColumn(), 1);
  EXPECT_EQ(Header().SortArrow(0), HDF_SORTDOWN);
  EXPECT_EQ(Column(0), (Texts{L"P:", L"Q:", L"R:"}));

  view_.SetVisibleColumns(0);  // no column at all is refused
  EXPECT_EQ(ListColumnCount(List()), 3);
}

TEST_F(MountedDiskViewTest, DismountSelectedHandlesEachSelectedDiskOnItsOwn)
{
  Show();
  SelectListRow(List(), 0, true);  // P:
  SelectListRow(List(), 2, true);  // R:
  host_.Answer(DeviceHostOperation::kDismountById, {kInUse, kStatusSuccess, 0x40000008});
  prompts_.Answer(IDYES);
  prompts_.Answer(IDOK);
  view_.DismountSelected();

  const std::vector<DeviceHostCall> calls = host_.Calls();
  ASSERT_EQ(calls.size(), 4u);  // the enumeration, then the three dismounts
  EXPECT_EQ(calls[1].diskId.data1, 2u);
  EXPECT_EQ(calls[1].forced, 0u);
  EXPECT_EQ(calls[2].diskId.data1, 2u);
  EXPECT_EQ(calls[2].forced, 1u);
  EXPECT_EQ(calls[3].diskId.data1, 3u);
  EXPECT_EQ(calls[3].forced, 0u);

  const auto& prompts = prompts_.Prompts();
  ASSERT_EQ(prompts.size(), 2u);
  EXPECT_EQ(prompts[0].owner, WindowRef(frame_.Handle()));
  EXPECT_EQ(prompts[0].text,
            u"File system volume on drive P: is still used by applications. If you dismount it, "
            u"data loss may occur.\nPlease close all applications that use this disk before "
            u"dismounting it.\n\nProceed with dismount?");
  EXPECT_EQ(prompts[0].caption, u"Warning");
  EXPECT_EQ(prompts[0].flags, 0x34u);
  EXPECT_EQ(prompts[1].text,
            u"Operation failed.\nError code: 40000008\n\nPlease contact technical support if "
            u"the problem persists.");
  EXPECT_EQ(prompts[1].caption, u"Cannot Dismount Virtual Disk");
  EXPECT_EQ(prompts[1].flags, 0x10u);
}

TEST_F(MountedDiskViewTest, DismountSelectedWithoutASelectionCallsNothing)
{
  Show();
  view_.DismountSelected();
  EXPECT_EQ(host_.Calls().size(), 1u);  // the enumeration only
}

TEST_F(MountedDiskViewTest, TimerDoesNothingWhileFreeSpaceIsHidden)
{
  Show();
  freeBytes_[u"Q:"] = 1024;
  freeSpaceQueries_ = 0;
  view_.Send(WM_TIMER, CMountedDiskView::kFreeSpaceTimer);
  EXPECT_EQ(freeSpaceQueries_, 0);
  EXPECT_EQ(Column(0), (Texts{L"P:", L"Q:", L"R:"}));
  EXPECT_EQ(host_.Calls().size(), 1u);  // never re-enumerates
}

TEST_F(MountedDiskViewTest, TimerUpdatesTheFreeSpaceCellsAndResorts)
{
  Show();
  view_.SetVisibleColumns(0x0F);
  ClickHeaderItem(Header().Handle(), 2);  // sort by free space
  PumpMessages();
  freeBytes_[u"Q:"] = 1024;
  freeBytes_[u"R:"] = 0;
  freeBytes_[u"P:"] = 1099511627776;
  freeSpaceQueries_ = 0;
  view_.Send(WM_TIMER, CMountedDiskView::kFreeSpaceTimer);
  EXPECT_GE(freeSpaceQueries_, 3);
  EXPECT_EQ(Column(0), (Texts{L"R:", L"Q:", L"P:"}));
  EXPECT_EQ(Column(2), (Texts{L"0", L"1.0 KB", L"1.00 TB"}));
  const size_t callsBefore = host_.Calls().size();
  view_.Send(WM_TIMER, CMountedDiskView::kFreeSpaceTimer);
  EXPECT_EQ(host_.Calls().size(), callsBefore);
}

TEST_F(MountedDiskViewTest, ResizedColumnIsStoredAndSavedWhenTheViewIsDestroyed)
{
  Show();
  view_.List().Send(LVM_SETCOLUMNWIDTH, 2, MAKELPARAM(150, 0));
  PumpMessages();
  EXPECT_EQ(view_.Columns().Layout().columns[3].width, 150);

  ColumnModel stored;
  stored.Load();
  EXPECT_EQ(stored.Layout().columns[3].width, 200);  // the store is written at the end only
  view_.DestroyWindow();
  stored.Load();
  EXPECT_EQ(stored.Layout().columns[3].width, 150);
  EXPECT_EQ(stored.VisibleColumns(), 11u);
}

TEST_F(MountedDiskViewTest, StoredLayoutIsShownAtCreation)
{
  ListLayout layout = ColumnModel().Layout();
  layout.visibleColumns = 0x09;  // Mount Point, Image Path
  layout.sortColumn = -8;        // by image path (the mount point text), descending
  layout.columns[3] = {120, 0};
  layout.columns[0] = {90, 1};
  ASSERT_EQ(ColumnModel(layout).Save(), kStatusSuccess);
  Show();
  ASSERT_EQ(ListColumnCount(List()), 2);
  EXPECT_EQ(view_.List().Column(1)->title, L"Image Path");
  EXPECT_EQ(view_.List().Column(1)->width, 120);
  EXPECT_EQ(view_.List().ColumnOrderArray(), (std::vector<int>{1, 0}));
  EXPECT_EQ(Header().SortArrow(1), HDF_SORTUP);
  EXPECT_EQ(Column(0), (Texts{L"R:", L"Q:", L"P:"}));
}

// The stored sort is taken only from a REG_DWORD; the stored mask is read whatever its type.
TEST_F(MountedDiskViewTest, StoredSortColumnOfAnotherTypeIsIgnoredAndAnyMaskIsRead)
{
  SettingsKeyPtr key;
  ASSERT_EQ(CreateUserKey(kApplicationKeyPath, &key), kStatusSuccess);
  const uint32_t mask = 0x19;  // Mount Point, Image Path, Encryption Algorithm
  ASSERT_EQ(key->SetValue(u"VisibleColumns", REG_BINARY, &mask, sizeof mask), kStatusSuccess);
  const int32_t byImagePathDescending = -8;
  ASSERT_EQ(
      key->SetValue(u"SortColumn", REG_SZ, &byImagePathDescending, sizeof byImagePathDescending),
      kStatusSuccess);
  Show();
  ASSERT_EQ(ListColumnCount(List()), 3);
  EXPECT_EQ(view_.List().Column(1)->title, L"Image Path");
  EXPECT_EQ(view_.List().Column(2)->title, L"Encryption Algorithm");
  EXPECT_EQ(Column(2), (Texts{L"AES-256", L"AES-256", L"AES-256"}));
  EXPECT_EQ(view_.Columns().SortColumn(), 1);
  EXPECT_EQ(Header().SortArrow(0), HDF_SORTDOWN);
  EXPECT_EQ(Header().SortArrow(1), 0);
  EXPECT_EQ(Column(0), (Texts{L"P:", L"Q:", L"R:"}));
}

TEST_F(MountedDiskViewTest, SingleSelectionAndSelectAll)
{
  Show();
  EXPECT_EQ(view_.GetSingleSelection(), nullptr);
  SelectListRow(List(), 1, true);
  ASSERT_NE(view_.GetSingleSelection(), nullptr);
  EXPECT_EQ(view_.GetSingleSelection()->mountPoint, u"Q:");
  EXPECT_EQ(view_.GetSingleSelection()->info.diskId.data1, 1u);
  view_.SelectAll();
  EXPECT_EQ(ListSelectedCount(List()), 3);
  EXPECT_EQ(view_.GetSingleSelection(), nullptr);
}

TEST_F(MountedDiskViewTest, BrowseOpensEachSelectedFormattedDisk)
{
  CScriptedDirectoryProbe probe;
  Show();
  SelectListRow(List(), 0, true);  // P: formatted
  SelectListRow(List(), 1, true);  // Q: the probe answers path not found: not opened
  probe.Answer(ERROR_ACCESS_DENIED);
  probe.Answer(ERROR_PATH_NOT_FOUND);
  shell_.AnswerOpen(kStatusSuccess);
  view_.BrowseSelected();
  EXPECT_EQ(probe.Paths(), (std::vector<std::u16string>{u"P:\\", u"Q:\\"}));
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].path, u"P:");
}

TEST_F(MountedDiskViewTest, DoubleClickOnARowBrowsesIt)
{
  CScriptedDirectoryProbe probe;
  Show();
  RECT row{};
  row.left = LVIR_BOUNDS;
  ASSERT_NE(view_.Send(LVM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row)), 0);
  const LPARAM point = MAKELPARAM(row.left + 10, (row.top + row.bottom) / 2);
  probe.Answer(ERROR_ACCESS_DENIED);
  shell_.AnswerOpen(kStatusSuccess);
  view_.Send(WM_LBUTTONDOWN, MK_LBUTTON, point);
  view_.Send(WM_LBUTTONUP, 0, point);
  view_.Send(WM_LBUTTONDBLCLK, MK_LBUTTON, point);
  view_.Send(WM_LBUTTONUP, 0, point);
  EXPECT_EQ(probe.Paths(), std::vector<std::u16string>{u"R:\\"});
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].path, u"R:");
}

TEST_F(MountedDiskViewTest, ContextMenuOverTheRowsIsTheListsMenuAndItsCommandGoesToTheFrame)
{
  Show();
  RECT row{};
  row.left = LVIR_BOUNDS;
  ASSERT_NE(view_.Send(LVM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row)), 0);
  POINT point{row.left + 10, (row.top + row.bottom) / 2};
  ClientToScreen(List(), &point);
  SetCursorPos(point.x, point.y);
  view_.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List()), MAKELPARAM(point.x, point.y));
  PumpMessages();
  EXPECT_EQ(frame_.firstItemsOfMenus, std::vector<UINT>{ID_DISK_BROWSE});
  EXPECT_EQ(frame_.commands, std::vector<UINT>{ID_DISK_BROWSE});
}

TEST_F(MountedDiskViewTest, ContextMenuOverTheHeaderIsTheColumnsMenu)
{
  Show();
  RECT header{};
  GetWindowRect(Header().Handle(), &header);
  const POINT point{header.left + 20, (header.top + header.bottom) / 2};
  SetCursorPos(point.x, point.y);
  view_.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List()), MAKELPARAM(point.x, point.y));
  PumpMessages();
  EXPECT_EQ(frame_.firstItemsOfMenus, std::vector<UINT>{ID_VIEW_COLUMN_MOUNT_POINT});
  EXPECT_EQ(frame_.commands, std::vector<UINT>{ID_VIEW_COLUMN_MOUNT_POINT});
}

}  // namespace
