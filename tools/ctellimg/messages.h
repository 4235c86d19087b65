// The image tool's failure texts: the program's own wording for each status code, so that
// a user reads the same message in a script's log as in a message box.
#pragma once

#include <string>

#include "crypto/status.h"

// What the tool was doing when the status came back; it picks the fallback text.
enum class Activity { kOpen, kCreate, kChangePassword, kClear };

// The message for a failure, with `image` in place of the path. Codes the program words
// itself get their own text; the rest get the activity's general text with the code.
// Empty for a cancelled creation, which the program reports with no message.
std::string FailureMessage(Activity activity, StatusCode status, const std::string& image);

// The message followed by a line "Error code: %X" unless it already holds the code.
std::string FailureReport(Activity activity, StatusCode status, const std::string& image);

// Texts of the program's dialogs that the tool shows as they are.
inline constexpr char kEmptyPasswordText[] = "Please enter the password.";
inline constexpr char kPasswordMismatchText[] = "Passwords mismatch! Please re-type your password.";
inline constexpr char kPasswordChangedText[] =
    "Virtual disk image password has been successfuly changed.";
inline constexpr char kClearedText[] = "Virtual disk image has been cleared.";
inline constexpr char kClearLongText[] =
    "Clearing virtual disk image may take long time to complete.";
inline constexpr char kShortKeyText[] =
    "Selected key length is too small. It is not recommended to store sensitive information to "
    "this virtual disk image.";
