#include "ui/command_bar.h"

#include <utility>

namespace {

// The bar whose popup is open on this thread, for the menu loop's message hook.
thread_local CCommandBar* trackingBar = nullptr;

// Posted to the bar to open a popup (wParam the button, lParam non-zero to select the first
// item) once the message that asked for it has been handled.
UINT OpenMenuMessage()
{
  static const UINT message = RegisterWindowMessageW(L"Cryptelle.CommandBar.OpenMenu");
  return message;
}

wchar_t UpperCase(wchar_t character)
{
  // CharUpperW converts one character passed in the low word of its pointer.
  return static_cast<wchar_t>(reinterpret_cast<UINT_PTR>(
      CharUpperW(reinterpret_cast<wchar_t*>(static_cast<UINT_PTR>(character)))));
}

// The character after the single "&" of a text, upper case; 0 when there is none.
wchar_t Mnemonic(const std::wstring& text)
{
  for (size_t at = 0; at + 1 < text.size(); ++at) {
    if (text[at] != L'&') continue;
    if (text[at + 1] != L'&') return UpperCase(text[at + 1]);
    ++at;  // "&&" shows one "&"
  }
  return 0;
}

// How many popup menu windows of this thread are showing (1 while only the first level is
// open, 2 with one submenu...).
int OpenPopupLevels()
{
  int levels = 0;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM count) {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (lstrcmpW(name, L"#32768") == 0 && IsWindowVisible(window)) {
          ++*reinterpret_cast<int*>(count);
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&levels));
  return levels;
}

std::wstring MenuText(HMENU menu, int position)
{
  wchar_t text[256] = {};
  GetMenuStringW(menu, static_cast<UINT>(position), text, 256, MF_BYPOSITION);
  return text;
}

}  // namespace

CCommandBar::~CCommandBar()
{
  // The base destroys the window without our handlers: stop filtering here.
  StopFiltering();
}

CCustomWindow::ClassDescription CCommandBar::WindowClass() const
{
  return {L"Cryptelle.CommandBar", TOOLBARCLASSNAMEW};
}

HWND CCommandBar::Create(HWND frame, UINT id)
{
  frame_ = frame;
  const DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | CCS_NODIVIDER |
                      CCS_NORESIZE | CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_LIST;
  if (CCustomWindow::Create(frame, RECT{}, L"", style, 0,
                            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id))) == nullptr) {
    return nullptr;
  }
  Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(0, 0));
  // A button cut off by a narrow band is left to the band's chevron.
  Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_HIDECLIPPEDBUTTONS);
  // The buttons use the menu's font, as a menu bar does.
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
    font_.Reset(CreateFontIndirectW(&metrics.lfMenuFont));
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), FALSE);
  }
  ShowMnemonics(false);
  loop_ = CMessageLoop::Current();
  if (loop_ != nullptr) loop_->AddMessageFilter(this);
  return hwnd_;
}

bool CCommandBar::AttachMenu(CMenu menu)
{
  const CToolBarCtrl bar = Bar();
  while (bar.ButtonCount() > 0) bar.Send(TB_DELETEBUTTON, 0);
  mnemonics_.clear();
  menu_ = std::move(menu);
  const int count = GetMenuItemCount(menu_.Get());
  if (count < 0) return false;
  for (int position = 0; position < count; ++position) {
    const std::wstring text = MenuText(menu_.Get(), position);
    TBBUTTON button{};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = position;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
    button.iString = reinterpret_cast<INT_PTR>(text.c_str());  // copied by the toolbar
    if (!bar.AddButtons({&button, 1})) return false;
    mnemonics_.push_back(Mnemonic(text));
  }
  bar.AutoSize();
  ShowImages();
  return true;
}

bool CCommandBar::LoadImages(UINT commandsId, UINT bitmapId, bool thirtyTwoBit)
{
  if (!images_.Load(commandsId, bitmapId, thirtyTwoBit)) return false;
  ShowImages();
  return true;
}

void CCommandBar::SetImages(CImageList images, std::vector<UINT> commands)
{
  images_.Set(std::move(images), std::move(commands));
  ShowImages();
}

void CCommandBar::ShowImages() const
{
  if (menu_) images_.MarkItems(menu_.Get());
}

int CCommandBar::HotIndex() const
{
  return Bar().HotItem();
}

void CCommandBar::StopFiltering()
{
  if (loop_ != nullptr) loop_->RemoveMessageFilter(this);
  loop_ = nullptr;
}

void CCommandBar::OnDestroy()
{
  StopFiltering();
}

bool CCommandBar::IsFrameMessage(HWND window) const
{
  return frame_ != nullptr && (window == frame_ || IsChild(frame_, window)) &&
         IsWindowEnabled(frame_);
}

