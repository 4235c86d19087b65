#include "ui/message_handler.h"

#include <utility>

#include "ui/handler_failure.h"
#include "ui/message_loop.h"

namespace {

// The window property that holds the object of a window of ours.
constexpr wchar_t kObjectProperty[] = L"Cryptelle.Ui.Object";

}  // namespace

CMessageHandler* CMessageHandler::FromHandle(HWND window)
{
  return static_cast<CMessageHandler*>(GetPropW(window, kObjectProperty));
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
  SetPropW(window, kObjectProperty, this);
}

HWND CMessageHandler::Detach()
{
  const HWND window = std::exchange(hwnd_, nullptr);
  if (window != nullptr && FromHandle(window) == this) RemovePropW(window, kObjectProperty);
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
