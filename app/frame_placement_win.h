// The main frame's placement between runs: restored once when the frame is created, saved
// when it is destroyed ("WindowPos").
#pragma once

#include <windows.h>

// Applies the stored placement to `frame` when it was read whole (binary, 44 bytes) and its
// normal rectangle is not empty and meets the primary screen; the frame then shows normal,
// also when it was closed maximised. Otherwise the frame keeps the place it has.
void RestoreFramePlacement(HWND frame);

// Stores the frame's placement as it is now.
void SaveFramePlacement(HWND frame);
