#include "ui/controls/status_bar.h"

#include <vector>

namespace {

std::wstring TextOf(const CWindow& bar, int pane)
{
  const auto length = LOWORD(bar.Send(SB_GETTEXTLENGTHW, static_cast<WPARAM>(pane)));
  std::vector<wchar_t> text(static_cast<size_t>(length) + 1, L'\0');
  bar.Send(SB_GETTEXTW, static_cast<WPARAM>(pane), reinterpret_cast<LPARAM>(text.data()));
  return text.data();
}

}  // namespace

CStatusBarCtrl CStatusBarCtrl::Create(HWND parent, UINT id, const std::wstring& text, bool sizeGrip)
{
  DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | CCS_BOTTOM;
  if (sizeGrip) style |= SBARS_SIZEGRIP;
  return CStatusBarCtrl(CreateWindowExW(0, STATUSCLASSNAMEW, text.c_str(), style, 0, 0, 0, 0,
                                        parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                        ResourceModule(), nullptr));
}

std::wstring CStatusBarCtrl::PaneText(int pane) const
{
  return TextOf(*this, pane);
}

bool CStatusBarCtrl::SetPaneText(int pane, const std::wstring& text) const
{
  return Send(SB_SETTEXTW, static_cast<WPARAM>(pane), reinterpret_cast<LPARAM>(text.c_str())) != 0;
}

bool CStatusBarCtrl::IsSimple() const
{
  return Send(SB_ISSIMPLE) != 0;
}

void CStatusBarCtrl::SetSimple(bool simple) const
{
  Send(SB_SIMPLE, simple ? TRUE : FALSE);
}

std::wstring CStatusBarCtrl::SimpleText() const
{
  // In simple mode the control answers a query for its first pane with the simple text.
  return IsSimple() ? TextOf(*this, 0) : std::wstring();
}

bool CStatusBarCtrl::SetSimpleText(const std::wstring& text) const
{
  return Send(SB_SETTEXTW, SB_SIMPLEID | SBT_NOBORDERS, reinterpret_cast<LPARAM>(text.c_str())) !=
         0;
}
