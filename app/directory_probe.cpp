#include "app/directory_probe.h"

#include "services/service_slot.h"

namespace {

CServiceSlot<CDirectoryProbe>& Slot()
{
  static CServiceSlot<CDirectoryProbe> slot(SystemDirectoryProbe());
  return slot;
}

}  // namespace

uint32_t TryCreateDirectory(const std::u16string& path)
{
  return Slot().Current().TryCreateDirectory(path);
}

CDirectoryProbe* ReplaceDirectoryProbe(CDirectoryProbe* probe)
{
  return Slot().Replace(probe);
}
