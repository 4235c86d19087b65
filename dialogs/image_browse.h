// The Browse button of the change-password and clear dialogs: the open-file dialog over
// image files, starting from the path in the field. Unlike the mount dialog it sets no
// initial folder, and the current directory may change.
#pragma once

#include <string>

#include "services/file_dialog.h"

// Hide read-only, file must exist, do not add to the recent documents (0x02001004).
inline constexpr uint32_t kImageBrowseFlags =
    kOfnHideReadOnly | kOfnFileMustExist | kOfnDontAddToRecent;

// The request for the open-file dialog owned by `owner`, with `currentPath` as its file
// name and the image files' filter.
FileDialogRequest ImageBrowseRequest(WindowRef owner, const std::u16string& currentPath);
