// The main frame's toolbar: Create, Mount, Dismount, Dismount All and Options, with their
// images and texts beside them.
#pragma once

#include <windows.h>

#include "ui/controls/tool_bar.h"
#include "ui/image_strip.h"

// The toolbar's eight entries, separators included.
inline constexpr int kFrameToolBarEntries = 8;
// The images' width, and the button width their height is given with.
inline constexpr int kToolBarImageWidth = 24;
inline constexpr int kToolBarButtonWidth = 31;

// Creates the toolbar as a child of `frame` with id `id`: flat list-style buttons with tool
// tips, enabled and auto-sized, their texts from string 40004 and their images from bitmap
// 100 (`thirtyTwoBit`, no mask) or 101 (magenta transparent), kept in `images`. The images'
// height is the larger of the toolbar font's height and 24, the buttons' height that plus 7.
// Null handle on failure.
CToolBarCtrl CreateFrameToolBar(HWND frame, UINT id, bool thirtyTwoBit, CImageList& images);
