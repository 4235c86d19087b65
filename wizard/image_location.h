// The location page's decisions: the save-file dialog of its Browse button with the image
// extension it adds, and the checks of Next, which refuse an empty path, a path without a
// folder part and a path too long for the system, and prepare the folder for writing
// (creating missing folders) through the shell.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/prompt.h"
#include "services/file_dialog.h"

// Ask before overwriting, hide read-only, the path must exist, do not add to the recent
// documents (0x02000806).
inline constexpr uint32_t kNewImageBrowseFlags =
    kOfnOverwritePrompt | kOfnHideReadOnly | kOfnPathMustExist | kOfnDontAddToRecent;

// The folder part of a path is taken in a buffer of this many characters, its terminating
// NUL included (the system's longest path): a path that does not fit is refused.
inline constexpr size_t kLocationBufferCharacters = 260;

// The save-file dialog owned by `owner`, starting with `currentPath` as its file name, over
// the image files' filter, without a default extension.
FileDialogRequest NewImageSaveRequest(WindowRef owner, const std::u16string& currentPath);

// The path the user chose: with the image files' filter (the first) chosen, ".qvi" is added
// unless the name ends in exactly ".qvi" (letter case counts); with "All Files" it is kept.
std::u16string ChosenImagePath(const FileDialogChoice& choice);

// The folder part of `path`: everything before its last component, the separator
// included ("C:\Disks\" of "C:\Disks\work.qvi"); empty for a bare file name.
std::u16string_view LocationFolder(std::u16string_view path);

struct LocationCheck {
  bool accept = false;
  std::optional<Prompt> prompt;  // shown when refused
  bool focusPath = false;        // the path box gets the focus
};

// Next on the location page: an empty path gives "Please enter virtual disk image file
// path.", a path without a folder part "Please specify full path to virtual disk image
// file." (both under "Invalid Path", with the focus on the path). Otherwise the folder is
// prepared for writing with its missing folders created; when that fails, or when the path
// is too long for the folder buffer, "Cannot create %s..." under "Error", the focus staying.
LocationCheck CheckImageLocation(std::u16string_view path);
