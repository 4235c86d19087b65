// The screenshot program for the test template: the harness dialog filled with sample data,
// the test pages in a tabbed sheet and in a Wizard97 wizard, and the sample frame.
#include <windows.h>

#include <commctrl.h>

#include <array>
#include <string>
#include <vector>

#include "support/sample_frame.h"
#include "support/test_dialogs.h"
#include "support/ui_harness.h"
#include "tools/screenshot/screenshot_tool.h"

namespace {

HWND HarnessDialog()
{
  static CHarnessTestDlg dialog;
  dialog.name = L"Work disk";
  const HWND window = dialog.Create(nullptr);
  if (window == nullptr) return nullptr;
  dialog.SetItemCheck(IDC_REMEMBER, BST_CHECKED);
  SendDlgItemMessageW(window, IDC_PROGRESS, PBM_SETPOS, 60, 0);
  const HWND list = dialog.Item(IDC_LIST);
  LVITEMW selected{};
  selected.stateMask = LVIS_SELECTED;
  selected.state = LVIS_SELECTED;
  SendMessageW(list, LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&selected));
  ShowWindow(window, SW_SHOW);
  return window;
}

std::vector<std::string> sceneLog;
CLoggingPage first(IDD_PAGE_FIRST, sceneLog);
CLoggingPage second(IDD_PAGE_SECOND, sceneLog);

HWND TabbedSheet()
{
  static CPropertySheet sheet(IDS_SHEET, 0);
  first.SetTitle(IDS_PAGE_FIRST);
  second.SetTitle(IDS_PAGE_SECOND);
  sheet.AddPage(first);
  sheet.AddPage(second);
  return sheet.Create(nullptr);
}

HWND WizardInteriorPage()
{
  static CPropertySheet sheet(IDS_WIZARD, PSH_WIZARD97 | PSH_NOAPPLYNOW);
  first.isWizard = true;
  first.SetExterior();
  second.isWizard = true;
  second.SetHeader(IDS_HEADER_TITLE, IDS_HEADER_SUBTITLE);
  sheet.AddPage(first);
  sheet.AddPage(second);
  sheet.SetStartPage(1);
  return sheet.Create(nullptr);
}

// The sample frame with its command bar, toolbar, list and status bar; one row selected.
// The command bar watches the keyboard through the thread's loop, so a loop is made first.
HWND SampleFrame()
{
  static CMessageLoop loop;
  static CSampleFrame frame;
  const HWND window = frame.Create();
  if (window == nullptr) return nullptr;
  SelectListRow(frame.list, 1, true);
  return window;
}

constexpr std::array<ScreenshotScene, 4> kScenes = {{
    {L"harness-dialog", HarnessDialog},
    {L"tabbed-sheet", TabbedSheet},
    {L"wizard-interior-page", WizardInteriorPage},
    {L"sample-frame", SampleFrame},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
