// Windows of our own classes and superclassed controls: the object is attached from the
// first message on, handlers see messages before the default processing, and the object is
// told when its window is gone.
#include <windows.h>

#include <commctrl.h>

#include "support/ui_harness.h"
#include "ui/window.h"

namespace {

using WindowTest = UiTest;

constexpr UINT kQuestion = WM_APP + 1;
constexpr UINT kPosted = WM_APP + 2;

class CRecordingWindow : public CCustomWindow {
 public:
  bool handleBeforeCreate = false;  // set when a message reached us before WM_CREATE
  int creates = 0;
  int destroys = 0;
  int finals = 0;
  int timers = 0;
  int posted = 0;
  HWND handleAtCreate = nullptr;

 protected:
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    if (message == WM_NCCREATE) handleBeforeCreate = Handle() != nullptr;
    if (message == WM_CREATE) {
      ++creates;
      handleAtCreate = Handle();
    }
    if (message == kPosted) {
      ++posted;
      return true;
    }
    if (message == kQuestion) {
      result = static_cast<LRESULT>(wParam + static_cast<WPARAM>(lParam));
      return true;
    }
    return CCustomWindow::HandleMessage(message, wParam, lParam, result);
  }
  bool OnTimer(UINT_PTR id) override
  {
    if (id == 7) ++timers;
    return true;
  }
  void OnDestroy() override { ++destroys; }
  void OnFinalMessage() override { ++finals; }
};

// A list view that creates itself and is extended by our handlers (a superclass).
class CRecordingList : public CCustomWindow {
 public:
  int creates = 0;
  int inserts = 0;

 protected:
  ClassDescription WindowClass() const override { return {L"Cryptelle.Test.List", WC_LISTVIEWW}; }
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    if (message == WM_CREATE) {
      // Let the list control create itself first, then adjust it.
      result = DefaultProcessing(message, wParam, lParam);
      ++creates;
      Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
      return true;
    }
    if (message == LVM_INSERTITEMW) ++inserts;
    return CCustomWindow::HandleMessage(message, wParam, lParam, result);
  }
};

TEST_F(WindowTest, ObjectIsAttachedFromTheFirstMessage)
{
  CRecordingWindow window;
  const HWND handle =
      window.Create(nullptr, RECT{10, 10, 210, 110}, L"recording", WS_OVERLAPPEDWINDOW);
  ASSERT_NE(handle, nullptr);
  EXPECT_TRUE(window.handleBeforeCreate);
  EXPECT_EQ(window.creates, 1);
  EXPECT_EQ(window.handleAtCreate, handle);
  EXPECT_EQ(CMessageHandler::FromHandle(handle), &window);
  EXPECT_EQ(window.Text(), L"recording");
  EXPECT_TRUE(window.SetText(L"renamed"));
  EXPECT_EQ(window.Text(), L"renamed");
}

TEST_F(WindowTest, HandledMessageGivesItsResultAndPostedMessagesAndTimersArrive)
{
  CRecordingWindow window;
  window.Create(nullptr, RECT{0, 0, 100, 100}, L"", WS_OVERLAPPEDWINDOW);
  EXPECT_EQ(window.Send(kQuestion, 40, 2), 42);
  EXPECT_EQ(window.Send(WM_GETTEXTLENGTH), 0);  // unhandled: DefWindowProc answered
  ASSERT_TRUE(window.Post(kPosted));
  EXPECT_EQ(window.posted, 0);  // queued, not yet dispatched
  EXPECT_TRUE(PumpUntil([&] { return window.posted == 1; }));
  ASSERT_TRUE(window.SetTimer(7, 10));
  EXPECT_TRUE(PumpUntil([&] { return window.timers >= 2; }));
  window.KillTimer(7);
}

TEST_F(WindowTest, DestructionRunsOnDestroyThenTheFinalMessageAndDetaches)
{
  CRecordingWindow window;
  const HWND handle = window.Create(nullptr, RECT{0, 0, 100, 100}, L"", WS_OVERLAPPEDWINDOW);
  EXPECT_TRUE(window.DestroyWindow());
  EXPECT_EQ(window.destroys, 1);
  EXPECT_EQ(window.finals, 1);
  EXPECT_EQ(window.Handle(), nullptr);
  EXPECT_EQ(CMessageHandler::FromHandle(handle), nullptr);
}

TEST_F(WindowTest, OtherWindowsHaveNoObject)
{
  const COwnedWindow plain(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                                           nullptr, nullptr, nullptr));
  EXPECT_EQ(CMessageHandler::FromHandle(plain.Get()), nullptr);
}

TEST_F(WindowTest, SuperclassedListViewCreatesItselfAndKeepsItsBehaviour)
{
  CRecordingWindow parent;
  parent.Create(nullptr, RECT{0, 0, 400, 300}, L"parent", WS_OVERLAPPEDWINDOW);
  CRecordingList list;
  const HWND handle = list.Create(parent.Handle(), RECT{0, 0, 380, 280}, L"",
                                  WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(list.creates, 1);
  EXPECT_EQ(list.Send(LVM_GETEXTENDEDLISTVIEWSTYLE) & 0x30, 0x30);

  wchar_t title[] = L"Mount Point";
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = title;
  column.cx = 80;
  list.Send(LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  wchar_t text[] = L"E:";
  LVITEMW item{};
  item.mask = LVIF_TEXT;
  item.pszText = text;
  list.Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(list.inserts, 1);
  EXPECT_EQ(ListRowCount(handle), 1);
  EXPECT_EQ(ListCellText(handle, 0, 0), L"E:");
}

TEST_F(WindowTest, ObjectDestroyedFirstTakesItsWindowAlong)
{
  CRecordingWindow parent;
  parent.Create(nullptr, RECT{0, 0, 400, 300}, L"parent", WS_OVERLAPPEDWINDOW);
  HWND handle = nullptr;
  {
    CRecordingList list;
    handle = list.Create(parent.Handle(), RECT{0, 0, 380, 280}, L"", WS_CHILD | LVS_REPORT);
    ASSERT_TRUE(IsWindow(handle));
  }
  EXPECT_FALSE(IsWindow(handle));
  EXPECT_EQ(GetWindow(parent.Handle(), GW_CHILD), nullptr);
}

}  // namespace
