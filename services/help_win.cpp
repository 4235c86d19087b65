#include <windows.h>

#include "services/system_services.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"

namespace {

// The HTML Help viewer's commands used here.
constexpr UINT kHelpDisplayContents = 0x0001;  // HH_DISPLAY_TOC
constexpr UINT kHelpContext = 0x000F;          // HH_HELP_CONTEXT

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
  // A missing help file is reported here, before the viewer would show its own complaint.
  static StatusCode Open(WindowRef owner, UINT command, DWORD_PTR data)
  {
    std::u16string path;
    const StatusCode status = HelpFilePath(&path);
    if (IsFailure(status)) return status;
    if (GetFileAttributesW(Wide(path)) == INVALID_FILE_ATTRIBUTES) return kSysNotFound;
    const HtmlHelpFunction htmlHelp = HtmlHelpEntry();
    if (htmlHelp == nullptr) return kSysNotSupported;
    return htmlHelp(ToHwnd(owner), Wide(path), command, data) != nullptr ? kStatusSuccess
                                                                         : kSysGeneralFailure;
  }
};

}  // namespace

CHelpService& SystemHelpService()
{
  static CSystemHelp service;
  return service;
}
