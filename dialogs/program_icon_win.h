// The dialogs of the image commands carry the program's icon in their title bar.
#pragma once

#include <windows.h>

// Sets the dialog's large and small icons from the program's icon resource.
void SetProgramIcons(HWND dialog);
