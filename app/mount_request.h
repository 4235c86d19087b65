// What the mount dialog hands to the mount flow, and the dialog as the flow sees it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "devhost/mounted_disk.h"
#include "services/window_ref.h"

struct MountRequest {
  std::u16string imagePath;
  std::u16string password;    // may be empty
  std::u16string mountPoint;  // "X:", or empty when no drive letter was selected
  bool readOnly = false;
  bool removable = false;
  bool invisible = false;  // to other users
};

// The mount flags of the request's options: read-only 1, removable 2, invisible 4.
constexpr uint32_t MountFlagsOf(const MountRequest& request)
{
  return (request.readOnly ? kMountReadOnly : 0) | (request.removable ? kMountRemovable : 0) |
         (request.invisible ? kMountInvisible : 0);
}

// The mount dialog, shown modally.
class CMountRequestSource {
 public:
  // Shows the dialog owned by `owner` (may be none) with `initialPath` in its path field;
  // the user's request after OK, nothing after Cancel.
  virtual std::optional<MountRequest> Ask(WindowRef owner, const std::u16string& initialPath) = 0;

 protected:
  virtual ~CMountRequestSource() = default;
};