int CCommandBar::MnemonicIndex(WPARAM character) const
{
  if (character == 0 || character > 0xFFFF) return -1;
  const wchar_t upper = UpperCase(static_cast<wchar_t>(character));
  for (size_t index = 0; index < mnemonics_.size(); ++index) {
    if (mnemonics_[index] == upper) return static_cast<int>(index);
  }
  return -1;
}

void CCommandBar::ShowMnemonics(bool show) const
{
  // Underlines stay hidden until the keyboard is used, unless the user wants them always.
  BOOL alwaysShown = FALSE;
  SystemParametersInfoW(SPI_GETKEYBOARDCUES, 0, &alwaysShown, 0);
  Bar().SetDrawTextFlags(DT_HIDEPREFIX, show || alwaysShown ? 0 : DT_HIDEPREFIX);
  InvalidateRect(hwnd_, nullptr, TRUE);
}

void CCommandBar::EnterKeyboardMode(int hotIndex)
{
  if (ButtonCount() == 0) return;
  keyboardMode_ = true;
  Bar().SetHotItem(hotIndex);
  ShowMnemonics(true);
}

void CCommandBar::LeaveKeyboardMode()
{
  if (!keyboardMode_) return;
  keyboardMode_ = false;
  Bar().SetHotItem(-1);
  ShowMnemonics(false);
}

void CCommandBar::PostOpen(int index, bool selectFirstItem)
{
  Post(OpenMenuMessage(), static_cast<WPARAM>(index), selectFirstItem ? 1 : 0);
}

bool CCommandBar::PreTranslateMessage(MSG& message)
{
  // Keyboard mode ends when the user turns to another window.
  if (keyboardMode_ && GetActiveWindow() != frame_) LeaveKeyboardMode();
  if (!IsFrameMessage(message.hwnd)) return false;
  const WPARAM key = message.wParam;
  switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (key == VK_MENU) {
        if ((message.lParam & KF_REPEAT << 16) == 0) altAlone_ = true;
        return keyboardMode_;
      }
      altAlone_ = false;
      if (key == VK_F10 && GetKeyState(VK_SHIFT) >= 0) {
        if (keyboardMode_) {
          LeaveKeyboardMode();
        } else {
          EnterKeyboardMode(0);
        }
        return true;
      }
      return keyboardMode_ && OnKeyboardModeKey(message);
    case WM_KEYUP:
    case WM_SYSKEYUP:
      if (key == VK_MENU && std::exchange(altAlone_, false)) {
        if (keyboardMode_) {
          LeaveKeyboardMode();
        } else {
          EnterKeyboardMode(0);
        }
        return true;  // the frame would start its own menu mode
      }
      return keyboardMode_ || key == VK_F10;
    case WM_SYSCHAR:
    case WM_CHAR: {
      if (message.message == WM_CHAR && !keyboardMode_) return false;
      const int index = MnemonicIndex(key);
      if (index >= 0) {
        PostOpen(index, true);
        return true;
      }
      return keyboardMode_;  // in keyboard mode every key belongs to the bar
    }
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN: LeaveKeyboardMode(); return false;
    default: return false;
  }
}

bool CCommandBar::OnKeyboardModeKey(MSG& message)
{
  const int count = ButtonCount();
  const int hot = HotIndex() < 0 ? 0 : HotIndex();
  switch (message.wParam) {
    case VK_LEFT: Bar().SetHotItem((hot + count - 1) % count); break;
    case VK_RIGHT: Bar().SetHotItem((hot + 1) % count); break;
    case VK_DOWN:
    case VK_UP:
    case VK_RETURN: PostOpen(hot, true); break;
    case VK_ESCAPE: LeaveKeyboardMode(); break;
    // Letters become characters, which choose by mnemonic.
    default: TranslateMessage(&message); break;
  }
  return true;
}

void CCommandBar::OpenMenu(int index, bool selectFirstItem)
{
  if (openIndex_ >= 0 || index < 0 || index >= ButtonCount() || frame_ == nullptr) return;
  LeaveKeyboardMode();
  CCommandBar* const outer = std::exchange(trackingBar, this);
  const CHook hook(SetWindowsHookExW(WH_MSGFILTER, MenuFilterHook, nullptr, GetCurrentThreadId()));
  const CToolBarCtrl bar = Bar();
  int next = index;
  bool selectFirst = selectFirstItem;
  int last = index;
  UINT command = 0;
  backToBar_ = false;
  while (next >= 0) {
    openIndex_ = last = next;
    nextIndex_ = -1;
    selectedMenu_ = nullptr;
    selectedOpensSubmenu_ = false;
    const HMENU popup = GetSubMenu(menu_.Get(), openIndex_);
    if (popup == nullptr) break;
    RECT button = bar.ItemRect(openIndex_);
    MapWindowPoints(hwnd_, nullptr, reinterpret_cast<POINT*>(&button), 2);
    bar.Press(static_cast<UINT>(openIndex_), true);
    // The menu loop takes this key first and selects the first item.
    if (selectFirst) Post(WM_KEYDOWN, VK_DOWN, 0);
    TPMPARAMS exclude{sizeof exclude, button};
    command = static_cast<UINT>(TrackPopupMenuEx(
        popup, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL | TPM_LEFTBUTTON | TPM_RETURNCMD,
        button.left, button.bottom, hwnd_, &exclude));
    bar.Press(static_cast<UINT>(openIndex_), false);
    next = command == 0 ? nextIndex_ : -1;
    selectFirst = nextByKey_;
  }
  openIndex_ = -1;
  trackingBar = outer;
  if (command != 0) {
    PostMessageW(frame_, WM_COMMAND, MAKEWPARAM(command, 0), 0);
  } else if (backToBar_) {
    EnterKeyboardMode(last);
  }
}

