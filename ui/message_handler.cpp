#include "ui/message_handler.h"

#include <mutex>
#include <unordered_map>
#include <utility>

#include "system/sync.h"
#include "ui/handler_failure.h"
#include "ui/message_loop.h"

namespace {

// The objects of the windows of ours, by window. Kept in the process rather than as a window
// property: every message of every such window looks its object up, and under Wine each
// property lookup is a round trip to the server (about 180 of them before the main window's
// first paint). An entry lives from the object's attachment to its window's WM_NCDESTROY.
class WindowObjects {
 public:
  void Set(HWND window, CMessageHandler* object)
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    objects_[window] = object;
  }

  CMessageHandler* Get(HWND window)
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    const auto found = objects_.find(window);
    return found == objects_.end() ? nullptr : found->second;
  }

  // Forgets `window`'s object if it is `object`.
  void Remove(HWND window, const CMessageHandler* object)
  {
    const std::lock_guard<SysMutex> lock(mutex_);
    const auto found = objects_.find(window);
    if (found != objects_.end() && found->second == object) objects_.erase(found);
  }

 private:
  SysMutex mutex_;
  std::unordered_map<HWND, CMessageHandler*> objects_;
};

// Never destroyed: windows may still be detached while the process ends.
WindowObjects& Objects()
{
  static auto* const objects = new WindowObjects;
  return *objects;
}

}  // namespace

CMessageHandler* CMessageHandler::FromHandle(HWND window)
{
  return window == nullptr ? nullptr : Objects().Get(window);
}

CMessageHandler::~CMessageHandler()
{
  LeaveMessageLoop();
  const HWND window = Detach();
  if (window != nullptr) DestroyWindow(window);
}

void CMessageHandler::Attach(HWND window)
{
  hwnd_ = window;
  Objects().Set(window, this);
}

HWND CMessageHandler::Detach()
{
  const HWND window = std::exchange(hwnd_, nullptr);
  if (window != nullptr) Objects().Remove(window, this);
  return window;
}

void CMessageHandler::JoinMessageLoop(CMessageFilter& filter)
{
  CMessageLoop* const loop = CMessageLoop::Current();
  if (loop == nullptr || loopFilter_ == &filter) return;
  loop->AddMessageFilter(&filter);
  loopFilter_ = &filter;
}

void CMessageHandler::LeaveMessageLoop()
{
  if (loopFilter_ != nullptr)
    CMessageLoop::RemoveFromThreadLoops(std::exchange(loopFilter_, nullptr));
}

bool CMessageHandler::Deliver(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) noexcept
{
  const HWND window = hwnd_;
  result = 0;
  if (message == WM_NCDESTROY) {
    LeaveMessageLoop();
    Detach();
    RunBehindBarrier(window, message, [&] {
      OnFinalMessage();
      return true;
    });
    return false;
  }
  const bool handled = RunBehindBarrier(window, message, [&] {
    return OfferToSender(message, wParam, lParam, result) ||
           HandleMessage(message, wParam, lParam, result);
  });
  if (!handled) result = 0;
  return handled;
}

bool CMessageHandler::OfferToSender(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  HWND sender = nullptr;
  if (message == WM_NOTIFY && lParam != 0)
    sender = reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
  if (message == WM_COMMAND) sender = reinterpret_cast<HWND>(lParam);
  // Only a child control's own object: a sheet's notifications to its pages are not
  // reflections, nor are messages a window sends to itself.
  if (sender == nullptr || sender == hwnd_ || !IsChild(hwnd_, sender)) return false;
  CMessageHandler* const control = FromHandle(sender);
  if (control == nullptr) return false;
  if (message == WM_NOTIFY) {
    return control->OnReflectedNotify(*reinterpret_cast<NMHDR*>(lParam), result);
  }
  return control->OnReflectedCommand(HIWORD(wParam));
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

bool CMessageHandler::OnReflectedNotify(NMHDR&, LRESULT&)
{
  return false;
}

bool CMessageHandler::OnReflectedCommand(UINT)
{
  return false;
}

bool CMessageHandler::OnTimer(UINT_PTR)
{
  return false;
}
