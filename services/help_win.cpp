#include "services/help_win.h"

#include <windows.h>

#include "services/help.h"
#include "services/system_services.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"

namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

// The viewer's entry point in hhctrl.ocx, loaded on first use and kept loaded: the help
// window lives on after the call that opened it.
HtmlHelpFunction HtmlHelpEntry()
{
  static const HtmlHelpFunction entry = [] {
    const HMODULE library = LoadLibraryW(L"hhctrl.ocx");
    if (library == nullptr) return HtmlHelpFunction{};
    return reinterpret_cast<HtmlHelpFunction>(
        reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpW")));
  }();
  return entry;
}

class CSystemHelp final : public CHelpService {
 public:
  StatusCode ShowContents(WindowRef owner) override { return Open(owner, kHelpDisplayContents, 0); }

  StatusCode ShowTopic(WindowRef owner, uint32_t context) override
  {
    return Open(owner, kHelpContext, context);
  }

 private:
  static StatusCode Open(WindowRef owner, uint32_t command, uintptr_t data)
  {
    std::u16string path;
    const StatusCode status = HelpFilePath(&path);
    return IsFailure(status) ? status : OpenHelpFile(path, owner, command, data);
  }
};

}  // namespace

StatusCode OpenHelpFile(const std::u16string& file, WindowRef owner, uint32_t command,
                        uintptr_t data)
{
  if (GetFileAttributesW(Wide(file)) == INVALID_FILE_ATTRIBUTES) return kSysNotFound;
  const HtmlHelpFunction htmlHelp = HtmlHelpEntry();
  if (htmlHelp == nullptr) return kSysNotSupported;
  return htmlHelp(ToHwnd(owner), Wide(file), command, data) != nullptr ? kStatusSuccess
                                                                       : kSysGeneralFailure;
}

CHelpService& SystemHelpService()
{
  static CSystemHelp service;
  return service;
}
