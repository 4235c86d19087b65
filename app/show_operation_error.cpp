#include "app/show_operation_error.h"

#include "app/operation_error.h"
#include "app/prompt.h"
#include "devhost/device_host_api.h"

bool ShowOperationError(WindowRef owner, StatusCode status, unsigned captionId,
                        unsigned defaultTextId, std::u16string_view subject)
{
  OperationErrorChoice choice = ChooseOperationError(status, captionId, defaultTextId, subject);
  if (choice.startDeviceHost) {
    const StatusCode started = CurrentDeviceHost().StartDeviceHostService();
    if (!IsFailure(started)) return true;
    choice.prompt = DeviceHostStartFailure(started, captionId);
  }
  return ShowPrompt(owner, choice.prompt) == kIdRetry;
}
