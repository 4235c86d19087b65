#include "monitor/tray_icon_win.h"

#include <shellapi.h>

#include <algorithm>

#include "res/resource.h"
#include "ui/window.h"

namespace {

constexpr UINT kIconId = 1;

// Copies `text` into a fixed field, cut to fit with its terminator.
template <size_t N>
void CopyField(wchar_t (&field)[N], const std::wstring& text)
{
  const size_t length = std::min(text.size(), N - 1);
  std::copy_n(text.c_str(), length, field);
  field[length] = L'\0';
}

}  // namespace

CTrayIcon::CTrayIcon(HWND window, UINT callbackMessage)
    : window_(window),
      callbackMessage_(callbackMessage),
      icon_(static_cast<HICON>(LoadImageW(ResourceModule(), MAKEINTRESOURCEW(IDR_MAINFRAME),
                                          IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                          GetSystemMetrics(SM_CYSMICON), LR_SHARED)))
{
}

CTrayIcon::~CTrayIcon()
{
  Remove();
}

NOTIFYICONDATAW CTrayIcon::Data(UINT flags) const
{
  NOTIFYICONDATAW data{};
  data.cbSize = sizeof data;
  data.hWnd = window_;
  data.uID = kIconId;
  data.uFlags = flags;
  return data;
}

bool CTrayIcon::Add()
{
  NOTIFYICONDATAW data = Data(NIF_MESSAGE | NIF_ICON | NIF_TIP);
  data.uCallbackMessage = callbackMessage_;
  data.hIcon = icon_;
  CopyField(data.szTip, tip_);
  added_ = Shell_NotifyIconW(NIM_ADD, &data) != FALSE;
  if (added_ && !waitingText_.empty()) {
    ShowMessage(waitingTitle_, waitingText_);
    waitingText_.clear();
  }
  return added_;
}

void CTrayIcon::SetTip(const std::wstring& tip)
{
  tip_ = tip;
  if (!added_) return;
  NOTIFYICONDATAW data = Data(NIF_TIP);
  CopyField(data.szTip, tip_);
  Shell_NotifyIconW(NIM_MODIFY, &data);
}

void CTrayIcon::ShowMessage(const std::wstring& title, const std::wstring& text)
{
  if (!added_) {
    waitingTitle_ = title;
    waitingText_ = text;
    return;
  }
  NOTIFYICONDATAW data = Data(NIF_INFO);
  CopyField(data.szInfoTitle, title);
  CopyField(data.szInfo, text);
  data.dwInfoFlags = NIIF_WARNING;
  Shell_NotifyIconW(NIM_MODIFY, &data);
}

void CTrayIcon::Remove()
{
  if (!added_) return;
  NOTIFYICONDATAW data = Data(0);
  Shell_NotifyIconW(NIM_DELETE, &data);
  added_ = false;
}
