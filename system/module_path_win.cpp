#include <windows.h>

#include "system/error_map.h"
#include "system/module_path.h"
#include "system/wide_text_win.h"

static_assert(sizeof(wchar_t) == sizeof(char16_t));

StatusCode SysGetModulePath(std::u16string* path)
{
  if (path == nullptr) return kSysInvalidParameter;
  wchar_t buffer[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, buffer, MAX_PATH);
  if (length == 0) return MapSystemError(GetLastError());
  // A path that fills the buffer was cut off.
  if (length >= MAX_PATH) return kSysBufferTooSmall;
  path->assign(Utf16(buffer), length);
  return kStatusSuccess;
}
