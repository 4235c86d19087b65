#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "services/system_services.h"
#include "services/window_ref_win.h"
#include "system/error_map.h"
#include "system/wide_text_win.h"

static_assert(kShFmtIdDefault == SHFMT_ID_DEFAULT && kShFmtOptFull == SHFMT_OPT_FULL &&
              kShFmtError == SHFMT_ERROR && kShFmtCancel == SHFMT_CANCEL &&
              kShFmtNoFormat == SHFMT_NOFORMAT);
static_assert(kShppfwDirCreate == SHPPFW_DIRCREATE && kCsidlDesktop == CSIDL_DESKTOP);

namespace {

// An error result of a shell call: a Win32 error wrapped in an HRESULT maps like the error
// itself; any other failure is a general one.
StatusCode MapHresult(HRESULT result)
{
  if (HRESULT_FACILITY(result) == FACILITY_WIN32) {
    return MapSystemError(static_cast<uint32_t>(HRESULT_CODE(result)));
  }
  return kSysGeneralFailure;
}

class CSystemShell final : public CShellService {
 public:
  StatusCode Open(WindowRef owner, const std::u16string& target) override
  {
    // Values above 32 mean success. Of the error values, the file, path, access and memory
    // ones share the system's error numbers; the others (association and exchange errors)
    // have no code of their own.
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(ToHwnd(owner), L"open", Wide(target), nullptr, nullptr, SW_SHOWNORMAL));
    if (result > 32) return kStatusSuccess;
    switch (result) {
      case 0: return kSysOutOfMemory;
      case SE_ERR_FNF:
      case SE_ERR_PNF:
      case SE_ERR_ACCESSDENIED:
      case SE_ERR_OOM: return MapSystemError(static_cast<uint32_t>(result));
      default: return kSysGeneralFailure;
    }
  }

  StatusCode LookAt(const std::u16string& path) override
  {
    SHFILEINFOW information{};
    return SHGetFileInfoW(Wide(path), 0, &information, sizeof information, 0) != 0 ? kStatusSuccess
                                                                                   : kSysNotFound;
  }

  uint32_t FormatDrive(WindowRef owner, unsigned drive, unsigned formatId,
                       unsigned options) override
  {
    return SHFormatDrive(ToHwnd(owner), drive, formatId, options);
  }

  StatusCode PrepareForWrite(WindowRef owner, const std::u16string& path, uint32_t flags) override
  {
    const HRESULT result = SHPathPrepareForWriteW(ToHwnd(owner), nullptr, Wide(path), flags);
    return SUCCEEDED(result) ? kStatusSuccess : MapHresult(result);
  }

  StatusCode SpecialFolder(int csidl, std::u16string* path) override
  {
    if (path == nullptr) return kSysInvalidParameter;
    wchar_t buffer[MAX_PATH] = {};
    if (!SHGetSpecialFolderPathW(nullptr, buffer, csidl, FALSE)) return kSysNotFound;
    path->assign(Utf16(buffer));
    return kStatusSuccess;
  }
};

}  // namespace

CShellService& SystemShellService()
{
  static CSystemShell service;
  return service;
}
