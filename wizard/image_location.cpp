#include "wizard/image_location.h"

#include "dialogs/image_browse.h"
#include "res/resource.h"
#include "res/texts.h"
#include "services/shell.h"

namespace {

constexpr std::u16string_view kImageExtension = u".qvi";

bool IsSeparator(char16_t c)
{
  return c == u'\\' || c == u'/';
}

LocationCheck Refused(unsigned textId, unsigned captionId, std::u16string_view path, bool focus)
{
  return LocationCheck{false, MakePrompt(textId, captionId, kPromptError, {path}), focus};
}

}  // namespace

FileDialogRequest NewImageSaveRequest(WindowRef owner, const std::u16string& currentPath)
{
  FileDialogRequest request = ImageBrowseRequest(owner, currentPath);
  request.flags = kNewImageBrowseFlags;
  return request;
}

std::u16string ChosenImagePath(const FileDialogChoice& choice)
{
  std::u16string path = choice.path;
  if (choice.filterIndex == 1 && !path.ends_with(kImageExtension)) path += kImageExtension;
  return path;
}

std::u16string_view LocationFolder(std::u16string_view path)
{
  // The last component starts after the last separator or drive colon that is followed by
  // something other than a separator (the system's rule for a path's file name).
  size_t nameStart = 0;
  for (size_t i = 0; i + 1 < path.size(); ++i) {
    if ((IsSeparator(path[i]) || path[i] == u':') && !IsSeparator(path[i + 1])) {
      nameStart = i + 1;
    }
  }
  return path.substr(0, nameStart);
}

LocationCheck CheckImageLocation(std::u16string_view path)
{
  if (path.empty()) return Refused(IDS_ENTER_IMAGE_PATH, IDS_INVALID_PATH_CAPTION, path, true);
  if (path.size() >= kLocationBufferCharacters) {
    return Refused(IDS_CANNOT_PREPARE_FOLDER, IDS_ERROR_CAPTION, path, false);
  }
  const std::u16string_view folder = LocationFolder(path);
  if (folder.empty()) return Refused(IDS_FULL_PATH_NEEDED, IDS_INVALID_PATH_CAPTION, path, true);
  if (IsFailure(ShellPrepareForWrite(nullptr, std::u16string(folder), kShppfwDirCreate))) {
    return Refused(IDS_CANNOT_PREPARE_FOLDER, IDS_ERROR_CAPTION, path, false);
  }
  return LocationCheck{true, std::nullopt, false};
}
