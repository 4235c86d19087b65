#include "app/about_dlg_win.h"

#include <vector>

#include "app/about_text.h"
#include "crypto/library_version.h"
#include "res/resource.h"
#include "system/wide_text_win.h"

namespace {

// The product version of the program's version resource, as its two 32-bit words.
bool ReadProductVersion(uint32_t* mostSignificant, uint32_t* leastSignificant)
{
  const HRSRC resource =
      FindResourceW(ResourceModule(), MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16));
  if (resource == nullptr) return false;
  const HGLOBAL loaded = LoadResource(ResourceModule(), resource);
  const void* data = loaded == nullptr ? nullptr : LockResource(loaded);
  if (data == nullptr) return false;
  // The version functions read from a copy they may write into.
  const auto* bytes = static_cast<const char*>(data);
  std::vector<char> copy(bytes, bytes + SizeofResource(ResourceModule(), resource));
  void* fixed = nullptr;
  UINT length = 0;
  if (!VerQueryValueW(copy.data(), L"\\", &fixed, &length) || length < sizeof(VS_FIXEDFILEINFO)) {
    return false;
  }
  const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(fixed);
  *mostSignificant = info.dwProductVersionMS;
  *leastSignificant = info.dwProductVersionLS;
  return true;
}

}  // namespace

CAboutDlg::CAboutDlg() : CDialog(IDD_ABOUT) {}

bool CAboutDlg::OnInitDialog(HWND)
{
  uint32_t mostSignificant = 0;
  uint32_t leastSignificant = 0;
  if (ReadProductVersion(&mostSignificant, &leastSignificant)) {
    SetDlgItemTextW(hwnd_, IDC_ABOUT_VERSION,
                    Wide(AboutVersionText(mostSignificant, leastSignificant)));
  }
  SetDlgItemTextW(hwnd_, IDC_ABOUT_CRYPTO_LIBRARY,
                  Wide(AboutCryptoLibraryText(CryptoLibraryVersion())));
  CenterWindow();
  return true;
}
