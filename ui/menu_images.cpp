#include "ui/menu_images.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "ui/window.h"

namespace {

constexpr WORD kToolBarResourceType = 241;

// What a toolbar resource holds: the width of each image and the command of each.
struct ToolBarResource {
  int imageWidth = 0;
  std::vector<UINT> commands;  // empty when the resource is missing or malformed
};

ToolBarResource ReadToolBarResource(UINT id)
{
  const HMODULE module = ResourceModule();
  const HRSRC found =
      FindResourceW(module, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(kToolBarResourceType));
  if (found == nullptr) return {};
  const DWORD bytes = SizeofResource(module, found);
  const HGLOBAL loaded = LoadResource(module, found);
  const auto* words = static_cast<const WORD*>(loaded != nullptr ? LockResource(loaded) : nullptr);
  if (words == nullptr || bytes < 4 * sizeof(WORD) || words[0] != 1) return {};
  const size_t count = words[3];
  if (bytes < (4 + count) * sizeof(WORD)) return {};
  return {words[1], std::vector<UINT>(words + 4, words + 4 + count)};
}

// Draws image `index` at (x, y) in grey, lighter than its own colours: the image is drawn over
// a copy of what is behind it, and every pixel it changed becomes the grey of its brightness,
// halfway to white. Works alike for images with an alpha channel and masked ones.
void DrawDisabledImage(HIMAGELIST images, int index, HDC target, POINT at, SIZE size)
{
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.cx;
  info.bmiHeader.biHeight = -size.cy;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  const CBitmap canvas(CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  const CMemoryDc dc(CreateCompatibleDC(target));
  if (!canvas || !dc || bits == nullptr) return;
  const CSelectObject selected(dc.Get(), canvas.Get());
  BitBlt(dc.Get(), 0, 0, size.cx, size.cy, target, at.x, at.y, SRCCOPY);
  GdiFlush();
  auto* const pixels = static_cast<uint32_t*>(bits);
  const size_t count = static_cast<size_t>(size.cx) * static_cast<size_t>(size.cy);
  const std::vector<uint32_t> behind(pixels, pixels + count);
  ImageList_Draw(images, index, dc.Get(), 0, 0, ILD_TRANSPARENT);
  GdiFlush();
  for (size_t pixel = 0; pixel < count; ++pixel) {
    if (pixels[pixel] == behind[pixel]) continue;
    const uint32_t colour = pixels[pixel];
    const uint32_t brightness =
        (((colour >> 16) & 0xFF) * 30 + ((colour >> 8) & 0xFF) * 59 + (colour & 0xFF) * 11) / 100;
    const uint32_t grey = (brightness + 255) / 2;
    pixels[pixel] = grey << 16 | grey << 8 | grey;
  }
  BitBlt(target, at.x, at.y, size.cx, size.cy, dc.Get(), 0, 0, SRCCOPY);
}

}  // namespace

void CMenuImages::Set(CImageList images, std::vector<UINT> commands)
{
  images_ = std::move(images);
  commands_ = std::move(commands);
  int width = 0;
  int height = 0;
  if (images_) ImageList_GetIconSize(images_.Get(), &width, &height);
  size_ = {width, height};
}

bool CMenuImages::Load(UINT commandsId, UINT bitmapId, bool thirtyTwoBit)
{
  ToolBarResource resource = ReadToolBarResource(commandsId);
  if (resource.commands.empty()) return false;
  CImageList images = LoadImageStrip(bitmapId, resource.imageWidth, thirtyTwoBit);
  if (!images ||
      ImageList_GetImageCount(images.Get()) < static_cast<int>(resource.commands.size())) {
    return false;
  }
  Set(std::move(images), std::move(resource.commands));
  return true;
}

int CMenuImages::IndexOf(UINT command) const
{
  const auto found = std::find(commands_.begin(), commands_.end(), command);
  return found == commands_.end() || !images_ ? -1 : static_cast<int>(found - commands_.begin());
}

void CMenuImages::MarkItems(HMENU menu) const
{
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_ID | MIIM_SUBMENU;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &item)) continue;
    if (item.hSubMenu != nullptr) {
      MarkItems(item.hSubMenu);
    } else if (IndexOf(item.wID) >= 0) {
      item.fMask = MIIM_BITMAP;
      item.hbmpItem = HBMMENU_CALLBACK;
      SetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &item);
    }
  }
}

bool CMenuImages::Measure(MEASUREITEMSTRUCT& item) const
{
  if (item.CtlType != ODT_MENU || IndexOf(item.itemID) < 0) return false;
  item.itemWidth = static_cast<UINT>(size_.cx);
  item.itemHeight = static_cast<UINT>(size_.cy);
  return true;
}

bool CMenuImages::Draw(const DRAWITEMSTRUCT& item) const
{
  const int index = item.CtlType == ODT_MENU ? IndexOf(item.itemID) : -1;
  if (index < 0) return false;
  const RECT& area = item.rcItem;
  const int x = area.left + (area.right - area.left - size_.cx) / 2;
  const int y = area.top + (area.bottom - area.top - size_.cy) / 2;
  if ((item.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0) {
    DrawDisabledImage(images_.Get(), index, item.hDC, {x, y}, size_);
  } else {
    ImageList_Draw(images_.Get(), index, item.hDC, x, y, ILD_TRANSPARENT);
  }
  return true;
}
