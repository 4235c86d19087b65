#include "ui/controls/rebar.h"

CReBarCtrl CReBarCtrl::Create(HWND parent, UINT id, DWORD style)
{
  const HWND window = CreateWindowExW(WS_EX_TOOLWINDOW, REBARCLASSNAMEW, L"", style, 0, 0, 0, 0,
                                      parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                      ResourceModule(), nullptr);
  const CReBarCtrl reBar(window);
  if (window != nullptr) {
    REBARINFO info{};
    info.cbSize = sizeof info;
    reBar.Send(RB_SETBARINFO, 0, reinterpret_cast<LPARAM>(&info));
  }
  return reBar;
}

bool CReBarCtrl::AddBand(const Band& band) const
{
  RECT childRect{};
  GetWindowRect(band.child, &childRect);
  // A toolbar's own idea of its size (all buttons shown) is more reliable than the size of a
  // window not yet laid out.
  SIZE ideal{childRect.right - childRect.left, childRect.bottom - childRect.top};
  if (SendMessageW(band.child, TB_BUTTONCOUNT, 0, 0) > 0) {
    SendMessageW(band.child, TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&ideal));
  }

  REBARBANDINFOW info{};
  info.cbSize = sizeof info;
  info.fMask =
      RBBIM_CHILD | RBBIM_CHILDSIZE | RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE | RBBIM_IDEALSIZE;
  info.fStyle = RBBS_CHILDEDGE | RBBS_GRIPPERALWAYS;
  if (band.newRow) info.fStyle |= RBBS_BREAK;
  if (band.chevron) info.fStyle |= RBBS_USECHEVRON;
  info.hwndChild = band.child;
  info.wID = band.id;
  info.cxMinChild = 0;
  info.cyMinChild = static_cast<UINT>(ideal.cy);
  info.cx = static_cast<UINT>(ideal.cx);
  info.cxIdeal = static_cast<UINT>(ideal.cx);
  return Send(RB_INSERTBANDW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&info)) != 0;
}

int CReBarCtrl::BandCount() const
{
  return static_cast<int>(Send(RB_GETBANDCOUNT));
}

int CReBarCtrl::IndexOf(UINT id) const
{
  return static_cast<int>(Send(RB_IDTOINDEX, id));
}

UINT CReBarCtrl::BandId(int index) const
{
  REBARBANDINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = RBBIM_ID;
  if (Send(RB_GETBANDINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info)) == 0) {
    return 0;
  }
  return info.wID;
}

HWND CReBarCtrl::BandChild(int index) const
{
  REBARBANDINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = RBBIM_CHILD;
  if (Send(RB_GETBANDINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info)) == 0) {
    return nullptr;
  }
  return info.hwndChild;
}

int CReBarCtrl::BarHeight() const
{
  return static_cast<int>(Send(RB_GETBARHEIGHT));
}
