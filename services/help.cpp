#include "services/help.h"

#include "services/service_slot.h"
#include "services/system_services.h"
#include "system/module_path.h"

namespace {

CServiceSlot<CHelpService>& Slot()
{
  static CServiceSlot<CHelpService> slot(SystemHelpService());
  return slot;
}

}  // namespace

StatusCode ShowHelpContents(WindowRef owner)
{
  return Slot().Current().ShowContents(owner);
}

StatusCode ShowHelpTopic(WindowRef owner, uint32_t context)
{
  return Slot().Current().ShowTopic(owner, context);
}

CHelpService* ReplaceHelpService(CHelpService* service)
{
  return Slot().Replace(service);
}

StatusCode HelpFilePath(std::u16string* path)
{
  if (path == nullptr) return kSysInvalidParameter;
  std::u16string program;
  const StatusCode status = SysGetModulePath(&program);
  if (IsFailure(status)) return status;
  const size_t separator = program.rfind(kSysPathSeparator);
  const size_t folderLength = separator == std::u16string::npos ? 0 : separator + 1;
  *path = program.substr(0, folderLength) + u"ctell.chm";
  return kStatusSuccess;
}
