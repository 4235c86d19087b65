// Starting another program for a test.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

// Starts `program` (a full path) with `arguments` after its quoted path on the command line,
// inheriting no handles. Under Wine the creation of a process fails, rarely (once in
// thousands of starts), before the program runs at all; nothing of it has run then, so it
// is started again, up to three times, and each failure is told on standard error so that
// it stays visible. The thread handle is closed; the process handle is the caller's to
// close. Nothing when every attempt failed.
std::optional<PROCESS_INFORMATION> StartProgram(const std::wstring& program,
                                                const std::wstring& arguments = L"");
