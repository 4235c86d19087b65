// Reflection: a notification or command that a control sends to its parent is first offered
// to the control's own object; the parent sees it only when that object declines. A list
// view's header is a child of the list view, so the list view's object sees the header's
// notifications itself.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <vector>

#include "support/test_dialogs.h"
#include "support/ui_harness.h"
#include "ui/window.h"

namespace {

using ReflectionTest = UiTest;

constexpr UINT kListId = 77;
constexpr UINT kButtonId = 78;
constexpr UINT kCustomCode = 0xFFFFF000u;  // an application-defined notification code

// A parent that records the notifications and commands that reach it.
class CRecordingParent : public CCustomWindow {
 public:
  std::vector<UINT> notifications;
  std::vector<UINT> commands;

 protected:
  bool OnNotify(NMHDR& header, LRESULT&) override
  {
    notifications.push_back(header.code);
    return false;
  }
  bool OnCommand(UINT id, UINT, HWND) override
  {
    commands.push_back(id);
    return true;
  }
};

// A superclassed list view that sorts on its own column clicks and sees its header.
class CSortingList : public CCustomWindow {
 public:
  bool handleColumnClick = true;
  std::vector<UINT> reflected;   // notifications of the list, offered back to it
  std::vector<UINT> fromHeader;  // notifications of its header
  int sortedColumn = -1;

 protected:
  ClassDescription WindowClass() const override
  {
    return {L"Cryptelle.Test.SortingList", WC_LISTVIEWW};
  }
  bool OnReflectedNotify(NMHDR& header, LRESULT& result) override
  {
    reflected.push_back(header.code);
    if (header.code == kCustomCode) {
      result = 0x77;
      return true;
    }
    if (header.code != LVN_COLUMNCLICK || !handleColumnClick) return false;
    sortedColumn = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
    return true;
  }
  bool OnNotify(NMHDR& header, LRESULT&) override
  {
    const auto headerWindow = reinterpret_cast<HWND>(Send(LVM_GETHEADER));
    if (header.hwndFrom == headerWindow) fromHeader.push_back(header.code);
    return false;  // the list view still does its own work (and reports the column click)
  }
};

// A superclassed button that takes its own clicks when asked to.
class CSelfClickingButton : public CCustomWindow {
 public:
  bool takeClicks = true;
  int clicks = 0;

 protected:
  ClassDescription WindowClass() const override
  {
    return {L"Cryptelle.Test.SelfClickingButton", WC_BUTTONW};
  }
  bool OnReflectedCommand(UINT code) override
  {
    if (code != BN_CLICKED || !takeClicks) return false;
    ++clicks;
    return true;
  }
};

bool Contains(const std::vector<UINT>& codes, UINT code)
{
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

void AddColumns(HWND list)
{
  for (int column = 0; column < 2; ++column) {
    wchar_t title[] = L"Column";
    LVCOLUMNW description{};
    description.mask = LVCF_TEXT | LVCF_WIDTH;
    description.pszText = title;
    description.cx = 100;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&description));
  }
}

// A real mouse click on a header item, as the header control receives it.
void ClickHeaderItem(HWND list, int index)
{
  const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  RECT item{};
  SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(&item));
  const LPARAM point = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
  SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, point);
  SendMessageW(header, WM_LBUTTONUP, 0, point);
}

class ReflectionListTest : public UiTest {
 protected:
  void SetUp() override
  {
    ASSERT_NE(
        parent_.Create(nullptr, RECT{0, 0, 400, 300}, L"parent", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
        nullptr);
    ASSERT_NE(list_.Create(parent_.Handle(), RECT{0, 0, 380, 280}, L"",
                           WS_CHILD | WS_VISIBLE | LVS_REPORT, 0,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kListId))),
              nullptr);
    AddColumns(list_.Handle());
  }

  CRecordingParent parent_;
  CSortingList list_;
};

TEST_F(ReflectionListTest, HeaderClickReachesTheListAndItsColumnClickComesBackToIt)
{
  ClickHeaderItem(list_.Handle(), 1);
  EXPECT_TRUE(Contains(list_.fromHeader, HDN_ITEMCLICKW));
  EXPECT_EQ(list_.sortedColumn, 1);
  EXPECT_TRUE(Contains(list_.reflected, LVN_COLUMNCLICK));
  EXPECT_FALSE(Contains(parent_.notifications, LVN_COLUMNCLICK));  // taken by the list
}

TEST_F(ReflectionListTest, ParentSeesWhatTheListDeclines)
{
  list_.handleColumnClick = false;
  ClickHeaderItem(list_.Handle(), 0);
  EXPECT_TRUE(Contains(list_.fromHeader, HDN_ITEMCLICKW));
  EXPECT_TRUE(Contains(list_.reflected, LVN_COLUMNCLICK));
  EXPECT_TRUE(Contains(parent_.notifications, LVN_COLUMNCLICK));
  EXPECT_EQ(list_.sortedColumn, -1);
}

TEST_F(ReflectionListTest, ReflectedAnswerIsTheParentsAnswer)
{
  NMHDR header{list_.Handle(), kListId, kCustomCode};
  EXPECT_EQ(parent_.Send(WM_NOTIFY, kListId, reinterpret_cast<LPARAM>(&header)), 0x77);
  EXPECT_FALSE(Contains(parent_.notifications, kCustomCode));
  // A window that is not a child of the receiver is not asked: the receiver's own handler.
  header.hwndFrom = parent_.Handle();
  parent_.Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
  EXPECT_TRUE(Contains(parent_.notifications, kCustomCode));
}

TEST_F(ReflectionTest, ReflectedNotificationInADialogAnswersThroughTheDialogManager)
{
  CHarnessTestDlg dialog;
  const HWND window = dialog.Create(nullptr);
  CSortingList list;
  ASSERT_NE(list.Create(window, RECT{0, 0, 100, 100}, L"", WS_CHILD | LVS_REPORT, 0,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kListId))),
            nullptr);
  NMHDR header{list.Handle(), kListId, kCustomCode};
  EXPECT_EQ(SendMessageW(window, WM_NOTIFY, kListId, reinterpret_cast<LPARAM>(&header)), 0x77);
  EXPECT_TRUE(Contains(list.reflected, kCustomCode));
}

TEST_F(ReflectionTest, ControlCommandIsOfferedToTheControlFirst)
{
  CRecordingParent parent;
  parent.Create(nullptr, RECT{0, 0, 200, 100}, L"parent", WS_OVERLAPPEDWINDOW);
  CSelfClickingButton button;
  ASSERT_NE(button.Create(parent.Handle(), RECT{0, 0, 80, 24}, L"Press",
                          WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, 0,
                          reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kButtonId))),
            nullptr);
  button.Send(BM_CLICK);
  EXPECT_EQ(button.clicks, 1);
  EXPECT_TRUE(parent.commands.empty());

  button.takeClicks = false;
  button.Send(BM_CLICK);
  EXPECT_EQ(button.clicks, 1);
  EXPECT_EQ(parent.commands, std::vector<UINT>{kButtonId});
}

}  // namespace
