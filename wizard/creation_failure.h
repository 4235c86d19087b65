// The message of the progress page when the creation of an image failed.
#pragma once

#include <optional>
#include <string_view>

#include "app/prompt.h"
#include "system/status.h"

// The message for the creation's final status, with `imagePath` for "%s", under the caption
// "Error": access denied, write fault, disk full and cannot create have their own texts;
// any other code gets "Operation failed" with the code. None for a cancelled creation
// (0x40050008), which ends without a message.
std::optional<Prompt> CreationFailure(StatusCode status, std::u16string_view imagePath);
