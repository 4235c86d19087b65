#include "app/show_operation_error.h"

#include "devhost/device_host_api.h"

bool ShowOperationError(WindowRef owner, const OperationErrorChoice& choice)
{
  Prompt prompt = choice.prompt;
  if (choice.startDeviceHost) {
    const StatusCode started = CurrentDeviceHost().StartDeviceHostService();
    if (!IsFailure(started)) return true;
    prompt = DeviceHostStartFailure(started, choice.prompt.captionId);
  }
  return ShowPrompt(owner, prompt) == kIdRetry;
}

bool ShowOperationError(WindowRef owner, StatusCode status, unsigned captionId,
                        unsigned fallbackTextId, std::u16string_view subject)
{
  return ShowOperationError(owner,
                            ChooseOperationError(status, captionId, fallbackTextId, subject));
}
