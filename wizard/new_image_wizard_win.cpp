#include "wizard/new_image_wizard_win.h"

#include <mutex>

#include "res/resource.h"
#include "wizard/capacity_page_win.h"
#include "wizard/completion_page_win.h"
#include "wizard/encryption_page_win.h"
#include "wizard/location_page_win.h"
#include "wizard/password_page_win.h"
#include "wizard/progress_page_win.h"
#include "wizard/welcome_page_win.h"

namespace {

// Wizard97 style with header and watermark and a Help button where a page asks for one; no
// Apply button and no context help. (The plain and lite wizard styles stay clear.)
constexpr DWORD kWizardStyle = PSH_WIZARD97 | PSH_HASHELP | PSH_NOAPPLYNOW | PSH_NOCONTEXTHELP;

// The two registered messages of the Wizard97 page framework, each registered once per
// process on first use.
UINT RegisteredMessage(const wchar_t* name, UINT& number)
{
  static std::mutex lock;
  const std::lock_guard<std::mutex> guard(lock);
  if (number == 0) number = RegisterWindowMessageW(name);
  return number;
}

UINT ExteriorTitleFontMessage()
{
  static UINT number = 0;
  return RegisteredMessage(L"GetExteriorPageTitleFont_531AF056-B8BE-4c4c-B786-AC608DF0DF12",
                           number);
}

UINT BulletFontMessage()
{
  static UINT number = 0;
  return RegisteredMessage(L"GetBulletFont_AD347D08-8F65-45ef-982E-6352E8218AD5", number);
}

// The sheet's message font at `points`, bold or not, in the face `face` (null: the message
// font's own face).
HFONT MakeFont(int points, bool bold, const wchar_t* face)
{
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW font = metrics.lfMessageFont;
  const HDC screen = GetDC(nullptr);
  font.lfHeight = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
  ReleaseDC(nullptr, screen);
  font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  if (face != nullptr) {
    font.lfCharSet = SYMBOL_CHARSET;
    lstrcpynW(font.lfFaceName, face, LF_FACESIZE);
  }
  return CreateFontIndirectW(&font);
}

}  // namespace

CNewVirtualDiskImageWizard::CNewVirtualDiskImageWizard(DriveFactsSource driveFacts)
    : CPropertySheet(IDS_WIZARD_CAPTION, kWizardStyle)
{
  SetWizardBitmaps(IDB_WIZARD_WATERMARK, IDB_WIZARD_HEADER);
  pages_.push_back(std::make_unique<CWelcomePage>(*this));
  pages_.push_back(std::make_unique<CCapacityPage>(*this));
  pages_.push_back(std::make_unique<CEncryptionPage>(*this));
  pages_.push_back(std::make_unique<CPasswordPage>(*this));
  pages_.push_back(std::make_unique<CLocationPage>(*this));
  pages_.push_back(std::make_unique<CProgressPage>(*this, driveFacts));
  pages_.push_back(std::make_unique<CCompletionPage>(*this));
  for (const auto& page : pages_) AddPage(*page);
}

CNewVirtualDiskImageWizard::~CNewVirtualDiskImageWizard() = default;

void CNewVirtualDiskImageWizard::JumpToSummary()
{
  if (hwnd_ == nullptr) {
    SetStartPage(kSummaryPageIndex);
  } else {
    SetActivePage(kSummaryPageIndex);
  }
}

void CNewVirtualDiskImageWizard::CloseAfterFailure()
{
  PressButton(PSBTN_CANCEL);
}

HFONT CNewVirtualDiskImageWizard::ExteriorTitleFontOf(HWND sheet)
{
  return reinterpret_cast<HFONT>(SendMessageW(sheet, ExteriorTitleFontMessage(), 0, 0));
}

HFONT CNewVirtualDiskImageWizard::BulletFontOf(HWND sheet)
{
  return reinterpret_cast<HFONT>(SendMessageW(sheet, BulletFontMessage(), 0, 0));
}

void CNewVirtualDiskImageWizard::OnInitialized()
{
  if (!titleFont_) titleFont_.Reset(MakeFont(12, true, nullptr));
  if (!bulletFont_) bulletFont_.Reset(MakeFont(8, false, L"Marlett"));
}

bool CNewVirtualDiskImageWizard::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam,
                                               LRESULT& result)
{
  if (message == WM_SIZE && !shown_) {
    CenterWindow();
    return false;
  }
  if (message == WM_SHOWWINDOW && wParam != FALSE) shown_ = true;
  if (message == WM_DESTROY) shown_ = false;
  if (message == ExteriorTitleFontMessage()) {
    result = reinterpret_cast<LRESULT>(titleFont_.Get());
    return true;
  }
  if (message == BulletFontMessage()) {
    result = reinterpret_cast<LRESULT>(bulletFont_.Get());
    return true;
  }
  return CPropertySheet::HandleMessage(message, wParam, lParam, result);
}
