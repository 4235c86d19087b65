#include "services/shell.h"

#include "services/service_slot.h"
#include "services/system_services.h"

namespace {

CServiceSlot<CShellService>& Slot()
{
  static CServiceSlot<CShellService> slot(SystemShellService());
  return slot;
}

}  // namespace

StatusCode ShellOpen(WindowRef owner, const std::u16string& target)
{
  return Slot().Current().Open(owner, target);
}

StatusCode ShellLookAt(const std::u16string& path)
{
  return Slot().Current().LookAt(path);
}

uint32_t ShellFormatDrive(WindowRef owner, unsigned drive, unsigned formatId, unsigned options)
{
  return Slot().Current().FormatDrive(owner, drive, formatId, options);
}

StatusCode ShellPrepareForWrite(WindowRef owner, const std::u16string& path, uint32_t flags)
{
  return Slot().Current().PrepareForWrite(owner, path, flags);
}

StatusCode ShellSpecialFolder(int csidl, std::u16string* path)
{
  return Slot().Current().SpecialFolder(csidl, path);
}

CShellService* ReplaceShellService(CShellService* service)
{
  return Slot().Replace(service);
}
