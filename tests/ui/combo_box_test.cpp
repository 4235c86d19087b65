// The combo box wrapper on real drop-down lists: entries, their values, the selection and
// the searches, read back with the control's own messages.
#include <windows.h>

#include <string>

#include "support/control_host.h"
#include "support/ui_harness.h"
#include "ui/controls/combo_box.h"

namespace {

class ComboBoxTest : public UiTest {
 protected:
  CComboBox CreateDriveList()
  {
    const CComboBox combo(host_.Create(L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL));
    for (const wchar_t* letter : {L"E:", L"F:", L"G:"}) combo.AddString(letter);
    return combo;
  }

  static std::wstring RawText(const CComboBox& combo, int index)
  {
    wchar_t text[64] = {};
    combo.Send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
    return text;
  }

  CControlHost host_;
};

TEST_F(ComboBoxTest, EntriesAreAddedInsertedCountedAndReset)
{
  const CComboBox combo = CreateDriveList();
  EXPECT_EQ(combo.Send(CB_GETCOUNT), 3);
  EXPECT_EQ(combo.Count(), 3);
  EXPECT_EQ(RawText(combo, 2), L"G:");

  EXPECT_EQ(combo.InsertString(1, L"Z:"), 1);
  EXPECT_EQ(combo.AddString(L"H:"), 4);
  EXPECT_EQ(RawText(combo, 1), L"Z:");
  EXPECT_EQ(combo.ItemText(2), L"F:");
  EXPECT_EQ(combo.ItemText(4), L"H:");
  EXPECT_EQ(combo.ItemText(5), L"");

  combo.ResetContent();
  EXPECT_EQ(combo.Send(CB_GETCOUNT), 0);
}

TEST_F(ComboBoxTest, EntriesCarryValues)
{
  const CComboBox combo = CreateDriveList();
  ASSERT_TRUE(combo.SetItemData(1, 0x1234));
  EXPECT_EQ(combo.Send(CB_GETITEMDATA, 1), 0x1234);
  combo.Send(CB_SETITEMDATA, 2, 77);
  EXPECT_EQ(combo.ItemData(2), 77);
  EXPECT_FALSE(combo.SetItemData(9, 1));
}

TEST_F(ComboBoxTest, SelectionIsSetClearedAndRead)
{
  const CComboBox combo = CreateDriveList();
  EXPECT_EQ(combo.CurSel(), CB_ERR);
  ASSERT_TRUE(combo.SetCurSel(1));
  EXPECT_EQ(combo.Send(CB_GETCURSEL), 1);
  EXPECT_EQ(combo.Text(), L"F:");
  combo.Send(CB_SETCURSEL, 2);
  EXPECT_EQ(combo.CurSel(), 2);

  EXPECT_FALSE(combo.SetCurSel(7));
  ASSERT_TRUE(combo.SetCurSel(-1));
  EXPECT_EQ(combo.Send(CB_GETCURSEL), CB_ERR);
}

TEST_F(ComboBoxTest, FindStringExactMatchesWholeTextsOnly)
{
  const CComboBox combo = CreateDriveList();
  EXPECT_EQ(combo.FindStringExact(L"F:"), 1);
  EXPECT_EQ(combo.FindStringExact(L"f:"), 1);  // the control compares without case
  EXPECT_EQ(combo.FindStringExact(L"F"), CB_ERR);
  combo.AddString(L"F:");
  EXPECT_EQ(combo.FindStringExact(L"F:", 1), 3);
}

TEST_F(ComboBoxTest, SelectStringSelectsTheFirstEntryWithThePrefix)
{
  const CComboBox combo = CreateDriveList();
  combo.SetCurSel(0);
  EXPECT_EQ(combo.SelectString(L"G"), 2);
  EXPECT_EQ(combo.Send(CB_GETCURSEL), 2);
  EXPECT_EQ(combo.SelectString(L"Q:"), CB_ERR);
  EXPECT_EQ(combo.Send(CB_GETCURSEL), 2);
}

TEST_F(ComboBoxTest, LimitTextBoundsTheEditPartOfAnEditableCombo)
{
  const CComboBox combo(host_.Create(L"COMBOBOX", CBS_DROPDOWN | CBS_AUTOHSCROLL));
  combo.LimitText(3);
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  ASSERT_TRUE(GetComboBoxInfo(combo.Handle(), &info));
  EXPECT_EQ(SendMessageW(info.hwndItem, EM_GETLIMITTEXT, 0, 0), 3);
  for (const wchar_t typed : std::wstring(L"ABCDE")) SendMessageW(info.hwndItem, WM_CHAR, typed, 1);
  EXPECT_EQ(combo.Text(), L"ABC");
}

}  // namespace
