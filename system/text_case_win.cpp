#include <windows.h>

#include "system/text_case.h"
#include "system/wide_text_win.h"

static_assert(sizeof(wchar_t) == sizeof(char16_t));

bool SysTextEqualIgnoringCase(const char16_t* first, const char16_t* second)
{
  return lstrcmpiW(Wide(first), Wide(second)) == 0;
}
