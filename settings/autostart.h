// The monitor program beside the running executable, and its autostart entry: the value
// "PellmoraCryptelleMonitor" of the current user's Run key
// "Software\Microsoft\Windows\CurrentVersion\Run", the only value of that key the
// program touches.
#pragma once

#include <string>

#include "system/status.h"

inline constexpr char16_t kRunKeyPath[] = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
inline constexpr char16_t kAutostartValueName[] = u"PellmoraCryptelleMonitor";
inline constexpr char16_t kMonitorProgramName[] = u"ctellmon.exe";

// The running executable's path with everything after its last path separator replaced
// by "ctellmon.exe"; a path without a separator is left unchanged.
StatusCode MonitorProgramPath(std::u16string* path);

// The same rule on a given executable path (the separator is the system's own).
std::u16string MonitorProgramPathBeside(const std::u16string& executablePath);

// The Run value's text for a monitor program: its path in double quotes.
std::u16string AutostartText(const std::u16string& monitorPath);

// Reads the Run value with a query of at most 520 bytes. `*value` is its text (up to its
// first terminator) when the query succeeds and the type is REG_SZ or REG_EXPAND_SZ, else
// empty. Returns the status of opening the Run key.
StatusCode ReadAutostartValue(std::u16string* value);

// True when the Run value names this installation's monitor program exactly: the quoted
// MonitorProgramPath, compared character for character, case included.
StatusCode ReadAutostartEnabled(bool* enabled);

// Sets the Run value (REG_SZ, terminator included) to the quoted monitor program path when
// `enabled`, else deletes it. The Run key is created when missing.
StatusCode WriteAutostartValue(bool enabled);
