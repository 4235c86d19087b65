#include "app/recent_menu_win.h"

#include "app/recent_commands.h"
#include "system/wide_text_win.h"

void ShowRecentImagesInMenu(HMENU submenu, const RecentImageList& list,
                            const std::wstring& emptyText)
{
  if (submenu == nullptr) return;
  while (GetMenuItemCount(submenu) > 0) DeleteMenu(submenu, 0, MF_BYPOSITION);
  const std::vector<RecentMenuItem> items = RecentMenuItems(list);
  if (items.empty()) {
    AppendMenuW(submenu, MF_STRING | MF_GRAYED, kFirstRecentCommand, emptyText.c_str());
    return;
  }
  for (const RecentMenuItem& item : items) {
    AppendMenuW(submenu, MF_STRING, item.command, Wide(item.text));
  }
}
