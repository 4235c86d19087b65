// Reports a failed operation to the user and tells the caller whether to try it again. The
// message is ChooseOperationError's; a device host that is not running is started instead,
// without a message, and the caller retries.
#pragma once

#include <string_view>

#include "services/window_ref.h"
#include "system/status.h"

// For `status` 0x4006000B the device host service is started: when that works the result
// is true at once and nothing is shown; when it fails, "Cannot start image mount driver"
// is shown with the service's code. Every other status shows ChooseOperationError's
// message, owned by `owner` (may be none), under `captionId`, with `defaultTextId` for the
// codes without a text of their own. True only when the user chose Retry (which only the
// access-denied message offers).
bool ShowOperationError(WindowRef owner, StatusCode status, unsigned captionId,
                        unsigned defaultTextId, std::u16string_view subject);
