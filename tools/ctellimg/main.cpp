// ctellimg: creates, inspects, checks, re-keys and clears encrypted disk images from the
// command line. The work is in commands.cpp; this only collects the arguments as UTF-8.
#include <string>
#include <vector>

#include "tools/ctellimg/commands.h"

#ifdef _WIN32
#include <windows.h>
// After windows.h, whose types it needs.
#include <shellapi.h>

#include "system/utf.h"
#include "system/wide_text_win.h"
#endif

int main(int argc, char** argv)
{
  std::vector<std::string> arguments;
#ifdef _WIN32
  // The wide command line keeps paths that the ANSI code page cannot spell.
  (void)argc;
  (void)argv;
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; wide != nullptr && i < count; ++i)
    arguments.push_back(Utf16ToUtf8(Utf16(wide[i])));
  LocalFree(wide);
#else
  for (int i = 1; i < argc; ++i) arguments.emplace_back(argv[i]);
#endif
  return RunTool(arguments);
}
