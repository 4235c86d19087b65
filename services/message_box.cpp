#include "services/message_box.h"

#include "res/texts.h"
#include "services/service_slot.h"
#include "services/system_services.h"

namespace {

CServiceSlot<CMessageBoxService>& Slot()
{
  static CServiceSlot<CMessageBoxService> slot(SystemMessageBoxService());
  return slot;
}

}  // namespace

int ShowMessageBox(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                   uint32_t flags)
{
  return Slot().Current().Show(owner, text, caption, flags);
}

int ShowMessageBox(WindowRef owner, unsigned textId, unsigned captionId, uint32_t flags)
{
  return ShowMessageBox(owner, LoadText(textId), LoadText(captionId), flags);
}

CMessageBoxService* ReplaceMessageBoxService(CMessageBoxService* service)
{
  return Slot().Replace(service);
}
