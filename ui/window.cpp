#include "ui/window.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace {

// The window property that holds the object of a window of ours.
constexpr wchar_t kObjectProperty[] = L"Cryptelle.Ui.Object";

// The window whose CreateWindowExW call is running on this thread: its first message
// attaches it, before WM_NCCREATE if a message comes earlier.
thread_local CCustomWindow* creatingWindow = nullptr;

// The classes registered so far, each with the procedure that does its default processing.
struct ClassRegistry {
  std::mutex mutex;
  std::map<std::wstring, WNDPROC> defaultProcs;
};

ClassRegistry& Registry()
{
  static ClassRegistry registry;
  return registry;
}

// The default processing of a window of ours that has no object (any more).
LRESULT Unattached(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  wchar_t name[256] = {};
  GetClassNameW(window, name, 256);
  WNDPROC defaultProc = DefWindowProcW;
  {
    ClassRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.defaultProcs.find(name);
    if (found != registry.defaultProcs.end()) defaultProc = found->second;
  }
  return CallWindowProcW(defaultProc, window, message, wParam, lParam);
}

}  // namespace

HINSTANCE ResourceModule()
{
  return GetModuleHandleW(nullptr);
}

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

CMessageHandler* CMessageHandler::FromHandle(HWND window)
{
  return static_cast<CMessageHandler*>(GetPropW(window, kObjectProperty));
}

void CMessageHandler::AttachTo(HWND window)
{
  SetPropW(window, kObjectProperty, this);
}

void CMessageHandler::DetachFrom(HWND window)
{
  RemovePropW(window, kObjectProperty);
}

bool CMessageHandler::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  switch (message) {
    case WM_COMMAND:
      result = 0;
      return OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
    case WM_NOTIFY: return OnNotify(*reinterpret_cast<NMHDR*>(lParam), result);
    case WM_TIMER: result = 0; return OnTimer(wParam);
    case WM_DESTROY: OnDestroy(); return false;
    default: return false;
  }
}

bool CMessageHandler::OnCommand(UINT, UINT, HWND)
{
  return false;
}

bool CMessageHandler::OnNotify(NMHDR&, LRESULT&)
{
  return false;
}

bool CMessageHandler::OnTimer(UINT_PTR)
{
  return false;
}

CCustomWindow::ClassDescription CCustomWindow::WindowClass() const
{
  return {L"Cryptelle.Window", nullptr};
}

WNDPROC CCustomWindow::RegisterClassOnce(const ClassDescription& description)
{
  ClassRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const auto found = registry.defaultProcs.find(description.name);
  if (found != registry.defaultProcs.end()) return found->second;

  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  WNDPROC defaultProc = DefWindowProcW;
  if (description.base != nullptr) {
    if (!GetClassInfoExW(nullptr, description.base, &windowClass)) return nullptr;
    defaultProc = windowClass.lpfnWndProc;
    windowClass.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
  } else {
    windowClass.style = CS_DBLCLKS;
    windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
    windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  }
  windowClass.lpfnWndProc = WindowProc;
  windowClass.hInstance = ResourceModule();
  windowClass.lpszClassName = description.name;
  if (RegisterClassExW(&windowClass) == 0) return nullptr;
  registry.defaultProcs.emplace(description.name, defaultProc);
  return defaultProc;
}

HWND CCustomWindow::Create(HWND parent, const RECT& rect, const wchar_t* title, DWORD style,
                           DWORD exStyle, HMENU menuOrId)
{
  const ClassDescription description = WindowClass();
  const WNDPROC defaultProc = RegisterClassOnce(description);
  if (defaultProc == nullptr) return nullptr;
  defaultProc_ = defaultProc;
  creatingWindow = this;
  const HWND window = CreateWindowExW(exStyle, description.name, title, style, rect.left, rect.top,
                                      rect.right - rect.left, rect.bottom - rect.top, parent,
                                      menuOrId, ResourceModule(), nullptr);
  creatingWindow = nullptr;
  return window;
}

CCustomWindow::~CCustomWindow()
{
  if (hwnd_ == nullptr) return;
  DetachFrom(hwnd_);
  ::DestroyWindow(std::exchange(hwnd_, nullptr));
}

LRESULT CCustomWindow::DefaultProcessing(UINT message, WPARAM wParam, LPARAM lParam)
{
  return CallWindowProcW(defaultProc_, hwnd_, message, wParam, lParam);
}

LRESULT CALLBACK CCustomWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  auto* self = static_cast<CCustomWindow*>(FromHandle(window));
  if (self == nullptr) {
    self = std::exchange(creatingWindow, nullptr);
    if (self == nullptr) return Unattached(window, message, wParam, lParam);
    self->hwnd_ = window;
    self->AttachTo(window);
  }
  if (message == WM_NCDESTROY) {
    const LRESULT result = self->DefaultProcessing(message, wParam, lParam);
    DetachFrom(window);
    self->hwnd_ = nullptr;
    self->OnFinalMessage();
    return result;
  }
  LRESULT result = 0;
  if (self->HandleMessage(message, wParam, lParam, result)) return result;
  return self->DefaultProcessing(message, wParam, lParam);
}
