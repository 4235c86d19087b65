// Owning handles free what they own exactly once, also after moves and resets.
#include "ui/handles.h"
#include "support/ui_harness.h"

namespace {

bool IsOpenHandle(HANDLE handle)
{
  DWORD flags = 0;
  return GetHandleInformation(handle, &flags) != FALSE;
}

TEST(HandlesTest, KernelHandleIsClosedAtScopeEnd)
{
  HANDLE raw = nullptr;
  {
    const CKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    ASSERT_TRUE(event.IsValid());
    raw = event.Get();
    EXPECT_TRUE(IsOpenHandle(raw));
  }
  EXPECT_FALSE(IsOpenHandle(raw));
}

TEST(HandlesTest, MoveTransfersOwnershipAndResetFreesTheOldHandle)
{
  CKernelHandle first(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const HANDLE raw = first.Get();
  CKernelHandle second(std::move(first));
  EXPECT_FALSE(first.IsValid());
  EXPECT_EQ(second.Get(), raw);
  EXPECT_TRUE(IsOpenHandle(raw));
  second.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_FALSE(IsOpenHandle(raw));
  const HANDLE released = second.Release();
  EXPECT_FALSE(second.IsValid());
  EXPECT_TRUE(IsOpenHandle(released));
  CloseHandle(released);
}

TEST(HandlesTest, FileHandleTreatsInvalidHandleValueAsEmpty)
{
  const CFileHandle missing(
      CreateFileW(L"C:\\no\\such\\file.qvi", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_FALSE(missing.IsValid());
  EXPECT_EQ(missing.Get(), INVALID_HANDLE_VALUE);
}

TEST(HandlesTest, GdiObjectIsDeletedAndSelectionIsRestored)
{
  HBITMAP raw = nullptr;
  const CMemoryDc dc(CreateCompatibleDC(nullptr));
  ASSERT_TRUE(dc);
  const HGDIOBJ original = GetCurrentObject(dc.Get(), OBJ_BITMAP);
  {
    const CBitmap bitmap(CreateCompatibleBitmap(dc.Get(), 4, 4));
    ASSERT_TRUE(bitmap);
    raw = bitmap.Get();
    {
      const CSelectObject selected(dc.Get(), bitmap.Get());
      EXPECT_EQ(GetCurrentObject(dc.Get(), OBJ_BITMAP), raw);
    }
    EXPECT_EQ(GetCurrentObject(dc.Get(), OBJ_BITMAP), original);
    EXPECT_EQ(GetObjectType(raw), static_cast<DWORD>(OBJ_BITMAP));
  }
  EXPECT_EQ(GetObjectType(raw), 0u);  // deleted
}

TEST(HandlesTest, MenuIconAndWindowAreDestroyed)
{
  HMENU menu = nullptr;
  HWND window = nullptr;
  {
    const CMenu owned(CreatePopupMenu());
    menu = owned.Get();
    EXPECT_TRUE(IsMenu(menu));
    const COwnedWindow ownedWindow(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10,
                                                   nullptr, nullptr, nullptr, nullptr));
    window = ownedWindow.Get();
    EXPECT_TRUE(IsWindow(window));
    const CIcon icon(CreateIcon(nullptr, 1, 1, 1, 1, std::array<BYTE, 2>{0xFF, 0}.data(),
                                std::array<BYTE, 2>{0, 0}.data()));
    EXPECT_TRUE(icon.IsValid());
  }
  EXPECT_FALSE(IsMenu(menu));
  EXPECT_FALSE(IsWindow(window));
}

}  // namespace
