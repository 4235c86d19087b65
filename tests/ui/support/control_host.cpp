#include "support/control_host.h"

CControlHost::CControlHost()
    : window_(CreateWindowExW(0, L"STATIC", L"control host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                              400, 300, nullptr, nullptr, nullptr, nullptr))
{
}

HWND CControlHost::Create(const wchar_t* className, DWORD style, const RECT& rect, int id) const
{
  return CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, rect.left, rect.top,
                         rect.right - rect.left, rect.bottom - rect.top, window_.Get(),
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}
