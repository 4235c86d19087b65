// The image tool's commands over the image container.
#pragma once

#include <string>
#include <vector>

// Exit statuses of the tool.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Runs the command line (the arguments after the program name, UTF-8) and returns the exit
// status. Results go to standard output, prompts, progress and failures to standard error.
int RunTool(const std::vector<std::string>& arguments);
