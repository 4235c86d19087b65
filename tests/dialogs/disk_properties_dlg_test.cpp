// The properties dialog through its real window: the template, the fields filled for a
// disk, and how each command closes it.
#include "dialogs/disk_properties_dlg_win.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/display_text.h"
#include "dialog_controls.h"
#include "res/resource.h"
#include "support/ui_harness.h"
#include "system/wide_text_win.h"

namespace {

// A fixed-size AES-256 image of 1.5 GiB, not FAT-compatible, mounted removable.
MountedDisk SampleDisk()
{
  MountedDisk disk;
  disk.imagePath = u"C:\\Users\\Anna\\Documents\\Work disk.qvi";
  disk.mountPoint = u"E:\\";
  disk.mountFlags = 0x2;
  disk.info.imageFlags = 0x1;
  disk.info.creationTime = 1'600'000'000;
  disk.info.mountTime = 1'700'000'000;
  disk.info.capacity = 1'610'612'736;
  disk.info.volumeSizeLimit = 0xFFFFFFFFFFFFFFFEull;
  disk.info.algorithm = 0;
  disk.info.keyLength = 32;
  return disk;
}

class DiskPropertiesDlgTest : public UiTest {
 protected:
  // The dialog created modeless, as the window tests drive it.
  HWND Open()
  {
    dialog_ = std::make_unique<CVirtualDiskPropertiesDlg>(disk_);
    const HWND window = dialog_->Create(nullptr);
    EXPECT_NE(window, nullptr);
    return window;
  }

  // Runs the dialog modally and ends it by sending `command`; the dialog's result.
  INT_PTR CloseWith(UINT message, WPARAM wParam)
  {
    CVirtualDiskPropertiesDlg dialog(disk_);
    return RunModal([&] { return dialog.DoModal(nullptr); },
                    [&](HWND window) { PostMessageW(window, message, wParam, 0); });
  }

  MountedDisk disk_ = SampleDisk();
  std::unique_ptr<CVirtualDiskPropertiesDlg> dialog_;
};

}  // namespace

TEST_F(DiskPropertiesDlgTest, TemplateHasTheDesignedControls)
{
  const HWND window = Open();
  EXPECT_EQ(CWindow::WindowText(window), L"Virtual Disk Properties");

  constexpr DWORD kStaticType = SS_TYPEMASK;
  constexpr DWORD kGroupBox = BS_GROUPBOX;
  const DWORD pathStyle = SS_LEFTNOWORDWRAP | SS_PATHELLIPSIS;
  struct Expected {
    int id;
    const wchar_t* className;
    const wchar_t* text;
    DWORD styleMask;
    DWORD style;
  };
  // Every control in tab order; the value fields' texts are those of the sample disk.
  const Expected expected[] = {
      {-1, L"Button", L"Virtual disk image", BS_TYPEMASK, kGroupBox},
      {-1, L"Static", L"Image path:", kStaticType, SS_LEFT},
      {1010, L"Static", nullptr, kStaticType | SS_ELLIPSISMASK, pathStyle},
      {-1, L"Static", L"Mount point:", kStaticType, SS_LEFT},
      {1000, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Capacity:", kStaticType, SS_LEFT},
      {1001, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Created:", kStaticType, SS_LEFT},
      {1012, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Mounted:", kStaticType, SS_LEFT},
      {1015, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Fixed size:", kStaticType, SS_LEFT},
      {1013, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"FAT-compatible:", kStaticType, SS_LEFT},
      {1014, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Read only:", kStaticType, SS_LEFT},
      {1009, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Removable:", kStaticType, SS_LEFT},
      {1011, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Button", L"Encryption", BS_TYPEMASK, kGroupBox},
      {-1, L"Static", L"Algorithm:", kStaticType, SS_LEFT},
      {1005, L"Static", nullptr, kStaticType, SS_LEFT},
      {-1, L"Static", L"Key length:", kStaticType, SS_LEFT},
      {1006, L"Static", nullptr, kStaticType, SS_LEFT},
      {IDOK, L"Button", L"Close", BS_TYPEMASK, BS_DEFPUSHBUTTON},
  };
  const std::vector<ControlSeen> seen = DialogControls(window);
  ASSERT_EQ(seen.size(), std::size(expected));
  for (size_t i = 0; i < seen.size(); ++i) {
    SCOPED_TRACE(i);
    // A control without an id reads back as 0xFFFF.
    const int id = seen[i].id == 0xFFFF ? -1 : seen[i].id;
    EXPECT_EQ(id, expected[i].id);
    EXPECT_EQ(_wcsicmp(seen[i].className.c_str(), expected[i].className), 0) << seen[i].className;
    if (expected[i].text != nullptr) {
      EXPECT_EQ(seen[i].text, expected[i].text);
    }
    EXPECT_EQ(seen[i].style & expected[i].styleMask, expected[i].style)
        << std::hex << seen[i].style;
  }
}

TEST_F(DiskPropertiesDlgTest, FieldsShowTheDisk)
{
  const HWND window = Open();
  const std::wstring created = Wide(FormatDateTimeText(disk_.info.creationTime));
  const std::wstring mounted = Wide(FormatDateTimeText(disk_.info.mountTime));
  ASSERT_FALSE(created.empty());
  EXPECT_EQ(ControlText(window, 1010), L"C:\\Users\\Anna\\Documents\\Work disk.qvi");
  EXPECT_EQ(ControlText(window, 1000), L"E:\\");
  EXPECT_EQ(ControlText(window, 1001), L"1.5 GB");
  EXPECT_EQ(ControlText(window, 1012), created);
  EXPECT_EQ(ControlText(window, 1015), mounted);
  EXPECT_EQ(ControlText(window, 1013), L"Yes");
  EXPECT_EQ(ControlText(window, 1014), L"No");
  EXPECT_EQ(ControlText(window, 1009), L"No");
  EXPECT_EQ(ControlText(window, 1011), L"Yes");
  EXPECT_EQ(ControlText(window, 1005), L"AES");
  EXPECT_EQ(ControlText(window, 1006), L"256 bits");
}

TEST_F(DiskPropertiesDlgTest, UnknownAlgorithmLeavesItsFieldEmpty)
{
  disk_.info.algorithm = 3;
  disk_.info.keyLength = 16;
  const HWND window = Open();
  EXPECT_EQ(ControlText(window, 1005), L"");
  EXPECT_EQ(ControlText(window, 1006), L"128 bits");
}

TEST_F(DiskPropertiesDlgTest, CloseEndsWithOne)
{
  EXPECT_EQ(CloseWith(WM_COMMAND, IDOK), IDOK);
}

TEST_F(DiskPropertiesDlgTest, EscapeAndTheCloseBoxEndWithTwo)
{
  EXPECT_EQ(CloseWith(WM_COMMAND, IDCANCEL), IDCANCEL);
  EXPECT_EQ(CloseWith(WM_CLOSE, 0), IDCANCEL);
}

TEST_F(DiskPropertiesDlgTest, AnyOtherCommandEndsWithTwo)
{
  EXPECT_EQ(CloseWith(WM_COMMAND, ID_FILE_NEW_IMAGE), IDCANCEL);
}
