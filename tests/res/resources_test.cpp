// The program's resources as Windows loads them from the executable: string table, menus,
// accelerators, bitmaps, icons, manifest and version information.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "res/resource.h"
#include "res/texts.h"
#include "system/wide_text_win.h"

namespace {

HMODULE Self()
{
  return GetModuleHandleW(nullptr);
}

// The raw string-table entry: LoadStringW with a zero-size buffer points into the resource.
std::u16string RawString(unsigned id)
{
  const wchar_t* text = nullptr;
  const int length = LoadStringW(Self(), id, reinterpret_cast<LPWSTR>(&text), 0);
  if (length <= 0 || text == nullptr) return u"";
  return std::u16string(Utf16(text), static_cast<size_t>(length));
}

BOOL CALLBACK CollectBlock(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR blocks)
{
  if (IS_INTRESOURCE(name)) {
    reinterpret_cast<std::vector<unsigned>*>(blocks)->push_back(
        static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(name)));
  }
  return TRUE;
}

// One line per item: text, " = id" for commands, " >" for submenus, " [disabled]",
// " [default]"; separators as "---"; submenu items indented by two spaces.
std::wstring Outline(HMENU menu, const std::wstring& indent = L"")
{
  std::wstring out;
  const int count = GetMenuItemCount(menu);
  for (int i = 0; i < count; ++i) {
    wchar_t text[256] = {};
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STRING | MIIM_SUBMENU | MIIM_STATE;
    item.dwTypeData = text;
    item.cch = 256;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item)) return out + L"?\n";
    if (item.fType & MFT_SEPARATOR) {
      out += indent + L"---\n";
      continue;
    }
    out += indent + text;
    if (item.hSubMenu) {
      out += L" >\n" + Outline(item.hSubMenu, indent + L"  ");
      continue;
    }
    out += L" = " + std::to_wstring(item.wID);
    if (item.fState & MFS_DISABLED) out += L" [disabled]";
    if (item.fState & MFS_DEFAULT) out += L" [default]";
    out += L"\n";
  }
  return out;
}

// Every command of a menu tree (not separators or submenus).
void Commands(HMENU menu, std::vector<UINT>& ids)
{
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    HMENU sub = GetSubMenu(menu, i);
    if (sub) {
      Commands(sub, ids);
    } else {
      const UINT id = GetMenuItemID(menu, i);
      if (id != 0 && id != static_cast<UINT>(-1)) ids.push_back(id);
    }
  }
}

struct LoadedBitmap {
  BITMAP info{};
  HBITMAP handle = nullptr;
  ~LoadedBitmap()
  {
    if (handle) DeleteObject(handle);
  }
};

