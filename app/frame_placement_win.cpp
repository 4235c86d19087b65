#include "app/frame_placement_win.h"

#include "settings/window_placement.h"

namespace {

WINDOWPLACEMENT ToSystem(const WindowPlacement& stored)
{
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  placement.flags = stored.flags;
  placement.showCmd = stored.showCommand;
  placement.ptMinPosition = {stored.minPosition.x, stored.minPosition.y};
  placement.ptMaxPosition = {stored.maxPosition.x, stored.maxPosition.y};
  placement.rcNormalPosition = {stored.normalPosition.left, stored.normalPosition.top,
                                stored.normalPosition.right, stored.normalPosition.bottom};
  return placement;
}

WindowPlacement FromSystem(const WINDOWPLACEMENT& placement)
{
  WindowPlacement stored;
  stored.flags = placement.flags;
  stored.showCommand = placement.showCmd;
  stored.minPosition = {placement.ptMinPosition.x, placement.ptMinPosition.y};
  stored.maxPosition = {placement.ptMaxPosition.x, placement.ptMaxPosition.y};
  const RECT& normal = placement.rcNormalPosition;
  stored.normalPosition = {normal.left, normal.top, normal.right, normal.bottom};
  return stored;
}

}  // namespace

static_assert(sizeof(WINDOWPLACEMENT) == kWindowPlacementSize);

void RestoreFramePlacement(HWND frame)
{
  WindowPlacement stored;
  bool found = false;
  ReadWindowPos(&stored, &found);  // a store that cannot be read leaves the default place
  WindowPlacement restored;
  if (!found || !PlacementToRestore(stored, GetSystemMetrics(SM_CXSCREEN),
                                    GetSystemMetrics(SM_CYSCREEN), &restored)) {
    return;
  }
  const WINDOWPLACEMENT placement = ToSystem(restored);
  SetWindowPlacement(frame, &placement);
}

void SaveFramePlacement(HWND frame)
{
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  if (!GetWindowPlacement(frame, &placement)) return;
  WriteWindowPos(FromSystem(placement));  // failures are not reported
}
