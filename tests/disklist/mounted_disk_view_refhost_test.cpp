// The mounted disk view against the reference device host over local RPC: the rows of the
// disks the host lists with every column's text, the refresh after mounts and dismounts,
// dismounting the selected rows one by one, sorting by header clicks, and the column order
// dragged by the mouse, kept in "ColumnPos" and shown again by a new view.
#include "disklist/mounted_disk_view_win.h"

#include <cstring>
#include <vector>

#include "app/dismount_flows.h"
#include "app/display_text.h"
#include "devhost/host_screen_fixture.h"
#include "settings/key_access.h"
#include "settings/list_layout.h"
#include "system/clock.h"

namespace {

using Texts = std::vector<std::wstring>;

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

// The mouse drags header item `from` to the right edge of item `to`, as the header control
// receives it: press, a move that starts the drag, a move onto the drop place, release.
void DragHeaderItem(HWND header, int from, int to)
{
  RECT source{};
  RECT target{};
  SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(from),
               reinterpret_cast<LPARAM>(&source));
  SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(to), reinterpret_cast<LPARAM>(&target));
  const int y = (source.top + source.bottom) / 2;
  const int startX = (source.left + source.right) / 2;
  const int dropX = target.right - 2;
  SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(startX, y));
  SendMessageW(header, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(startX + 20, y));
  SendMessageW(header, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(dropX, y));
  SendMessageW(header, WM_LBUTTONUP, 0, MAKELPARAM(dropX, y));
}

