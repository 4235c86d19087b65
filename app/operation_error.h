// How a failed operation is reported to the user: the message that ShowOperationError shows
// for a status code, and the captions and fallback texts of the flows that use it. The
// codes that the program words itself get their own text; any other code gets the caller's
// fallback text with the code.
#pragma once

#include <optional>
#include <string_view>

#include "app/prompt.h"
#include "system/status.h"

// What to do about a failed operation.
struct OperationErrorChoice {
  // The device host is not running: start its service. When that succeeds, the caller
  // retries the operation without any message; when it fails, the message is
  // DeviceHostStartFailure's. `prompt` then holds only the caption for it.
  bool startDeviceHost = false;
  // The message otherwise. Retry and Cancel (access denied) ask whether to try again.
  Prompt prompt;
};

// The choice for `status`, with `subject` (an image path or name) in the texts that name it:
//   0x4005000C                 "volume file is missing" with the subject;
//   0x40000008                 "access denied" with the subject, Retry and Cancel;
//   0x4005000A, 0x4005000B     "password is wrong or the image is damaged" with the subject;
//   0x4006000A                 "cannot connect to driver";
//   0x4006000B                 start the device host;
//   any other                  `fallbackTextId` filled with the subject and the code.
// The caption is `captionId` throughout.
OperationErrorChoice ChooseOperationError(StatusCode status, unsigned captionId,
                                          unsigned fallbackTextId, std::u16string_view subject);

// The message when the device host service could not be started: "Cannot start image mount
// driver" with the service's code (not the failed operation's).
Prompt DeviceHostStartFailure(StatusCode serviceStatus, unsigned captionId);

// The flows' uses: caption and fallback text of a failed mount, password change and clear.
OperationErrorChoice MountFailure(StatusCode status, std::u16string_view imagePath);
OperationErrorChoice ChangePasswordFailure(StatusCode status, std::u16string_view imagePath);
// None for a cancelled clear (0x40050008, by the user at a question or in the progress
// dialog), which ends silently.
std::optional<OperationErrorChoice> ClearFailure(StatusCode status, std::u16string_view imagePath);
