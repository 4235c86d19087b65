#include "ui/property_sheet.h"

#include <cwchar>
#include <utility>

#include "ui/handler_failure.h"
#include "ui/handles.h"
#include "ui/strings.h"

namespace {

// The sheet whose PropertySheetW call is running on this thread and that is not attached
// yet. The first dialog window created on the thread during that call is the sheet.
thread_local CPropertySheet* creatingSheet = nullptr;

constexpr UINT_PTR kSheetSubclassId = 1;

}  // namespace

CPropertyPage::CPropertyPage(UINT templateId) : CDialogBase(templateId)
{
  description_.dwSize = sizeof description_;
  description_.dwFlags = PSP_DEFAULT;
  description_.hInstance = ResourceModule();
  description_.pszTemplate = MAKEINTRESOURCEW(templateId);
  description_.pfnDlgProc = PageProc;
  description_.lParam = reinterpret_cast<LPARAM>(this);
}

void CPropertyPage::SetTitle(UINT titleId)
{
  title_ = LoadResourceString(titleId);
  description_.pszTitle = title_.c_str();
  description_.dwFlags |= PSP_USETITLE;
}

void CPropertyPage::SetHeader(UINT titleId, UINT subtitleId)
{
  headerTitle_ = LoadResourceString(titleId);
  headerSubtitle_ = LoadResourceString(subtitleId);
  description_.pszHeaderTitle = headerTitle_.c_str();
  description_.pszHeaderSubTitle = headerSubtitle_.c_str();
  description_.dwFlags |= PSP_USEHEADERTITLE | PSP_USEHEADERSUBTITLE;
  description_.dwFlags &= ~static_cast<DWORD>(PSP_HIDEHEADER);
}

void CPropertyPage::SetExterior()
{
  description_.dwFlags |= PSP_HIDEHEADER;
  description_.dwFlags &= ~static_cast<DWORD>(PSP_USEHEADERTITLE | PSP_USEHEADERSUBTITLE);
}

void CPropertyPage::SetHasHelp(bool hasHelp)
{
  if (hasHelp) {
    description_.dwFlags |= PSP_HASHELP;
  } else {
    description_.dwFlags &= ~static_cast<DWORD>(PSP_HASHELP);
  }
}

void CPropertyPage::SetWizardButtons(DWORD buttons) const
{
  // Posted, as the sheet expects: it applies the buttons after the current notification.
  PostMessageW(SheetWindow(), PSM_SETWIZBUTTONS, 0, static_cast<LPARAM>(buttons));
}

void CPropertyPage::SetModified(bool modified) const
{
  SendMessageW(SheetWindow(), modified ? PSM_CHANGED : PSM_UNCHANGED,
               reinterpret_cast<WPARAM>(hwnd_), 0);
}

bool CPropertyPage::OnNotify(NMHDR& header, LRESULT& result)
{
  if (header.hwndFrom != SheetWindow()) return false;
  switch (header.code) {
    case PSN_SETACTIVE: result = OnSetActive(); return true;
    case PSN_KILLACTIVE: result = OnKillActive() ? FALSE : TRUE; return true;
    case PSN_APPLY: result = OnApply(); return true;
    case PSN_RESET: OnReset(); return true;
    case PSN_QUERYCANCEL: result = OnQueryCancel() ? FALSE : TRUE; return true;
    case PSN_WIZBACK: result = OnWizardBack(); return true;
    case PSN_WIZNEXT: result = OnWizardNext(); return true;
    case PSN_WIZFINISH: result = OnWizardFinish() ? FALSE : TRUE; return true;
    case PSN_HELP: OnHelp(); return true;
    default: return false;
  }
}

INT_PTR CALLBACK CPropertyPage::PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  // The sheet passes its copy of the page's description; it carries the object.
  CPropertyPage* const starting =
      message == WM_INITDIALOG
          ? reinterpret_cast<CPropertyPage*>(reinterpret_cast<PROPSHEETPAGEW*>(lParam)->lParam)
          : nullptr;
  return Route(window, message, wParam, lParam, starting);
}

CPropertySheet::CPropertySheet(UINT captionId, DWORD flags)
    : caption_(LoadResourceString(captionId))
{
  header_.dwSize = sizeof header_;
  header_.dwFlags = flags | PSH_PROPSHEETPAGE | PSH_USECALLBACK;
  header_.hInstance = ResourceModule();
  header_.pszCaption = caption_.c_str();
  header_.pfnCallback = SheetCallback;
}

CPropertySheet::~CPropertySheet()
{
  // Without its subclass the window is the sheet's own; the base destroys it.
  if (hwnd_ != nullptr) RemoveWindowSubclass(hwnd_, SubclassProc, kSheetSubclassId);
}

void CPropertySheet::AddPage(CPropertyPage& page)
{
  pages_.push_back(&page);
}

void CPropertySheet::SetStartPage(UINT index)
{
  header_.nStartPage = index;
}

