// The edit wrapper on real edit controls: the text limit, the selection and the password
// mask read back with the control's own messages, and wiping a secret out of the control's
// own text buffer.
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/control_host.h"
#include "support/ui_harness.h"
#include "ui/controls/edit.h"

namespace {

class EditTest : public UiTest {
 protected:
  CEditCtrl CreateEdit(DWORD style = ES_AUTOHSCROLL)
  {
    return CEditCtrl(host_.Create(L"EDIT", WS_BORDER | style, RECT{10, 10, 210, 60}));
  }

  static void Type(const CEditCtrl& edit, const std::wstring& text)
  {
    for (const wchar_t typed : text) edit.Send(WM_CHAR, typed, 1);
  }

  // The characters of a multi-line edit's own text buffer (the only kind whose buffer the
  // control hands out), `count` of them from the start.
  static std::wstring Buffer(const CEditCtrl& edit, size_t count)
  {
    const auto memory = reinterpret_cast<HLOCAL>(edit.Send(EM_GETHANDLE));
    const auto* text = static_cast<const wchar_t*>(LocalLock(memory));
    std::wstring copy(text, count);
    LocalUnlock(memory);
    return copy;
  }

  // Whether every byte of the block is committed, readable memory.
  static bool IsCommitted(const void* start, size_t size)
  {
    const auto* at = static_cast<const char*>(start);
    const char* const end = at + size;
    while (at < end) {
      MEMORY_BASIC_INFORMATION region{};
      if (VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT ||
          (region.Protect & (PAGE_READWRITE | PAGE_READONLY)) == 0) {
        return false;
      }
      at = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return true;
  }

  // How many times `needle` occurs in the process's heaps, in used and free blocks alike.
  static int HeapOccurrences(const std::wstring& needle)
  {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 16);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    const size_t bytes = needle.size() * sizeof(wchar_t);
    int found = 0;
    for (const HANDLE heap : heaps) {
      if (!HeapLock(heap)) continue;
      PROCESS_HEAP_ENTRY entry{};
      while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & (PROCESS_HEAP_REGION | PROCESS_HEAP_UNCOMMITTED_RANGE)) != 0 ||
            entry.cbData < bytes || !IsCommitted(entry.lpData, entry.cbData)) {
          continue;
        }
        const auto* data = static_cast<const char*>(entry.lpData);
        for (size_t at = 0; at + bytes <= entry.cbData; at += sizeof(wchar_t)) {
          if (std::memcmp(data + at, needle.data(), bytes) == 0) ++found;
        }
      }
      HeapUnlock(heap);
    }
    return found;
  }

  CControlHost host_;
};

TEST_F(EditTest, LimitTextBoundsWhatCanBeTyped)
{
  const CEditCtrl edit = CreateEdit();
  edit.LimitText(5);
  EXPECT_EQ(edit.Send(EM_GETLIMITTEXT), 5);
  EXPECT_EQ(edit.TextLimit(), 5);
  Type(edit, L"1234567");
  EXPECT_EQ(edit.Text(), L"12345");
}

TEST_F(EditTest, SelectAllSelectsTheWholeText)
{
  const CEditCtrl edit = CreateEdit();
  edit.SetText(L"C:\\disk.qvi");
  edit.Send(EM_SETSEL, 3, 3);
  edit.SelectAll();
  DWORD start = 1;
  DWORD end = 0;
  edit.Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  EXPECT_EQ(start, 0u);
  EXPECT_EQ(end, 11u);
}

TEST_F(EditTest, PasswordCharIsSetAndReadBack)
{
  const CEditCtrl edit = CreateEdit(ES_PASSWORD);
  EXPECT_NE(edit.PasswordChar(), L'\0');  // a password edit masks from the start
  edit.SetPasswordChar(L'#');
  EXPECT_EQ(edit.Send(EM_GETPASSWORDCHAR), L'#');
  edit.SetPasswordChar(L'\0');
  EXPECT_EQ(edit.PasswordChar(), L'\0');
}

TEST_F(EditTest, WipeTextEmptiesAPasswordEditAndItsUndo)
{
  const CEditCtrl edit = CreateEdit(ES_PASSWORD);
  Type(edit, L"s3cret");
  ASSERT_EQ(edit.Text(), L"s3cret");
  ASSERT_NE(edit.Send(EM_CANUNDO), 0);
  edit.WipeText();
  EXPECT_EQ(edit.Text(), L"");
  EXPECT_EQ(edit.Send(EM_CANUNDO), 0);
  edit.Send(EM_UNDO);
  EXPECT_EQ(edit.Text(), L"");
}

TEST_F(EditTest, WipeTextOverwritesTheSecretInTheControlsBuffer)
{
  const std::wstring secret = L"s3cret";
  // Emptying alone leaves the secret's tail in the buffer: this is what wiping prevents.
  const CEditCtrl emptied = CreateEdit(ES_MULTILINE);
  Type(emptied, secret);
  ASSERT_EQ(Buffer(emptied, secret.size()), secret);
  emptied.SetText(L"");
  EXPECT_EQ(Buffer(emptied, secret.size()).substr(1), secret.substr(1));

  const CEditCtrl wiped = CreateEdit(ES_MULTILINE);
  Type(wiped, secret);
  ASSERT_EQ(Buffer(wiped, secret.size()), secret);
  wiped.WipeText();
  EXPECT_EQ(wiped.Text(), L"");
  const std::wstring left = Buffer(wiped, secret.size());
  EXPECT_EQ(left[0], L'\0');
  EXPECT_EQ(left.substr(1), std::wstring(secret.size() - 1, CEditCtrl::kWipeFiller));
}

TEST_F(EditTest, WipeTextLeavesNoCopyOfAPasswordInTheHeap)
{
  // Short texts, so that the strings of this test stay on the stack: the control's buffer
  // is then the only place in the heap that holds the typed password. Emptying keeps all
  // but its first character there, so the search looks for that tail.
  const std::wstring secret = L"Qz7!kW";
  const std::wstring tail = secret.substr(1);
  ASSERT_EQ(HeapOccurrences(tail), 0);
  const CEditCtrl edit = CreateEdit(ES_PASSWORD);
  Type(edit, secret);
  ASSERT_EQ(edit.Send(WM_GETTEXTLENGTH), 6);
  ASSERT_GE(HeapOccurrences(tail), 1);
  edit.WipeText();
  EXPECT_EQ(edit.Send(WM_GETTEXTLENGTH), 0);
  EXPECT_EQ(HeapOccurrences(tail), 0);
}

}  // namespace
