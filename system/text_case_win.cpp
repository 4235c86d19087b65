#include <windows.h>

#include "system/text_case.h"

static_assert(sizeof(wchar_t) == sizeof(char16_t));

bool SysTextEqualIgnoringCase(const char16_t* first, const char16_t* second)
{
  return lstrcmpiW(reinterpret_cast<const wchar_t*>(first),
                   reinterpret_cast<const wchar_t*>(second)) == 0;
}
