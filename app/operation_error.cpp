#include "app/operation_error.h"

#include "res/resource.h"

OperationErrorChoice ChooseOperationError(StatusCode status, unsigned captionId,
                                          unsigned fallbackTextId, std::u16string_view subject)
{
  OperationErrorChoice choice;
  unsigned textId = fallbackTextId;
  uint32_t flags = kPromptError;
  switch (status) {
    case kImgVolumeMissing: textId = IDS_OPEN_VOLUME_MISSING; break;
    case kSysAccessDenied:
      textId = IDS_OPEN_ACCESS_DENIED;
      flags = kPromptRetryCancel;
      break;
    case kImgInvalidPassword:
    case kImgWrongPassword: textId = IDS_OPEN_WRONG_PASSWORD; break;
    case kDevUnreachable: textId = IDS_NO_DRIVER_CONNECTION; break;
    case kDevNotRunning:
      choice.startDeviceHost = true;
      choice.prompt.captionId = captionId;
      return choice;
    default: break;
  }
  choice.prompt = MakePrompt(textId, captionId, flags, {subject, status});
  return choice;
}

Prompt DeviceHostStartFailure(StatusCode serviceStatus, unsigned captionId)
{
  return MakePrompt(IDS_CANNOT_START_DRIVER, captionId, kPromptError, {serviceStatus});
}

OperationErrorChoice MountFailure(StatusCode status, std::u16string_view imagePath)
{
  return ChooseOperationError(status, IDS_CANNOT_MOUNT_CAPTION, IDS_CANNOT_MOUNT, imagePath);
}

OperationErrorChoice ChangePasswordFailure(StatusCode status, std::u16string_view imagePath)
{
  return ChooseOperationError(status, IDS_CANNOT_CHANGE_PASSWORD_CAPTION,
                              IDS_CANNOT_CHANGE_PASSWORD, imagePath);
}

std::optional<OperationErrorChoice> ClearFailure(StatusCode status, std::u16string_view imagePath)
{
  if (status == kImgCancelled) return std::nullopt;
  return ChooseOperationError(status, IDS_ERROR_CAPTION, IDS_CLEAR_FAILED, imagePath);
}