LRESULT CALLBACK CCommandBar::MenuFilterHook(int code, WPARAM wParam, LPARAM lParam)
{
  CCommandBar* const bar = trackingBar;
  if (code == MSGF_MENU && bar != nullptr && bar->openIndex_ >= 0 &&
      bar->OnMenuLoopMessage(*reinterpret_cast<const MSG*>(lParam))) {
    return TRUE;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool CCommandBar::OnMenuLoopMessage(const MSG& message)
{
  switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (message.wParam == VK_LEFT && OpenPopupLevels() <= 1)
        return SwitchTo(openIndex_ - 1, true);
      if (message.wParam == VK_RIGHT && !SelectionOpensSubmenu()) {
        return SwitchTo(openIndex_ + 1, true);
      }
      if (message.wParam == VK_ESCAPE && OpenPopupLevels() <= 1) backToBar_ = true;
      return false;
    case WM_SYSCHAR: {
      // Alt+letter of another popup switches to it, as on a menu bar.
      const int index = MnemonicIndex(message.wParam);
      return index >= 0 && index != openIndex_ && SwitchTo(index, true);
    }
    case WM_MOUSEMOVE: {
      const int index = HitTest(message.pt);
      return index >= 0 && index != openIndex_ && SwitchTo(index, false);
    }
    case WM_LBUTTONDOWN:
      // A click on the open popup's own button closes it (and is not a new click).
      if (HitTest(message.pt) != openIndex_) return false;
      EndMenu();
      return true;
    default: return false;
  }
}

bool CCommandBar::SwitchTo(int index, bool byKey)
{
  const int count = ButtonCount();
  nextIndex_ = (index + count) % count;
  nextByKey_ = byKey;
  EndMenu();
  return true;
}

bool CCommandBar::SelectionOpensSubmenu() const
{
  // With only the first level open, a selection recorded in a submenu is out of date: the
  // submenu was closed and its item in the first level is selected again.
  if (OpenPopupLevels() <= 1 && selectedMenu_ != nullptr &&
      selectedMenu_ != GetSubMenu(menu_.Get(), openIndex_)) {
    return true;
  }
  return selectedOpensSubmenu_;
}

int CCommandBar::HitTest(POINT screenPoint) const
{
  ScreenToClient(hwnd_, &screenPoint);
  RECT client{};
  GetClientRect(hwnd_, &client);
  return PtInRect(&client, screenPoint) ? Bar().HitTest(screenPoint) : -1;
}

bool CCommandBar::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  if (message == OpenMenuMessage()) {
    OpenMenu(static_cast<int>(wParam), lParam != 0);
    result = 0;
    return true;
  }
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
      POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
      const int index = Bar().HitTest(point);
      if (index < 0) break;
      OpenMenu(index, false);
      result = 0;
      return true;
    }
    case WM_MENUSELECT:
      if (HIWORD(wParam) != 0xFFFF || lParam != 0) {
        selectedMenu_ = reinterpret_cast<HMENU>(lParam);
        selectedOpensSubmenu_ = (HIWORD(wParam) & MF_POPUP) != 0;
      }
      result = SendMessageW(frame_, message, wParam, lParam);
      return true;
    case WM_MEASUREITEM:
      result = TRUE;
      if (images_.Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam))) return true;
      break;
    case WM_DRAWITEM:
      result = TRUE;
      if (images_.Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))) return true;
      break;
    // The popups' other notifications are the frame's, as if the menu were its own.
    case WM_INITMENUPOPUP:
    case WM_UNINITMENUPOPUP:
    case WM_ENTERMENULOOP:
    case WM_EXITMENULOOP:
    case WM_ENTERIDLE:
    case WM_MENUCHAR: result = SendMessageW(frame_, message, wParam, lParam); return true;
    default: break;
  }
  return CCustomWindow::HandleMessage(message, wParam, lParam, result);
}
