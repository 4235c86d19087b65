#include "ui/frame_window.h"

#include <commctrl.h>

#include "ui/controls/tool_bar.h"
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

CFrameWindow::~CFrameWindow()
{
  // The base destroys a remaining window without our handlers: leave the loop here.
  LeaveMessageLoop();
}

void CFrameWindow::LeaveMessageLoop()
{
  if (loop_ != nullptr) loop_->RemoveIdleHandler(this);
  loop_ = nullptr;
}

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
  if (reBar_.IsWindow()) TellSize(reBar_.Handle(), size, reBarSize_);
  if (statusBar_.IsWindow()) TellSize(statusBar_.Handle(), size, statusBarSize_);
  if (view_ != nullptr) {
    const RECT place = ClientViewRect();
    SetWindowPos(view_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

RECT CFrameWindow::ClientViewRect() const
{
  RECT client{};
  GetClientRect(hwnd_, &client);
  RECT bar{};
  if (reBar_.IsWindow() && GetWindowRect(reBar_.Handle(), &bar)) client.top += bar.bottom - bar.top;
  if (statusBar_.IsWindow() && GetWindowRect(statusBar_.Handle(), &bar)) {
    client.bottom -= bar.bottom - bar.top;
  }
  if (client.bottom < client.top) client.bottom = client.top;
  return client;
}

void CFrameWindow::TellSize(HWND bar, LPARAM size, LPARAM& told)
{
  // A bar keeps its place while the client size stays; telling it the same size again would
  // only lay it out and repaint it anew (the frame lays out on every band and height change).
  if (size == told) return;
  told = size;
  SendMessageW(bar, WM_SIZE, SIZE_RESTORED, size);
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
    case WM_DESTROY: LeaveMessageLoop(); break;
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
      if (header.hwndFrom == reBar_.Handle() && header.code == RBN_HEIGHTCHANGE) UpdateLayout();
      if (header.hwndFrom == reBar_.Handle() && header.code == RBN_CHEVRONPUSHED) {
        OnChevronPushed(reinterpret_cast<const NMREBARCHEVRON&>(header));
        result = 0;
        return true;
      }
      break;
    }
    case WM_MEASUREITEM:
      if (chevronCommandBar_ != nullptr &&
          chevronCommandBar_->Images().Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam))) {
        result = TRUE;
        return true;
      }
      break;
    case WM_DRAWITEM:
      if (chevronCommandBar_ != nullptr &&
          chevronCommandBar_->Images().Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))) {
        result = TRUE;
        return true;
      }
      break;
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

void CFrameWindow::OnChevronPushed(const NMREBARCHEVRON& chevron)
{
  const HWND child = reBar_.BandChild(static_cast<int>(chevron.uBand));
  const CToolBarCtrl toolBar(child);
  auto* const commandBar = dynamic_cast<CCommandBar*>(CMessageHandler::FromHandle(child));
  RECT shown{};
  GetClientRect(child, &shown);
  const CMenu menu(CreatePopupMenu());
  for (int index = 0; index < toolBar.ButtonCount(); ++index) {
    if (toolBar.ItemRect(index).right <= shown.right) continue;
    const UINT command = toolBar.CommandAt(index);
    if (commandBar != nullptr) {
      wchar_t text[256] = {};
      GetMenuStringW(commandBar->Menu(), static_cast<UINT>(index), text, 256, MF_BYPOSITION);
      AppendMenuW(menu.Get(), MF_POPUP,
                  reinterpret_cast<UINT_PTR>(GetSubMenu(commandBar->Menu(), index)), text);
    } else if (toolBar.IsSeparator(index)) {
      if (GetMenuItemCount(menu.Get()) > 0) AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    } else {
      const UINT state = toolBar.IsEnabled(command) ? MF_ENABLED : MF_GRAYED;
      AppendMenuW(menu.Get(), MF_STRING | state, command, toolBar.ButtonText(command).c_str());
    }
  }
  if (GetMenuItemCount(menu.Get()) > 0) {
    RECT button = chevron.rc;
    MapWindowPoints(reBar_.Handle(), nullptr, reinterpret_cast<POINT*>(&button), 2);
    TPMPARAMS exclude{sizeof exclude, button};
    chevronCommandBar_ = commandBar;
    TrackPopupMenuEx(menu.Get(), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL | TPM_LEFTBUTTON,
                     button.left, button.bottom, hwnd_, &exclude);
    chevronCommandBar_ = nullptr;
  }
  // The command bar's popups stay its own: taken out before the chevron menu is destroyed.
  while (commandBar != nullptr && GetMenuItemCount(menu.Get()) > 0) {
    RemoveMenu(menu.Get(), 0, MF_BYPOSITION);
  }
}
