// The program's run after the process is prepared: reads the command line, carries out a
// one-shot action, hands an interactive start over to a running copy, or mounts one image
// with only the mount dialog, or runs the main window until it is closed.
#pragma once

// `commandLine` as GetCommandLineW gives it (the program first); `showCommand` is how the
// main window is first shown. Returns the process's exit code: 0 after "/notify" or a
// hand-over, -1 after a one-shot mount or dismount and for unknown arguments, otherwise the
// main window's message loop result.
int RunApplication(const wchar_t* commandLine, int showCommand);