class MountedDiskViewHostTest : public HostScreenTest {
 protected:
  void SetUp() override
  {
    HostScreenTest::SetUp();
    ASSERT_NE(
        frame_.Create(nullptr, RECT{0, 0, 900, 300}, L"frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
        nullptr);
  }

  // Creates the view in the frame and lets its first rebuild run.
  void Show(CMountedDiskView& view)
  {
    ASSERT_NE(view.Create(frame_.Handle(), RECT{0, 0, 880, 260}), nullptr);
    PumpMessages();
  }

  // Mounts image `name` (made with the password "secret") at `mountPoint`.
  std::u16string Mount(const std::u16string& name, const char16_t* mountPoint)
  {
    const std::u16string image = MakeImage(name);
    EXPECT_EQ(ImgMountWithPassword(image.c_str(), mountPoint, 0, u"secret"), kStatusSuccess);
    return image;
  }

  Texts Column(int column) const
  {
    Texts texts;
    for (int row = 0; row < ListRowCount(view_.Handle()); ++row) {
      texts.push_back(ListCellText(view_.Handle(), row, column));
    }
    return texts;
  }

  Texts Row(int row) const
  {
    Texts texts;
    for (int column = 0; column < ListColumnCount(view_.Handle()); ++column) {
      texts.push_back(ListCellText(view_.Handle(), row, column));
    }
    return texts;
  }

  CCustomWindow frame_;
  CMountedDiskView view_;
};

// The bytes of the value "ColumnPos" in the settings.
std::vector<uint8_t> StoredColumnPos()
{
  SettingsKeyPtr key;
  EXPECT_EQ(OpenUserKey(kApplicationKeyPath, &key), kStatusSuccess);
  if (!key) return {};
  std::vector<uint8_t> bytes(64);
  uint32_t type = 0;
  uint32_t size = static_cast<uint32_t>(bytes.size());
  EXPECT_EQ(key->QueryValue(u"ColumnPos", &type, bytes.data(), &size), kStatusSuccess);
  EXPECT_EQ(type, 3u);  // REG_BINARY
  bytes.resize(size);
  return bytes;
}

TEST_F(MountedDiskViewHostTest, NoDisksMountedShowsAnEmptyListWithoutAMessage)
{
  Show(view_);
  EXPECT_EQ(LastCall(), L"8 EnumerateDisks");
  EXPECT_EQ(ListColumnCount(view_.Handle()), 3);
  EXPECT_EQ(ListRowCount(view_.Handle()), 0);
  EXPECT_TRUE(prompts_.Prompts().empty());
}

TEST_F(MountedDiskViewHostTest, RowsShowEveryColumnOfTheDisksTheHostLists)
{
  // Images created at fixed moments, mounted in the order Q:, P:.
  const std::u16string work = dir_.File(u"work.qvi");
  const std::u16string archive = dir_.File(u"archive.qvi");
  SysFreezeClock(1000000000);
  ASSERT_EQ(CreatePasswordImage(work, u"secret", CreateParams(8ull << 20)), kStatusSuccess);
  SysFreezeClock(1100000000);
  ASSERT_EQ(CreatePasswordImage(archive, u"other", CreateParams(4ull << 20, kCreateFixed),
                                kCipherBlowfish, 16),
            kStatusSuccess);
  SysFreezeClock(0);
  ASSERT_EQ(ImgMountWithPassword(work.c_str(), u"Q:", 0, u"secret"), kStatusSuccess);
  ASSERT_EQ(ImgMountWithPassword(archive.c_str(), u"P:", 0, u"other"), kStatusSuccess);
  const std::vector<ListedDisk> listed = ListDisks();
  ASSERT_EQ(listed.size(), 2u);

  ListLayout everyColumn;
  everyColumn.visibleColumns = 0x7F;
  ASSERT_EQ(WriteListLayout(everyColumn), kStatusSuccess);
  const std::optional<uint64_t> freeBefore = VolumeFreeBytes(u"P:");
  ASSERT_TRUE(freeBefore.has_value());
  Show(view_);
  const std::optional<uint64_t> freeAfter = VolumeFreeBytes(u"P:");
  ASSERT_TRUE(freeAfter.has_value());

  ASSERT_EQ(ListColumnCount(view_.Handle()), 7);
  ASSERT_EQ(ListRowCount(view_.Handle()), 2);
  const Texts p = Row(0);
  EXPECT_EQ(p[0], L"P:");
  EXPECT_EQ(p[1], L"4.0 MB");
  // The free space of the host's drive, which other programs may change meanwhile.
  EXPECT_TRUE(p[2] == Wide(FormatSizeText(*freeBefore, true)) ||
              p[2] == Wide(FormatSizeText(*freeAfter, true)))
      << p[2];
  EXPECT_EQ(p[3], Wide(archive));
  EXPECT_EQ(p[4], L"BLOWFISH-128");
  EXPECT_EQ(p[5], Wide(FormatDateTimeText(1100000000)));
  EXPECT_EQ(p[6], Wide(FormatDateTimeText(listed[1].info.mountTime)));

  const Texts q = Row(1);
  EXPECT_EQ(q[0], L"Q:");
  EXPECT_EQ(q[1], L"8.0 MB");
  EXPECT_FALSE(q[2].empty());
  EXPECT_EQ(q[3], Wide(work));
  EXPECT_EQ(q[4], L"AES-256");
  EXPECT_EQ(q[5], Wide(FormatDateTimeText(1000000000)));
  EXPECT_EQ(q[6], Wide(FormatDateTimeText(listed[0].info.mountTime)));

  // The row's disk is the host's record, id included.
  SelectListRow(view_.Handle(), 1, true);
  const MountedDisk* selected = view_.GetSingleSelection();
  ASSERT_NE(selected, nullptr);
  EXPECT_EQ(selected->imagePath, work);
  EXPECT_EQ(std::memcmp(&selected->info, &listed[0].info, sizeof(MountedDiskInfo)), 0);
}

TEST_F(MountedDiskViewHostTest, RefreshShowsWhatWasMountedAndDismountedMeanwhile)
{
  Show(view_);
  const std::u16string image = Mount(u"work.qvi", u"P:");
  EXPECT_EQ(ListRowCount(view_.Handle()), 0);  // the view lists anew only when refreshed
  view_.Refresh();
  EXPECT_EQ(Column(0), Texts{L"P:"});
  EXPECT_EQ(Column(2), Texts{Wide(image)});

  Mount(u"other.qvi", u"K:");
  view_.Refresh();
  EXPECT_EQ(Column(0), (Texts{L"K:", L"P:"}));

  DismountMountPointFlow(frame_.Handle(), u"P:", 0);
  EXPECT_EQ(Column(0), (Texts{L"K:", L"P:"}));
  view_.Refresh();
  EXPECT_EQ(Column(0), Texts{L"K:"});
  EXPECT_TRUE(prompts_.Prompts().empty());
}

TEST_F(MountedDiskViewHostTest, DismountSelectedGoesRowByRowAndYesForcesADiskInUse)
{
  Mount(u"p.qvi", u"P:");
  Mount(u"q.qvi", u"Q:");
  Mount(u"r.qvi", u"R:");
  WriteControlText(kControlInUse, L"P");
  Show(view_);
  SelectListRow(view_.Handle(), 0, true);  // P:
  SelectListRow(view_.Handle(), 2, true);  // R:
  prompts_.Answer(kIdYes);
  view_.DismountSelected();
  EXPECT_EQ(LastCall(), L"5 DismountById");
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].owner, WindowRef(frame_.Handle()));
  EXPECT_EQ(prompts_.Prompts()[0].text,
            u"File system volume on drive P: is still used by applications. If you dismount it, "
            u"data loss may occur.\nPlease close all applications that use this disk before "
            u"dismounting it.\n\nProceed with dismount?");
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Warning");
  EXPECT_EQ(prompts_.Prompts()[0].flags, 0x34u);
  const std::vector<ListedDisk> left = ListDisks();
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].mountPoint, u"Q:");
  view_.Refresh();
  EXPECT_EQ(Column(0), Texts{L"Q:"});
}

