// Shows the message a failed operation gives (ChooseOperationError) and reports whether the
// caller should try the same operation again.
#pragma once

#include <string_view>

#include "app/operation_error.h"
#include "services/window_ref.h"
#include "system/status.h"

// Shows `choice` (a choice of app/operation_error.h), owned by `owner`. When the device host
// is not running it starts the device host's service instead: true at once without a
// message when that succeeds, the start failure's message under the choice's caption when
// it does not. Otherwise true only when the user chose Retry (offered for access denied).
bool ShowOperationError(WindowRef owner, const OperationErrorChoice& choice);

// The same for the choice of ChooseOperationError(status, captionId, fallbackTextId,
// subject).
bool ShowOperationError(WindowRef owner, StatusCode status, unsigned captionId,
                        unsigned fallbackTextId, std::u16string_view subject);
