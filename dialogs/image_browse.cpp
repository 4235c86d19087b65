#include "dialogs/image_browse.h"

#include "res/resource.h"
#include "res/texts.h"
#include "services/shell.h"

FileDialogRequest ImageBrowseRequest(WindowRef owner, const std::u16string& currentPath)
{
  FileDialogRequest request;
  request.owner = owner;
  request.filter = LoadText(IDS_IMAGE_FILE_FILTER);
  request.flags = kImageBrowseFlags;
  request.fileName = currentPath;
  return request;
}

FileDialogRequest MountBrowseRequest(WindowRef owner, const std::u16string& currentPath)
{
  FileDialogRequest request = ImageBrowseRequest(owner, currentPath);
  request.flags = kMountBrowseFlags;
  std::u16string desktop;
  if (!IsFailure(ShellSpecialFolder(kCsidlDesktop, &desktop))) request.initialFolder = desktop;
  return request;
}
