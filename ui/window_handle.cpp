#include "ui/window_handle.h"

#include <algorithm>

std::wstring CWindow::WindowText(HWND window)
{
  const int length = GetWindowTextLengthW(window);
  if (length <= 0) return {};
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  const int copied = GetWindowTextW(window, text.data(), length + 1);
  text.resize(static_cast<size_t>(std::max(copied, 0)));
  return text;
}

void CWindow::CenterWindow(HWND over) const
{
  if (over == nullptr) over = GetWindow(hwnd_, GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(over != nullptr ? over : hwnd_, MONITOR_DEFAULTTONEAREST),
                  &monitor);
  const RECT work = monitor.rcWork;
  RECT target = work;
  if (over != nullptr && IsWindowVisible(over) && !IsIconic(over)) GetWindowRect(over, &target);
  RECT self{};
  GetWindowRect(hwnd_, &self);
  const LONG width = self.right - self.left;
  const LONG height = self.bottom - self.top;
  LONG left = target.left + (target.right - target.left - width) / 2;
  LONG top = target.top + (target.bottom - target.top - height) / 2;
  left = std::max(work.left, std::min(left, work.right - width));
  top = std::max(work.top, std::min(top, work.bottom - height));
  SetWindowPos(hwnd_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
