// The main window's placement, "WindowPos" in the application key: the system's 44-byte
// window-placement record, stored as REG_BINARY when the window closes and restored once
// when it is created.
#pragma once

#include <cstdint>

#include "system/status.h"

struct PlacementPoint {
  int32_t x;
  int32_t y;
};

struct PlacementRect {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
};

inline constexpr uint32_t kWindowPlacementSize = 44;
inline constexpr uint32_t kShowNormal = 1;  // SW_SHOWNORMAL

// The record in its stored order (little-endian, no padding).
struct WindowPlacement {
  uint32_t length = kWindowPlacementSize;
  uint32_t flags = 0;
  uint32_t showCommand = 0;
  PlacementPoint minPosition{};
  PlacementPoint maxPosition{};
  PlacementRect normalPosition{};
};
static_assert(sizeof(WindowPlacement) == kWindowPlacementSize);

// Reads "WindowPos". `*found` is true only when the query succeeds, the type is REG_BINARY
// and the size exactly 44 bytes; `*placement` then holds the record, else it is unchanged.
// Returns the status of opening the application key.
StatusCode ReadWindowPos(WindowPlacement* placement, bool* found);

// Stores the record as it is: REG_BINARY, 44 bytes.
StatusCode WriteWindowPos(const WindowPlacement& placement);

// Decides whether a stored placement is applied on a primary screen of the given size:
// not when its normal rectangle is empty or does not meet the screen rectangle
// (0, 0, width, height). When it is, `*restored` is the stored record with the show command
// forced to normal, so a window closed maximized or minimized comes back normal.
bool PlacementToRestore(const WindowPlacement& stored, int32_t screenWidth, int32_t screenHeight,
                        WindowPlacement* restored);
