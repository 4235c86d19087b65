#include "dialogs/program_icon_win.h"

#include "res/resource.h"
#include "ui/window.h"

namespace {

void SetIcon(HWND dialog, WPARAM which, int metricX, int metricY)
{
  const HANDLE icon = LoadImageW(ResourceModule(), MAKEINTRESOURCEW(IDR_MAINFRAME), IMAGE_ICON,
                                 GetSystemMetrics(metricX), GetSystemMetrics(metricY), LR_SHARED);
  SendMessageW(dialog, WM_SETICON, which, reinterpret_cast<LPARAM>(icon));
}

}  // namespace

void SetProgramIcons(HWND dialog)
{
  SetIcon(dialog, ICON_BIG, SM_CXICON, SM_CYICON);
  SetIcon(dialog, ICON_SMALL, SM_CXSMICON, SM_CYSMICON);
}
