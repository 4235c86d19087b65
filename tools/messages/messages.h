// The tools' failure texts: the program's own wording for each status code, taken
// from its string table, so that a user reads the same message in a script's log as in a
// message box.
#pragma once

#include <string>

#include "system/status.h"

// What the tool was doing when the status came back; it picks the fallback text.
enum class Activity { kOpen, kCreate, kChangePassword, kClear };

// The message for a failure, with `image` in place of the path, as the program chooses it
// (app/operation_error.h, wizard/creation_failure.h). Codes the program words itself get
// their own text; the rest get the activity's general text with the code. Empty for a
// cancelled creation or clearing, which the program reports with no message, and for the
// device host's not-running code, on which the tool cannot act.
std::string FailureMessage(Activity activity, StatusCode status, const std::string& image);

// The message followed by a line "Error code: %X" unless it already holds the code.
std::string FailureReport(Activity activity, StatusCode status, const std::string& image);

// A text of the program's string table (an id of res/resource.h), in UTF-8.
std::string ProgramText(unsigned id);

// The encryption page's warning, a dialog text rather than a string-table entry.
inline constexpr char kShortKeyText[] =
    "Selected key length is too small. It is not recommended to store sensitive information to "
    "this virtual disk image.";
