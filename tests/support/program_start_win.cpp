#include "support/program_start_win.h"

#include <cstdio>

std::optional<PROCESS_INFORMATION> StartProgram(const std::wstring& program,
                                                const std::wstring& arguments)
{
  std::wstring commandLine = L"\"" + program + L"\"" + (arguments.empty() ? L"" : L" " + arguments);
  constexpr int kAttempts = 3;
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       nullptr, &startup, &info)) {
      CloseHandle(info.hThread);
      info.hThread = nullptr;
      return info;
    }
    std::fprintf(stderr, "%ls did not start (attempt %d of %d): error %lu\n", program.c_str(),
                 attempt, kAttempts, GetLastError());
  }
  return std::nullopt;
}
