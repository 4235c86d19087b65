#include "services/process.h"

#include "services/service_slot.h"
#include "services/system_services.h"

namespace {

CServiceSlot<CProcessService>& Slot()
{
  static CServiceSlot<CProcessService> slot(SystemProcessService());
  return slot;
}

}  // namespace

StatusCode StartProcess(const ProcessStartRequest& request, std::u16string* failureText)
{
  return Slot().Current().Start(request, failureText);
}

CProcessService* ReplaceProcessService(CProcessService* service)
{
  return Slot().Replace(service);
}
