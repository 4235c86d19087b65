#include "ui/image_strip.h"

#include "ui/window.h"

CImageList LoadImageStrip(UINT bitmapId, int imageWidth, bool thirtyTwoBit)
{
  // A DIB section keeps the 32-bit strip's alpha channel as the file has it.
  const CBitmap strip(static_cast<HBITMAP>(LoadImageW(ResourceModule(), MAKEINTRESOURCEW(bitmapId),
                                                      IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
  BITMAP info{};
  if (!strip || imageWidth <= 0 || GetObjectW(strip.Get(), sizeof info, &info) == 0) return {};
  const int count = info.bmWidth / imageWidth;
  CImageList images(ImageList_Create(
      imageWidth, info.bmHeight, thirtyTwoBit ? ILC_COLOR32 : ILC_COLOR24 | ILC_MASK, count, 0));
  if (!images) return {};
  const int added = thirtyTwoBit ? ImageList_Add(images.Get(), strip.Get(), nullptr)
                                 : ImageList_AddMasked(images.Get(), strip.Get(), RGB(255, 0, 255));
  if (added < 0) return {};
  return images;
}