void LoadBitmap(int id, LoadedBitmap& bitmap)
{
  bitmap.handle = static_cast<HBITMAP>(
      LoadImageW(Self(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
  ASSERT_NE(bitmap.handle, nullptr) << id;
  ASSERT_EQ(GetObjectW(bitmap.handle, sizeof bitmap.info, &bitmap.info),
            static_cast<int>(sizeof bitmap.info));
}

// The pixel at (x, y) from the top of a 32-bit bottom-up DIB section, as 0xAARRGGBB.
uint32_t Pixel32(const BITMAP& info, int x, int y)
{
  const auto* row =
      static_cast<const uint8_t*>(info.bmBits) +
      static_cast<size_t>(info.bmHeight - 1 - y) * static_cast<size_t>(info.bmWidthBytes);
  uint32_t value;
  std::memcpy(&value, row + 4 * x, 4);
  return value;
}

// A strip of 24-pixel images: 32-bit with alpha, or 256 colours with magenta around.
void ExpectImageStrip(int id32, int id8, int images)
{
  LoadedBitmap full, palette;
  LoadBitmap(id32, full);
  LoadBitmap(id8, palette);
  if (::testing::Test::HasFatalFailure()) return;
  EXPECT_EQ(full.info.bmBitsPixel, 32);
  EXPECT_EQ(palette.info.bmBitsPixel, 8);
  for (const BITMAP& info : {full.info, palette.info}) {
    EXPECT_EQ(info.bmWidth, 24 * images);
    EXPECT_EQ(info.bmHeight, 24);
  }
  HDC dc = CreateCompatibleDC(nullptr);
  HGDIOBJ old = SelectObject(dc, palette.handle);
  for (int n = 0; n < images; ++n) {
    // Corners are transparent; each image has opaque pixels of its own.
    EXPECT_EQ(Pixel32(full.info, 24 * n, 0) >> 24, 0u) << "image " << n;
    EXPECT_EQ(GetPixel(dc, 24 * n, 0), RGB(255, 0, 255)) << "image " << n;
    int opaque = 0, coloured = 0;
    for (int y = 0; y < 24; ++y) {
      for (int x = 24 * n; x < 24 * n + 24; ++x) {
        if (Pixel32(full.info, x, y) >> 24 == 255) ++opaque;
        if (GetPixel(dc, x, y) != RGB(255, 0, 255)) ++coloured;
      }
    }
    EXPECT_GT(opaque, 100) << "image " << n;
    EXPECT_GT(coloured, 100) << "image " << n;
  }
  SelectObject(dc, old);
  DeleteDC(dc);
}

std::wstring ResourceText(int id, LPCWSTR type)
{
  HRSRC found = FindResourceW(Self(), MAKEINTRESOURCEW(id), type);
  if (!found) return L"";
  const auto* data = static_cast<const char*>(LockResource(LoadResource(Self(), found)));
  const std::string bytes(data, SizeofResource(Self(), found));
  return std::wstring(bytes.begin(), bytes.end());
}

std::wstring VersionString(const std::vector<uint8_t>& block, const wchar_t* name)
{
  void* value = nullptr;
  UINT length = 0;
  const std::wstring path = std::wstring(L"\\StringFileInfo\\040904b0\\") + name;
  if (!VerQueryValueW(block.data(), path.c_str(), &value, &length) || length == 0) return L"";
  return static_cast<const wchar_t*>(value);
}

}  // namespace

TEST(StringTableResource, LoadStringGivesTheTableTextForEveryId)
{
  for (const TextEntry& entry : TextTable()) {
    EXPECT_EQ(RawString(entry.id), std::u16string(entry.text)) << entry.id;
  }
}

TEST(StringTableResource, HoldsNoStringOutsideTheTable)
{
  std::vector<unsigned> blocks;
  ASSERT_TRUE(EnumResourceNamesW(Self(), MAKEINTRESOURCEW(6), CollectBlock,
                                 reinterpret_cast<LONG_PTR>(&blocks)));
  size_t strings = 0;
  for (unsigned block : blocks) {
    for (unsigned id = (block - 1) * 16; id < block * 16; ++id) {
      if (RawString(id).empty()) continue;
      ++strings;
      EXPECT_NE(FindTableText(id), nullptr) << id;
    }
  }
  EXPECT_EQ(strings, TextTable().size());
}

TEST(StringTableResource, FrameTitleLoadsIntoABuffer)
{
  wchar_t title[256];
  ASSERT_EQ(LoadStringW(Self(), IDR_MAINFRAME, title, 256), 9);
  EXPECT_EQ(std::wstring(title), L"Cryptelle");
}

TEST(MenuResource, MainMenuHasEveryItemInOrder)
{
  HMENU menu = LoadMenuW(Self(), MAKEINTRESOURCEW(IDR_MAINFRAME));
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(Outline(menu),
            L"&File >\n"
            L"  &New Virtual Disk Image...\tCtrl+N = 40000\n"
            L"  ---\n"
            L"  &Mount Virtual Disk Image...\tCtrl+O = 40001\n"
            L"  ---\n"
            L"  &Dismount Virtual Disk = 40002\n"
            L"  Dismount &All Virtual Disks = 40003\n"
            L"  ---\n"
            L"  Set Virtual Disk Image &Password... = 40104\n"
            L"  ---\n"
            L"  &Recently Mounted Images >\n"
            L"    (empty) = 57616 [disabled]\n"
            L"  ---\n"
            L"  E&xit\tAlt+F4 = 57665\n"
            L"&Edit >\n"
            L"  Select &All\tCtrl+A = 40106\n"
            L"  ---\n"
            L"  &Properties...\tAlt+Enter = 40107\n"
            L"&View >\n"
            L"  &Columns >\n"
            L"    &Mount Point = 40304\n"
            L"    &Capacity = 40305\n"
            L"    Free Space = 40316\n"
            L"    &Image Path = 40306\n"
            L"    Encryption &Algorithm = 40315\n"
            L"    Creation &Time = 40307\n"
            L"    M&ount Time = 40308\n"
            L"  ---\n"
            L"  &Refresh\tF5 = 59395\n"
            L"&Tools >\n"
            L"  &Clear Virtual Disk Image... = 40108\n"
            L"  ---\n"
            L"  &Options...\tF12 = 40009\n"
            L"&Help >\n"
            L"  &Help Topics\tF1 = 40310\n"
            L"  ---\n"
            L"  Product Home Page = 40123\n"
            L"  ---\n"
            L"  &About = 40314\n");
  // The recent-images submenu is item 9 of File.
  HMENU file = GetSubMenu(menu, 0);
  EXPECT_NE(GetSubMenu(file, 9), nullptr);
  DestroyMenu(menu);
}

TEST(MenuResource, EveryMenuCommandHasAStatusBarPrompt)
{
  HMENU menu = LoadMenuW(Self(), MAKEINTRESOURCEW(IDR_MAINFRAME));
  ASSERT_NE(menu, nullptr);
  std::vector<UINT> ids;
  Commands(menu, ids);
  EXPECT_EQ(ids.size(), 22u);
  for (UINT id : ids) {
    if (id >= ID_FILE_MRU_FIRST && id <= ID_FILE_MRU_LAST) continue;
    EXPECT_FALSE(LoadText(id).empty()) << id;
  }
  DestroyMenu(menu);
}

TEST(MenuResource, DiskContextMenuDefaultsToBrowse)
{
  HMENU menu = LoadMenuW(Self(), MAKEINTRESOURCEW(IDR_DISK_CONTEXT_MENU));
  ASSERT_NE(menu, nullptr);
  HMENU popup = GetSubMenu(menu, 0);
  ASSERT_NE(popup, nullptr);
  EXPECT_EQ(Outline(popup),
            L"Browse... = 40317 [default]\n"
            L"---\n"
            L"Dismount Selected = 40002\n"
            L"Dismount All = 40003\n"
            L"---\n"
            L"Properties... = 40107\n");
  EXPECT_EQ(GetMenuDefaultItem(popup, FALSE, 0), static_cast<UINT>(ID_DISK_BROWSE));
  DestroyMenu(menu);
}

TEST(AcceleratorResource, HoldsTheSevenShortcuts)
{
  HACCEL table = LoadAcceleratorsW(Self(), MAKEINTRESOURCEW(IDR_MAINFRAME));
  ASSERT_NE(table, nullptr);
  ACCEL entries[16];
  const int count = CopyAcceleratorTableW(table, entries, 16);
  std::set<std::tuple<int, int, int>> found;
  for (int i = 0; i < count; ++i) {
    found.insert({entries[i].fVirt & ~FNOINVERT, entries[i].key, entries[i].cmd});
  }
  const std::set<std::tuple<int, int, int>> expected{
      {FVIRTKEY | FCONTROL, 'N', ID_FILE_NEW_IMAGE},
      {FVIRTKEY | FCONTROL, 'O', ID_FILE_MOUNT_IMAGE},
      {FVIRTKEY | FCONTROL, 'A', ID_EDIT_SELECT_ALL},
      {FVIRTKEY | FALT, VK_RETURN, ID_EDIT_PROPERTIES},
      {FVIRTKEY, VK_F5, ID_VIEW_REFRESH},
      {FVIRTKEY, VK_F12, ID_TOOLS_OPTIONS},
      {FVIRTKEY, VK_F1, ID_HELP_TOPICS}};
  EXPECT_EQ(count, 7);
  EXPECT_EQ(found, expected);
  DestroyAcceleratorTable(table);
}

TEST(BitmapResource, ToolbarImagesInBothColourDepths)
{
  ExpectImageStrip(IDB_TOOLBAR32, IDB_TOOLBAR8, 5);
}

TEST(BitmapResource, MenuImagesInBothColourDepths)
{
  ExpectImageStrip(IDB_MENU32, IDB_MENU8, 10);
}

TEST(BitmapResource, MenuImagesNameACommandEach)
{
  HRSRC found = FindResourceW(Self(), MAKEINTRESOURCEW(IDR_MENU_IMAGES), MAKEINTRESOURCEW(241));
  ASSERT_NE(found, nullptr);
  const auto* words = static_cast<const WORD*>(LockResource(LoadResource(Self(), found)));
  ASSERT_EQ(words[0], 1);   // version
  EXPECT_EQ(words[1], 24);  // image width
  EXPECT_EQ(words[2], 24);  // image height
  ASSERT_EQ(words[3], 10);  // one command per image of bitmaps 102 and 103
  const std::vector<WORD> commands(words + 4, words + 14);
  EXPECT_EQ(commands, (std::vector<WORD>{ID_FILE_NEW_IMAGE, ID_FILE_MOUNT_IMAGE, ID_FILE_DISMOUNT,
                                         ID_FILE_DISMOUNT_ALL, ID_FILE_SET_PASSWORD,
                                         ID_EDIT_PROPERTIES, ID_VIEW_REFRESH, ID_TOOLS_CLEAR_IMAGE,
                                         ID_TOOLS_OPTIONS, ID_HELP_TOPICS}));
  for (WORD id : commands) EXPECT_FALSE(LoadText(id).empty()) << id;
}

TEST(BitmapResource, WizardWatermarkAndHeader)
{
  LoadedBitmap watermark, header;
  LoadBitmap(IDB_WIZARD_WATERMARK, watermark);
  LoadBitmap(IDB_WIZARD_HEADER, header);
  if (::testing::Test::HasFatalFailure()) return;
  EXPECT_EQ(watermark.info.bmWidth, 164);
  EXPECT_EQ(watermark.info.bmHeight, 314);
  EXPECT_EQ(header.info.bmWidth, 49);
  EXPECT_EQ(header.info.bmHeight, 49);
  EXPECT_EQ(watermark.info.bmBitsPixel, 24);
  EXPECT_EQ(header.info.bmBitsPixel, 24);
}

TEST(IconResource, ProgramIconAtEverySize)
{
  for (int size : {16, 20, 24, 32, 40, 48, 64, 256}) {
    HICON icon = static_cast<HICON>(
        LoadImageW(Self(), MAKEINTRESOURCEW(IDR_MAINFRAME), IMAGE_ICON, size, size, 0));
    ASSERT_NE(icon, nullptr) << size;
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(icon, &info));
    BITMAP colour{};
    GetObjectW(info.hbmColor, sizeof colour, &colour);
    EXPECT_EQ(colour.bmWidth, size);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    DestroyIcon(icon);
  }
}

TEST(IconResource, KeyboardIconInSmallSize)
{
  const int small = GetSystemMetrics(SM_CXSMICON);
  HICON icon = static_cast<HICON>(
      LoadImageW(Self(), MAKEINTRESOURCEW(IDI_KEYBOARD), IMAGE_ICON, small, small, 0));
  ASSERT_NE(icon, nullptr);
  DestroyIcon(icon);
}

TEST(IconResource, ImageFileIconInSmallAndLargeSizes)
{
  for (const int size : {GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CXICON)}) {
    HICON icon = static_cast<HICON>(
        LoadImageW(Self(), MAKEINTRESOURCEW(IDI_IMAGE_FILE), IMAGE_ICON, size, size, 0));
    ASSERT_NE(icon, nullptr) << size;
    DestroyIcon(icon);
  }
}

