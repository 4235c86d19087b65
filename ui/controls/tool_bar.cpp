#include "ui/controls/tool_bar.h"

#include <algorithm>
#include <vector>

CToolBarCtrl CToolBarCtrl::Create(HWND parent, UINT id, DWORD style, DWORD extendedStyle)
{
  const HWND window = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", style, 0, 0, 0, 0, parent,
                                      reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                      ResourceModule(), nullptr);
  const CToolBarCtrl toolBar(window);
  if (window == nullptr) return toolBar;
  toolBar.Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  if (extendedStyle != 0) toolBar.Send(TB_SETEXTENDEDSTYLE, 0, static_cast<LPARAM>(extendedStyle));
  return toolBar;
}

void CToolBarCtrl::SetImageList(HIMAGELIST images) const
{
  Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images));
}

void CToolBarCtrl::SetBitmapSize(SIZE size) const
{
  Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(size.cx, size.cy));
}

void CToolBarCtrl::SetButtonSize(SIZE size) const
{
  Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(size.cx, size.cy));
}

int CToolBarCtrl::AddTexts(const std::wstring& separatedList) const
{
  if (separatedList.empty()) return -1;
  // TB_ADDSTRING takes the texts NUL-separated and ending with a second NUL.
  std::wstring list = separatedList.substr(1);
  std::replace(list.begin(), list.end(), separatedList[0], L'\0');
  list.push_back(L'\0');
  list.push_back(L'\0');
  return static_cast<int>(Send(TB_ADDSTRINGW, 0, reinterpret_cast<LPARAM>(list.c_str())));
}

bool CToolBarCtrl::AddButtons(std::span<const TBBUTTON> buttons) const
{
  return Send(TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())) != 0;
}

void CToolBarCtrl::AutoSize() const
{
  Send(TB_AUTOSIZE);
}

int CToolBarCtrl::ButtonCount() const
{
  return static_cast<int>(Send(TB_BUTTONCOUNT));
}

UINT CToolBarCtrl::CommandAt(int index) const
{
  TBBUTTON button{};
  if (Send(TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button)) == 0) {
    return 0;
  }
  return (button.fsStyle & BTNS_SEP) != 0 ? 0 : static_cast<UINT>(button.idCommand);
}

bool CToolBarCtrl::IsSeparator(int index) const
{
  TBBUTTON button{};
  return Send(TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button)) != 0 &&
         (button.fsStyle & BTNS_SEP) != 0;
}

std::wstring CToolBarCtrl::ButtonText(UINT command) const
{
  const auto length = Send(TB_GETBUTTONTEXTW, command, 0);
  if (length <= 0) return {};
  std::vector<wchar_t> text(static_cast<size_t>(length) + 1, L'\0');
  Send(TB_GETBUTTONTEXTW, command, reinterpret_cast<LPARAM>(text.data()));
  return text.data();
}

RECT CToolBarCtrl::ItemRect(int index) const
{
  RECT rect{};
  Send(TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
  return rect;
}

int CToolBarCtrl::HitTest(POINT clientPoint) const
{
  // TB_HITTEST answers a separator or the space beside the buttons with negative numbers.
  const auto index = static_cast<int>(Send(TB_HITTEST, 0, reinterpret_cast<LPARAM>(&clientPoint)));
  return index >= 0 && index < ButtonCount() && !IsSeparator(index) ? index : -1;
}

SIZE CToolBarCtrl::IdealSize() const
{
  SIZE size{};
  Send(TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
  return size;
}

int CToolBarCtrl::HotItem() const
{
  return static_cast<int>(Send(TB_GETHOTITEM));
}

void CToolBarCtrl::SetHotItem(int index) const
{
  Send(TB_SETHOTITEM, static_cast<WPARAM>(index));
}

bool CToolBarCtrl::IsEnabled(UINT command) const
{
  return Send(TB_ISBUTTONENABLED, command) != 0;
}

void CToolBarCtrl::Enable(UINT command, bool enabled) const
{
  Send(TB_ENABLEBUTTON, command, MAKELPARAM(enabled ? TRUE : FALSE, 0));
}

bool CToolBarCtrl::IsPressed(UINT command) const
{
  return Send(TB_ISBUTTONPRESSED, command) != 0;
}

void CToolBarCtrl::Press(UINT command, bool pressed) const
{
  Send(TB_PRESSBUTTON, command, MAKELPARAM(pressed ? TRUE : FALSE, 0));
}

void CToolBarCtrl::SetDrawTextFlags(DWORD mask, DWORD flags) const
{
  Send(TB_SETDRAWTEXTFLAGS, mask, static_cast<LPARAM>(flags));
}
