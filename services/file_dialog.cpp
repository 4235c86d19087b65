#include "services/file_dialog.h"

#include <algorithm>

#include "services/service_slot.h"
#include "services/system_services.h"

namespace {

CServiceSlot<CFileDialogService>& Slot()
{
  static CServiceSlot<CFileDialogService> slot(SystemFileDialogService());
  return slot;
}

}  // namespace

std::optional<FileDialogChoice> ChooseFileToOpen(const FileDialogRequest& request)
{
  return Slot().Current().ChooseFileToOpen(request);
}

std::optional<FileDialogChoice> ChooseFileToSave(const FileDialogRequest& request)
{
  return Slot().Current().ChooseFileToSave(request);
}

CFileDialogService* ReplaceFileDialogService(CFileDialogService* service)
{
  return Slot().Replace(service);
}

std::u16string TerminatedFilterList(std::u16string_view filter)
{
  std::u16string list;
  size_t start = 0;
  while (start < filter.size() && filter[start] != u'\0') {
    const size_t end = std::min(filter.find(u'\0', start), filter.size());
    list.append(filter.substr(start, end - start));
    list.push_back(u'\0');
    start = end + 1;
  }
  list.push_back(u'\0');
  return list;
}