// A refusal and a failure for one row never stop the others: P: is in use and kept (No), Q:
// was dismounted behind the view's back (the host no longer knows its id), R: goes.
TEST_F(MountedDiskViewHostTest, DismountSelectedGoesOnAfterARefusalAndAFailure)
{
  Mount(u"p.qvi", u"P:");
  Mount(u"q.qvi", u"Q:");
  Mount(u"r.qvi", u"R:");
  WriteControlText(kControlInUse, L"P");
  Show(view_);
  view_.SelectAll();
  ASSERT_EQ(DevDismountMountPoint(u"Q:", 0), kStatusSuccess);
  prompts_.Answer(kIdNo);
  prompts_.Answer(kIdOk);
  view_.DismountSelected();
  ASSERT_EQ(prompts_.Prompts().size(), 2u);
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Warning");
  EXPECT_EQ(prompts_.Prompts()[1].text,
            u"Operation failed.\nError code: 4000000F\n\nPlease contact technical support if "
            u"the problem persists.");
  EXPECT_EQ(prompts_.Prompts()[1].caption, u"Cannot Dismount Virtual Disk");
  EXPECT_EQ(prompts_.Prompts()[1].flags, 0x10u);
  const std::vector<ListedDisk> left = ListDisks();
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].mountPoint, u"P:");
}

TEST_F(MountedDiskViewHostTest, ClickingTheSortedColumnTwiceReturnsToAscending)
{
  Mount(u"q.qvi", u"Q:");
  Mount(u"p.qvi", u"P:");
  Mount(u"r.qvi", u"R:");
  Show(view_);
  const HWND header = view_.List().Header().Handle();
  EXPECT_EQ(Column(0), (Texts{L"P:", L"Q:", L"R:"}));
  ClickHeaderItem(header, 0);
  PumpMessages();
  EXPECT_EQ(view_.Columns().SortColumn(), -1);
  EXPECT_EQ(view_.List().Header().SortArrow(0), HDF_SORTUP);
  EXPECT_EQ(Column(0), (Texts{L"R:", L"Q:", L"P:"}));
  ClickHeaderItem(header, 0);
  PumpMessages();
  EXPECT_EQ(view_.Columns().SortColumn(), 1);
  EXPECT_EQ(view_.List().Header().SortArrow(0), HDF_SORTDOWN);
  EXPECT_EQ(Column(0), (Texts{L"P:", L"Q:", L"R:"}));
}

TEST_F(MountedDiskViewHostTest, DraggedColumnOrderIsKeptInColumnPosAndShownByTheNextView)
{
  const std::u16string image = Mount(u"work.qvi", u"P:");
  Show(view_);
  // Mount Point dragged behind Image Path.
  DragHeaderItem(view_.List().Header().Handle(), 0, 2);
  PumpMessages();
  EXPECT_EQ(view_.List().ColumnOrderArray(), (std::vector<int>{1, 2, 0}));
  EXPECT_EQ(view_.Columns().Layout().columns[0].order, 2);
  EXPECT_EQ(view_.Columns().Layout().columns[1].order, 0);
  EXPECT_EQ(view_.Columns().Layout().columns[3].order, 1);
  view_.DestroyWindow();

  // Width and order of each of the seven columns; hidden ones keep their defaults.
  EXPECT_EQ(StoredColumnPos(),
            (std::vector<uint8_t>{80, 0, 2,  0, 60, 0, 0,  0, 72, 0, 2,  0, 200, 0,
                                  1,  0, 60, 0, 4,  0, 80, 0, 5,  0, 80, 0, 6,   0}));

  CMountedDiskView next;
  Show(next);
  EXPECT_EQ(next.List().ColumnOrderArray(), (std::vector<int>{1, 2, 0}));
  ASSERT_EQ(ListRowCount(next.Handle()), 1);
  EXPECT_EQ(ListCellText(next.Handle(), 0, 0), L"P:");
  EXPECT_EQ(ListCellText(next.Handle(), 0, 2), Wide(image));
}

}  // namespace
