// A prompt as the system shows it, for the screenshot programs' scenes: the real message box
// with the prompt's text, caption and style.
#pragma once

#include <windows.h>

#include "app/prompt.h"

// Shows `prompt` with MessageBoxW on a thread of its own (the box is modal) and returns the
// box, found by its caption, once it shows; null when it did not show within five seconds.
// The capture waits until the box's thread has painted it. The program ends with the
// picture taken, the box still open.
HWND MessageBoxOf(const Prompt& prompt);
