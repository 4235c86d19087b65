// Shows a prompt that a screen's core chose, through the one message-box service.
#pragma once

#include <windows.h>

#include "app/prompt.h"

// Shows `prompt` owned by `owner` (may be none) with its caption loaded from the string
// table; returns the button chosen (IDOK, IDRETRY, IDYES...).
int ShowPrompt(HWND owner, const Prompt& prompt);
