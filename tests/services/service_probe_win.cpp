// A small program that the process and shell tests start: it writes the command line it
// received and the window position it was asked for into the file named by its first
// argument (UTF-16), then ends.
#include <windows.h>

#include <shellapi.h>

#include <string>

int wmain(int argc, wchar_t** argv)
{
  if (argc < 2) return 2;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  GetStartupInfoW(&startup);
  std::wstring report = GetCommandLineW();
  report += L"\n";
  report += (startup.dwFlags & STARTF_USEPOSITION) != 0
                ? L"position " + std::to_wstring(startup.dwX) + L" " + std::to_wstring(startup.dwY)
                : std::wstring(L"no position");
  const HANDLE file = CreateFileW(argv[1], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return 3;
  DWORD written = 0;
  const BOOL wrote =
      WriteFile(file, report.data(), static_cast<DWORD>(report.size() * 2), &written, nullptr);
  CloseHandle(file);
  return wrote ? 0 : 4;
}