void CPropertySheet::SetWizardBitmaps(UINT watermarkId, UINT headerId)
{
  header_.pszbmWatermark = MAKEINTRESOURCEW(watermarkId);
  // The header bitmap is loaded here as the sheet would load it from its id, and handed over
  // as a bitmap: Wine's sheet paints an interior page's header bitmap only when it is given
  // one, while Windows paints both alike.
  headerBitmap_.Reset(CreateMappedBitmap(ResourceModule(), headerId, 0, nullptr, 0));
  header_.hbmHeader = headerBitmap_.Get();
  header_.dwFlags |= PSH_WATERMARK | PSH_HEADER | PSH_USEHBMHEADER;
}

INT_PTR CPropertySheet::Run(HWND owner, DWORD extraFlags)
{
  descriptions_.clear();
  for (const CPropertyPage* page : pages_) descriptions_.push_back(page->Description());
  PROPSHEETHEADERW header = header_;
  header.dwFlags |= extraFlags;
  header.hwndParent = owner;
  header.nPages = static_cast<UINT>(descriptions_.size());
  header.ppsp = descriptions_.data();
  // The sheet is attached as it is created (a CBT hook sees it before its first message),
  // so that its handlers see its whole life, its first layout included.
  CPropertySheet* const outer = std::exchange(creatingSheet, this);
  const CHook hook(SetWindowsHookExW(WH_CBT, CreationHook, nullptr, GetCurrentThreadId()));
  const INT_PTR result = PropertySheetW(&header);
  creatingSheet = outer;
  return result;
}

INT_PTR CPropertySheet::DoModal(HWND owner)
{
  return Run(owner, 0);
}

HWND CPropertySheet::Create(HWND owner)
{
  Run(owner, PSH_MODELESS);
  if (hwnd_ != nullptr) JoinMessageLoop(*this);
  return hwnd_;
}

bool CPropertySheet::SetActivePage(int index) const
{
  return SendMessageW(hwnd_, PSM_SETCURSEL, static_cast<WPARAM>(index), 0) != FALSE;
}

int CPropertySheet::ActivePageIndex() const
{
  return static_cast<int>(
      SendMessageW(hwnd_, PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(ActivePageWindow()), 0));
}

HWND CPropertySheet::ActivePageWindow() const
{
  return reinterpret_cast<HWND>(SendMessageW(hwnd_, PSM_GETCURRENTPAGEHWND, 0, 0));
}

void CPropertySheet::PressButton(int button) const
{
  PostMessageW(hwnd_, PSM_PRESSBUTTON, static_cast<WPARAM>(button), 0);
}

void CPropertySheet::SetWizardButtons(DWORD buttons) const
{
  PostMessageW(hwnd_, PSM_SETWIZBUTTONS, 0, static_cast<LPARAM>(buttons));
}

bool CPropertySheet::PreTranslateMessage(MSG& message)
{
  if (hwnd_ == nullptr) return false;
  const bool consumed =
      SendMessageW(hwnd_, PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)) != FALSE;
  // A modeless sheet that OK, Cancel or Finish has ended has no current page any more.
  if (ActivePageWindow() == nullptr) DestroyWindow(hwnd_);
  return consumed;
}

LRESULT CPropertySheet::DefaultProcessing(UINT message, WPARAM wParam, LPARAM lParam)
{
  return DefSubclassProc(hwnd_, message, wParam, lParam);
}

LRESULT CALLBACK CPropertySheet::CreationHook(int code, WPARAM wParam, LPARAM lParam)
{
  const auto window = reinterpret_cast<HWND>(wParam);
  wchar_t className[16] = {};
  if (code == HCBT_CREATEWND && creatingSheet != nullptr && GetClassNameW(window, className, 16) &&
      wcscmp(className, L"#32770") == 0) {
    CPropertySheet* const self = std::exchange(creatingSheet, nullptr);
    self->Attach(window);
    SetWindowSubclass(window, SubclassProc, kSheetSubclassId, reinterpret_cast<DWORD_PTR>(self));
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

int CALLBACK CPropertySheet::SheetCallback(HWND window, UINT message, LPARAM)
{
  if (message != PSCB_INITIALIZED) return 0;
  auto* const self = static_cast<CPropertySheet*>(FromHandle(window));
  if (self == nullptr) return 0;
  // Called from the sheet's WM_INITDIALOG, behind the same barrier as its messages.
  RunBehindBarrier(window, WM_INITDIALOG, [self] {
    self->OnInitialized();
    return true;
  });
  return 0;
}

LRESULT CALLBACK CPropertySheet::SubclassProc(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam, UINT_PTR, DWORD_PTR object)
{
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, SubclassProc, kSheetSubclassId);
  LRESULT result = 0;
  if (reinterpret_cast<CPropertySheet*>(object)->Deliver(message, wParam, lParam, result)) {
    return result;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}
