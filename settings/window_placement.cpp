#include "settings/window_placement.h"

#include "settings/key_access.h"

namespace {

// The system's test for an empty rectangle: no width or no height.
bool IsEmpty(const PlacementRect& rect)
{
  return rect.right <= rect.left || rect.bottom <= rect.top;
}

bool Intersect(const PlacementRect& first, const PlacementRect& second)
{
  const PlacementRect overlap{first.left > second.left ? first.left : second.left,
                              first.top > second.top ? first.top : second.top,
                              first.right < second.right ? first.right : second.right,
                              first.bottom < second.bottom ? first.bottom : second.bottom};
  return !IsEmpty(overlap);
}

}  // namespace

StatusCode ReadWindowPos(WindowPlacement* placement, bool* found)
{
  *found = false;
  SettingsKeyPtr key;
  const StatusCode status = CreateUserKey(kApplicationKeyPath, &key);
  if (IsFailure(status)) return status;
  uint8_t bytes[kWindowPlacementSize];
  uint32_t size = sizeof bytes;
  uint32_t type = kValueNone;
  if (!IsFailure(key->QueryValue(u"WindowPos", &type, bytes, &size)) && type == kValueBinary &&
      size == kWindowPlacementSize) {
    std::memcpy(placement, bytes, sizeof bytes);
    *found = true;
  }
  return kStatusSuccess;
}

StatusCode WriteWindowPos(const WindowPlacement& placement)
{
  SettingsKeyPtr key;
  const StatusCode status = CreateUserKey(kApplicationKeyPath, &key);
  if (IsFailure(status)) return status;
  return key->SetValue(u"WindowPos", kValueBinary, &placement, sizeof placement);
}

bool PlacementToRestore(const WindowPlacement& stored, int32_t screenWidth, int32_t screenHeight,
                        WindowPlacement* restored)
{
  const PlacementRect screen{0, 0, screenWidth, screenHeight};
  if (IsEmpty(stored.normalPosition) || !Intersect(stored.normalPosition, screen)) return false;
  *restored = stored;
  restored->showCommand = kShowNormal;
  return true;
}
