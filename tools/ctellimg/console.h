// The image tool's terminal: password entry without echo, yes/no questions, the progress
// bar, and Ctrl+C as a cancel request. One POSIX and one Windows implementation.
#pragma once

#include <cstdint>
#include <string>

bool StdinIsTerminal();
bool StderrIsTerminal();

// Reads one line of standard input without its line end; false at the end of input.
bool ReadInputLine(std::string* line);

// Shows `prompt` on standard error and reads a line from the terminal without echoing it.
// false when the terminal gives no line (end of input).
bool ReadHiddenLine(const std::string& prompt, std::string* line);

// From now on Ctrl+C (SIGINT, or the console's Ctrl+C and Ctrl+Break) only sets a flag that
// InterruptRequested reports; the running operation decides when to stop.
void CatchInterrupt();
bool InterruptRequested();
