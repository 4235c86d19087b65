// The in-process capture draws the dialog with its frame and child controls under the null
// graphics driver, and the PNG written from it starts as a PNG must.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <vector>

#include "support/temp_dir.h"
#include "support/test_dialogs.h"
#include "support/ui_harness.h"
#include "tools/screenshot/capture.h"

namespace {

using CaptureTest = UiTest;

struct Rgb {
  uint8_t red, green, blue;
  bool operator==(const Rgb&) const = default;
};

Rgb PixelAt(const RgbImage& image, LONG x, LONG y)
{
  const size_t at = (static_cast<size_t>(y) * image.width + static_cast<size_t>(x)) * 3;
  return {image.pixels[at], image.pixels[at + 1], image.pixels[at + 2]};
}

Rgb SystemColour(int index)
{
  const COLORREF colour = GetSysColor(index);
  return {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
}

// The rectangle of a child control in the captured picture (window coordinates).
RECT InPicture(HWND window, HWND child)
{
  RECT windowRect{};
  RECT childRect{};
  GetWindowRect(window, &windowRect);
  GetWindowRect(child, &childRect);
  OffsetRect(&childRect, -windowRect.left, -windowRect.top);
  return childRect;
}

int DistinctColours(const RgbImage& image, const RECT& area)
{
  std::vector<Rgb> seen;
  for (LONG y = area.top; y < area.bottom; ++y) {
    for (LONG x = area.left; x < area.right; ++x) {
      const Rgb pixel = PixelAt(image, x, y);
      if (std::find(seen.begin(), seen.end(), pixel) == seen.end()) seen.push_back(pixel);
      if (seen.size() > 8) return static_cast<int>(seen.size());
    }
  }
  return static_cast<int>(seen.size());
}

TEST_F(CaptureTest, ChildControlsAreDrawn)
{
  CHarnessTestDlg dialog;
  dialog.name = L"work";
  const HWND window = dialog.Create(nullptr);
  ShowWindow(window, SW_SHOW);
  PumpMessages();
  RgbImage image;
  ASSERT_TRUE(CaptureWindow(window, image));
  RECT rect{};
  GetWindowRect(window, &rect);
  EXPECT_EQ(image.width, static_cast<uint32_t>(rect.right - rect.left));
  EXPECT_EQ(image.height, static_cast<uint32_t>(rect.bottom - rect.top));

  // The list view's inside is painted in the window colour, not left in the dialog's face
  // colour, and its rows and the OK button carry text (more than a flat fill).
  const RECT list = InPicture(window, GetDlgItem(window, IDC_LIST));
  EXPECT_EQ(PixelAt(image, list.right - 6, list.bottom - 6), SystemColour(COLOR_WINDOW));
  EXPECT_NE(SystemColour(COLOR_WINDOW), SystemColour(COLOR_BTNFACE));
  EXPECT_GT(DistinctColours(image, list), 2);
  EXPECT_GT(DistinctColours(image, InPicture(window, GetDlgItem(window, IDOK))), 2);
  // The dialog's face between the controls keeps the face colour.
  const RECT answer = InPicture(window, GetDlgItem(window, IDC_ANSWER));
  EXPECT_EQ(PixelAt(image, answer.right - 2, answer.top + 1), SystemColour(COLOR_BTNFACE));
}

TEST_F(CaptureTest, WritesAPngFile)
{
  CHarnessTestDlg dialog;
  const HWND window = dialog.Create(nullptr);
  ShowWindow(window, SW_SHOW);
  const TempDir directory;
  const std::wstring path = (directory.path() / "dialog.png").wstring();
  ASSERT_TRUE(WriteWindowPng(window, path.c_str()));
  FILE* file = _wfopen(path.c_str(), L"rb");
  ASSERT_NE(file, nullptr);
  unsigned char signature[8] = {};
  EXPECT_EQ(fread(signature, 1, 8, file), 8u);
  fclose(file);
  EXPECT_EQ(signature[0], 0x89);
  EXPECT_EQ(signature[1], 'P');
  EXPECT_FALSE(WriteWindowPng(nullptr, path.c_str()));
}

}  // namespace
