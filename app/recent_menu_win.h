// The recently mounted images as menu items: the File menu's "Recently Mounted Images"
// submenu filled anew from the list whenever it changes.
#pragma once

#include <windows.h>

#include <string>

#include "settings/recent_images.h"

// Replaces the items of `submenu` with one command per image, the newest first; an empty
// list shows `emptyText` disabled under the first recent command.
void ShowRecentImagesInMenu(HMENU submenu, const RecentImageList& list,
                            const std::wstring& emptyText);
