#include "ui/window.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace {

// The window whose CreateWindowExW call is running on this thread: its first message
// attaches it, before WM_NCCREATE if a message comes earlier.
thread_local CCustomWindow* creatingWindow = nullptr;

// The classes registered so far, each with the procedure that does its default processing.
struct ClassRegistry {
  std::mutex mutex;
  std::map<std::wstring, WNDPROC> defaultProcs;
};

// Never destroyed: a window that outlives static destruction (a frame held by a static
// object, say) still looks up its class's default processing while it is destroyed.
ClassRegistry& Registry()
{
  static ClassRegistry* registry = new ClassRegistry;
  return *registry;
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
  return CreateAt(parent, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                  title, style, exStyle, menuOrId);
}

HWND CCustomWindow::CreateAtDefaultPlace(HWND parent, const wchar_t* title, DWORD style,
                                         DWORD exStyle, HMENU menuOrId)
{
  return CreateAt(parent, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, title, style,
                  exStyle, menuOrId);
}

HWND CCustomWindow::CreateAt(HWND parent, int x, int y, int width, int height, const wchar_t* title,
                             DWORD style, DWORD exStyle, HMENU menuOrId)
{
  const ClassDescription description = WindowClass();
  const WNDPROC defaultProc = RegisterClassOnce(description);
  if (defaultProc == nullptr) return nullptr;
  defaultProc_ = defaultProc;
  creatingWindow = this;
  const HWND window = CreateWindowExW(exStyle, description.name, title, style, x, y, width, height,
                                      parent, menuOrId, ResourceModule(), nullptr);
  creatingWindow = nullptr;
  return window;
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
    self->Attach(window);
  }
  // Taken first: a handler may delete the object.
  const WNDPROC defaultProc = self->defaultProc_;
  LRESULT result = 0;
  if (self->Deliver(message, wParam, lParam, result)) return result;
  return CallWindowProcW(defaultProc, window, message, wParam, lParam);
}
