#include <windows.h>

#include <vector>

#include "services/system_services.h"
#include "system/error_map.h"
#include "system/wide_text_win.h"

namespace {

// The program path with its environment references expanded, in MAX_PATH characters.
bool ExpandProgramPath(const std::u16string& program, std::u16string* expanded)
{
  wchar_t buffer[MAX_PATH] = {};
  const DWORD length = ExpandEnvironmentStringsW(Wide(program), buffer, MAX_PATH);
  if (length == 0 || length > MAX_PATH) return false;
  expanded->assign(Utf16(buffer));
  return true;
}

// The system's text for error `error` (from its own message table, language neutral).
std::u16string SystemErrorText(DWORD error)
{
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, error, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<LPWSTR>(&text), 0,
      nullptr);
  std::u16string result(length != 0 && text != nullptr ? Utf16(text) : u"", length);
  LocalFree(text);
  return result;
}

class CSystemProcesses final : public CProcessService {
 public:
  StatusCode Start(const ProcessStartRequest& request, std::u16string* failureText) override
  {
    std::u16string program;
    if (!request.program.empty() && !ExpandProgramPath(request.program, &program)) {
      return Fail(ERROR_FILENAME_EXCED_RANGE, failureText);
    }
    // The system may write into the command line, so it gets a copy of its own.
    std::vector<wchar_t> commandLine(request.commandLine.begin(), request.commandLine.end());
    commandLine.push_back(L'\0');
    std::u16string desktop = request.desktop.value_or(u"");

    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (request.position) {
      startup.dwFlags |= STARTF_USEPOSITION;
      startup.dwX = static_cast<DWORD>(request.position->x);
      startup.dwY = static_cast<DWORD>(request.position->y);
    }
    if (request.desktop) startup.lpDesktop = const_cast<wchar_t*>(Wide(desktop));
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.empty() ? nullptr : Wide(program),
                        request.commandLine.empty() ? nullptr : commandLine.data(), nullptr,
                        nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
      return Fail(GetLastError(), failureText);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return kStatusSuccess;
  }

 private:
  static StatusCode Fail(DWORD error, std::u16string* failureText)
  {
    if (failureText != nullptr) *failureText = SystemErrorText(error);
    return MapSystemError(error);
  }
};

}  // namespace

CProcessService& SystemProcessService()
{
  static CSystemProcesses service;
  return service;
}