TEST(ManifestResource, AsksForCommonControlsSixAndPerMonitorDpi)
{
  const std::wstring manifest = ResourceText(1, MAKEINTRESOURCEW(24));
  EXPECT_NE(manifest.find(L"name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""),
            std::wstring::npos);
  EXPECT_NE(manifest.find(L">PerMonitorV2, PerMonitor</dpiAwareness>"), std::wstring::npos);
  EXPECT_NE(manifest.find(L">true/pm</dpiAware>"), std::wstring::npos);
}

// The manifest is in force: the process's activation context sends comctl32.dll to the
// side-by-side version 6.
TEST(ManifestResource, RedirectsCommonControlsToVersionSix)
{
  ACTCTX_SECTION_KEYED_DATA data{};
  data.cbSize = sizeof data;
  EXPECT_TRUE(FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION,
                                       L"comctl32.dll", &data));
}

TEST(VersionResource, NamesTheProductAndItsVersion)
{
  wchar_t path[MAX_PATH];
  ASSERT_GT(GetModuleFileNameW(nullptr, path, MAX_PATH), 0u);
  const DWORD size = GetFileVersionInfoSizeW(path, nullptr);
  ASSERT_GT(size, 0u);
  std::vector<uint8_t> block(size);
  ASSERT_TRUE(GetFileVersionInfoW(path, 0, size, block.data()));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
  EXPECT_EQ(fixed->dwFileVersionMS, 0x00010000u);
  EXPECT_EQ(fixed->dwFileVersionLS, 0u);
  EXPECT_EQ(VersionString(block, L"ProductName"), L"Cryptelle");
  EXPECT_EQ(VersionString(block, L"CompanyName"), L"Pellmora");
  EXPECT_EQ(VersionString(block, L"FileVersion"), L"1.0.0.0");
}
