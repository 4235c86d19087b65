// Images beside menu items: an image list and the command each image belongs to. Items whose
// command has an image get a bitmap that the menu's owner draws (HBMMENU_CALLBACK): the owner
// answers WM_MEASUREITEM and WM_DRAWITEM through Measure and Draw. Disabled items show their
// image in light grey.
#pragma once

#include <windows.h>

#include <vector>

#include "ui/image_strip.h"

class CMenuImages {
 public:
  // Takes the images and the command of each, in image order.
  void Set(CImageList images, std::vector<UINT> commands);
  // Loads them from the resource module: the bitmap strip `bitmapId` (see LoadImageStrip)
  // and the toolbar resource `commandsId` (version, image width, image height, count, then one
  // command per image, 16-bit words). False when either is missing or malformed.
  bool Load(UINT commandsId, UINT bitmapId, bool thirtyTwoBit);

  // The image of `command`, or -1.
  int IndexOf(UINT command) const;
  HIMAGELIST Images() const { return images_.Get(); }

  // Gives the items of `menu` and its submenus whose command has an image their bitmap.
  void MarkItems(HMENU menu) const;

  // WM_MEASUREITEM and WM_DRAWITEM of a marked menu item; false for anything else.
  bool Measure(MEASUREITEMSTRUCT& item) const;
  bool Draw(const DRAWITEMSTRUCT& item) const;

 private:
  CImageList images_;
  std::vector<UINT> commands_;
  SIZE size_{};
};
