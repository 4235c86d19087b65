// The Browse buttons of the dialogs that ask for an image: the open-file dialog over image
// files, starting from the path in the field. The change-password and clear dialogs set no
// initial folder and let the current directory change; the mount dialog starts on the
// user's desktop and keeps the current directory.
#pragma once

#include <string>

#include "services/file_dialog.h"

// Hide read-only, file must exist, do not add to the recent documents (0x02001004).
inline constexpr uint32_t kImageBrowseFlags =
    kOfnHideReadOnly | kOfnFileMustExist | kOfnDontAddToRecent;
// The same and no change of the current directory (0x0200100C).
inline constexpr uint32_t kMountBrowseFlags = kImageBrowseFlags | kOfnNoChangeDir;

// The request for the open-file dialog owned by `owner`, with `currentPath` as its file
// name and the image files' filter.
FileDialogRequest ImageBrowseRequest(WindowRef owner, const std::u16string& currentPath);

// The mount dialog's request: as above with kMountBrowseFlags, and the user's desktop
// folder (from the shell) as the initial folder; none when the shell cannot name it.
FileDialogRequest MountBrowseRequest(WindowRef owner, const std::u16string& currentPath);
