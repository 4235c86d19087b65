// Starting the monitor program "ctellmon.exe", after every successful mount and after the
// Monitor page is applied with the monitor enabled.
#pragma once

#include <string_view>

#include "app/prompt.h"
#include "services/window_ref.h"

// Does nothing unless "EnableMonitor" is set. Otherwise starts the command line
// "ctellmon.exe" alone (no program path: the system's search order finds it, this
// program's folder first), with the empty desktop name and no handles handed over; it does
// not check whether a monitor already runs. A failure shows "Unable to start Cryptelle
// Monitor." with the system's text for the error, caption "Error", owned by `owner`.
void StartMonitor(WindowRef owner);

// The failure message of the start: "Unable to start Cryptelle Monitor." followed by the
// system's text for the error, under "Error".
Prompt MonitorStartFailure(std::u16string_view systemText);
