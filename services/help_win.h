// The system's help opener, Windows side: opens a given help file with the HTML Help viewer.
#pragma once

#include <cstdint>
#include <string>

#include "services/window_ref.h"
#include "system/status.h"

// The HTML Help viewer's commands that the help opener gives.
inline constexpr uint32_t kHelpDisplayContents = 0x0001;  // HH_DISPLAY_TOC
inline constexpr uint32_t kHelpContext = 0x000F;          // HH_HELP_CONTEXT

// Opens `file` with the viewer's `command` and its `data`; kSysNotFound when the file does
// not exist, before the viewer would show its own complaint.
StatusCode OpenHelpFile(const std::u16string& file, WindowRef owner, uint32_t command,
                        uintptr_t data);
