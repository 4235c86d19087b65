// After a mount: does the new drive hold a file system, and if not, does the user have it
// formatted? Creating a drive's root directory never succeeds; the error tells the state of
// the volume.
#pragma once

#include "app/prompt.h"
#include "services/window_ref.h"

// Probes the root of drive `letter` (a to z upper-cased first): access denied means a formatted
// volume (true). An unrecognised volume on a drive A to Z asks "Virtual disk %c: is not
// formatted..." (Yes/No); on Yes the shell's format dialog runs for the drive (default
// format id, full format), and any result but its error, cancel and cannot-format values
// gives true. Everything else, the answer No and the already-exists error included, gives
// false: the drive is not to be opened.
bool CheckFormatted(WindowRef owner, char16_t letter);

// The question for an unformatted drive: "Virtual disk %c: is not formatted..." with the
// drive's letter, under "Virtual Disk Needs Formatting", Yes and No.
Prompt FormatDiskPrompt(char16_t letter);
