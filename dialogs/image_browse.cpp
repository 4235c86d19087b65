#include "dialogs/image_browse.h"

#include "res/resource.h"
#include "res/texts.h"

FileDialogRequest ImageBrowseRequest(WindowRef owner, const std::u16string& currentPath)
{
  FileDialogRequest request;
  request.owner = owner;
  request.filter = LoadText(IDS_IMAGE_FILE_FILTER);
  request.flags = kImageBrowseFlags;
  request.fileName = currentPath;
  return request;
}
