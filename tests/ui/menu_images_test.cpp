// Menu images: loaded from a bitmap strip and a toolbar resource naming each image's
// command, given to the items that have a command with an image, measured and drawn by the
// menu's owner (grey for a disabled item).
#include <windows.h>

#include <commctrl.h>

#include "support/frame_test_resources.h"
#include "support/ui_harness.h"
#include "ui/handles.h"
#include "ui/image_strip.h"
#include "ui/menu_images.h"
#include "ui/window.h"

namespace {

using MenuImagesTest = UiTest;

// One red 16x16 image for ID_SAMPLE_OPEN.
CImageList RedImage()
{
  CImageList images(ImageList_Create(16, 16, ILC_COLOR24, 1, 0));
  const CWindowDc screen(nullptr);
  const CBitmap bitmap(CreateCompatibleBitmap(screen.Get(), 16, 16));
  {
    const CMemoryDc dc(CreateCompatibleDC(screen.Get()));
    const CSelectObject selected(dc.Get(), bitmap.Get());
    const CBrush red(CreateSolidBrush(RGB(255, 0, 0)));
    const RECT all{0, 0, 16, 16};
    FillRect(dc.Get(), &all, red.Get());
  }
  ImageList_Add(images.Get(), bitmap.Get(), nullptr);
  return images;
}

struct Drawn {
  int red = 0;   // pure red pixels
  int grey = 0;  // pixels neither white nor red, all of them grey
  bool onlyGrey = true;
};

// What the image of ID_SAMPLE_OPEN drawn in `state` onto a white 32x32 area left there.
Drawn DrawOnWhite(const CMenuImages& images, UINT state)
{
  const CWindowDc screen(nullptr);
  const CMemoryDc dc(CreateCompatibleDC(screen.Get()));
  const CBitmap bitmap(CreateCompatibleBitmap(screen.Get(), 32, 32));
  const CSelectObject selected(dc.Get(), bitmap.Get());
  const RECT all{0, 0, 32, 32};
  FillRect(dc.Get(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  DRAWITEMSTRUCT item{};
  item.CtlType = ODT_MENU;
  item.itemID = ID_SAMPLE_OPEN;
  item.itemState = state;
  item.hDC = dc.Get();
  item.rcItem = all;
  EXPECT_TRUE(images.Draw(item));
  Drawn drawn;
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      const COLORREF pixel = GetPixel(dc.Get(), x, y);
      if (pixel == RGB(255, 0, 0)) {
        ++drawn.red;
      } else if (pixel != RGB(255, 255, 255)) {
        ++drawn.grey;
        drawn.onlyGrey = drawn.onlyGrey && GetRValue(pixel) == GetGValue(pixel) &&
                         GetGValue(pixel) == GetBValue(pixel);
      }
    }
  }
  return drawn;
}

TEST_F(MenuImagesTest, LoadsTheStripAndTheCommandOfEachImage)
{
  for (const UINT bitmap : {UINT{IDB_SAMPLE_MENU_IMAGES}, UINT{IDB_SAMPLE_MENU_IMAGES_MASKED}}) {
    CMenuImages images;
    ASSERT_TRUE(images.Load(IDR_SAMPLE_MENU_IMAGES, bitmap, bitmap == IDB_SAMPLE_MENU_IMAGES));
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(images.Images(), &width, &height);
    EXPECT_EQ(width, 24);
    EXPECT_EQ(height, 24);
    EXPECT_EQ(images.IndexOf(ID_SAMPLE_NEW), 0);
    EXPECT_EQ(images.IndexOf(ID_SAMPLE_REFRESH), 6);
    EXPECT_EQ(images.IndexOf(ID_SAMPLE_ABOUT), -1);
    EXPECT_EQ(images.IndexOf(0), -1);
  }
  CMenuImages missing;
  EXPECT_FALSE(missing.Load(IDR_SAMPLE_MENU_IMAGES + 100, IDB_SAMPLE_MENU_IMAGES, true));
  EXPECT_EQ(LoadImageStrip(IDB_SAMPLE_TOOLBAR + 100, 24, true).Get(), nullptr);
}

TEST_F(MenuImagesTest, OnlyItemsWithAnImageGetTheOwnersBitmap)
{
  CMenuImages images;
  ASSERT_TRUE(images.Load(IDR_SAMPLE_MENU_IMAGES, IDB_SAMPLE_MENU_IMAGES, true));
  const CMenu menu(LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDM_SAMPLE_FRAME)));
  images.MarkItems(menu.Get());
  const auto bitmapOf = [&](UINT id) {
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_BITMAP;
    GetMenuItemInfoW(menu.Get(), id, FALSE, &item);
    return item.hbmpItem;
  };
  EXPECT_EQ(bitmapOf(ID_SAMPLE_OPEN), HBMMENU_CALLBACK);
  EXPECT_EQ(bitmapOf(ID_SAMPLE_REFRESH), HBMMENU_CALLBACK);
  EXPECT_EQ(bitmapOf(ID_SAMPLE_ABOUT), nullptr);
  EXPECT_EQ(bitmapOf(ID_SAMPLE_COLUMN), nullptr);  // inside a submenu, without an image
}

TEST_F(MenuImagesTest, MeasuresAndDrawsTheImageGreyWhenDisabled)
{
  CMenuImages images;
  images.Set(RedImage(), {ID_SAMPLE_OPEN});
  MEASUREITEMSTRUCT measure{};
  measure.CtlType = ODT_MENU;
  measure.itemID = ID_SAMPLE_OPEN;
  ASSERT_TRUE(images.Measure(measure));
  EXPECT_EQ(measure.itemWidth, 16u);
  EXPECT_EQ(measure.itemHeight, 16u);
  measure.itemID = ID_SAMPLE_CLOSE;
  EXPECT_FALSE(images.Measure(measure));

  const Drawn normal = DrawOnWhite(images, 0);
  EXPECT_EQ(normal.red, 16 * 16);
  EXPECT_EQ(normal.grey, 0);
  const Drawn disabled = DrawOnWhite(images, ODS_GRAYED);
  EXPECT_EQ(disabled.red, 0);
  EXPECT_EQ(disabled.grey, 16 * 16);
  EXPECT_TRUE(disabled.onlyGrey);
}

}  // namespace
