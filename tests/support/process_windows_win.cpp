#include "support/process_windows_win.h"

#include <string>

namespace {

struct WindowSearch {
  DWORD processId;
  const wchar_t* title;
  std::vector<HWND> found;
};

BOOL CALLBACK CollectWindow(HWND window, LPARAM context)
{
  auto* search = reinterpret_cast<WindowSearch*>(context);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  wchar_t title[256] = {};
  GetWindowTextW(window, title, 256);
  if (owner == search->processId && std::wstring(title) == search->title) {
    search->found.push_back(window);
  }
  return TRUE;
}

}  // namespace

std::vector<HWND> TopLevelWindows(DWORD processId, const wchar_t* title)
{
  WindowSearch search{processId, title, {}};
  EnumWindows(CollectWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}
