#include "ui/frame_window.h"

#include <commctrl.h>

#include "ui/strings.h"

namespace {

// The part of a command's string before "\n" (part 0) or after it (part 1).
std::wstring CommandStringPart(UINT command, int part)
{
  const std::wstring text = LoadResourceString(command);
  const size_t newline = text.find(L'\n');
  if (part == 0) return text.substr(0, newline);
  return newline == std::wstring::npos ? std::wstring() : text.substr(newline + 1);
}

}  // namespace

std::wstring CFrameWindow::CommandPrompt(UINT command)
{
  return CommandStringPart(command, 0);
}

std::wstring CFrameWindow::CommandToolTip(UINT command)
{
  return CommandStringPart(command, 1);
}

void CFrameWindow::SetClientView(HWND view)
{
  view_ = view;
  UpdateLayout();
}

void CFrameWindow::UpdateLayout()
{
  RECT client{};
  GetClientRect(hwnd_, &client);
  // Both bars place themselves along their edge when told the parent's size changed.
  const LPARAM size = MAKELPARAM(client.right, client.bottom);
  if (reBar_.IsWindow()) {
    reBar_.Send(WM_SIZE, SIZE_RESTORED, size);
    RECT bar{};
    GetWindowRect(reBar_.Handle(), &bar);
    client.top += bar.bottom - bar.top;
  }
  if (statusBar_.IsWindow()) {
    statusBar_.Send(WM_SIZE, SIZE_RESTORED, size);
    RECT bar{};
    GetWindowRect(statusBar_.Handle(), &bar);
    client.bottom -= bar.bottom - bar.top;
  }
  if (view_ != nullptr) {
    SetWindowPos(view_, nullptr, client.left, client.top, client.right - client.left,
                 client.bottom > client.top ? client.bottom - client.top : 0,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

void CFrameWindow::OnIdle()
{
  updateUi_.Apply();
}

bool CFrameWindow::CreateReBar(UINT id, UINT firstBandId)
{
  reBar_ =
      CReBarCtrl::Create(hwnd_, id,
                         WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | RBS_VARHEIGHT |
                             RBS_BANDBORDERS | RBS_AUTOSIZE | CCS_NODIVIDER | CCS_TOP);
  nextBandId_ = firstBandId;
  return reBar_.IsWindow();
}

bool CFrameWindow::CreateStatusBar(UINT id, UINT idleTextId)
{
  statusBar_ = CStatusBarCtrl::Create(hwnd_, id, LoadResourceString(idleTextId), true);
  if (!statusBar_.IsWindow()) return false;
  updateUi_.AddStatusBar(statusBar_.Handle());
  return true;
}

bool CFrameWindow::AddBand(HWND child, bool newRow)
{
  if (!reBar_.AddBand({child, nextBandId_, newRow, true})) return false;
  ++nextBandId_;
  UpdateLayout();
  return true;
}

bool CFrameWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  switch (message) {
    case WM_CREATE:
      loop_ = CMessageLoop::Current();
      if (loop_ != nullptr) loop_->AddIdleHandler(this);
      result = OnCreate() ? 0 : -1;
      return true;
    case WM_DESTROY:
      if (loop_ != nullptr) loop_->RemoveIdleHandler(this);
      loop_ = nullptr;
      break;
    case WM_SIZE:
      UpdateLayout();
      result = 0;
      return true;
    case WM_INITMENUPOPUP:
      if (HIWORD(lParam) == 0) updateUi_.ApplyToMenu(reinterpret_cast<HMENU>(wParam));
      result = 0;
      return true;
    case WM_MENUSELECT:
      OnMenuSelect(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HMENU>(lParam));
      result = 0;
      return true;
    case WM_EXITMENULOOP: EndPrompt(); break;
    case WM_NOTIFY: {
      auto& header = *reinterpret_cast<NMHDR*>(lParam);
      if (header.code == TTN_GETDISPINFOW) {
        result = 0;
        return OnToolTipText(reinterpret_cast<NMTTDISPINFOW&>(header)) ||
               CCustomWindow::HandleMessage(message, wParam, lParam, result);
      }
      if (header.code == RBN_HEIGHTCHANGE && header.hwndFrom == reBar_.Handle()) UpdateLayout();
      break;
    }
    default: break;
  }
  return CCustomWindow::HandleMessage(message, wParam, lParam, result);
}

void CFrameWindow::OnMenuSelect(UINT item, UINT flags, HMENU menu)
{
  // The menu closed.
  if (flags == 0xFFFF && menu == nullptr) {
    EndPrompt();
    return;
  }
  // Submenus, separators and the system menu's commands have no prompt of ours.
  const bool command = (flags & (MF_POPUP | MF_SEPARATOR | MF_SYSMENU)) == 0;
  ShowPrompt(command ? CommandPrompt(item) : std::wstring());
}

void CFrameWindow::ShowPrompt(const std::wstring& prompt)
{
  if (!statusBar_.IsWindow()) return;
  statusBar_.SetSimple(true);
  statusBar_.SetSimpleText(prompt);
}

void CFrameWindow::EndPrompt()
{
  if (statusBar_.IsWindow() && statusBar_.IsSimple()) statusBar_.SetSimple(false);
}

bool CFrameWindow::OnToolTipText(NMTTDISPINFOW& info)
{
  // Tools of toolbars are named by their command id.
  if ((info.uFlags & TTF_IDISHWND) != 0) return false;
  toolTip_ = CommandToolTip(static_cast<UINT>(info.hdr.idFrom));
  if (toolTip_.empty()) return false;
  info.lpszText = toolTip_.data();
  info.hinst = nullptr;
  return true;
}
