// The screenshot program of the new image wizard: each collecting page and the summary,
// filled with sample choices (scripts/screenshot.sh --program wizard_scenes SCENE OUT.png).
#include <windows.h>

#include <array>

#include "res/resource.h"
#include "tools/screenshot/screenshot_tool.h"
#include "wizard/new_image_wizard_win.h"

namespace {

// The wizard opened on page `index`; `fill` puts sample texts into that page.
HWND Wizard(int index, void (*fill)(HWND page) = nullptr)
{
  static CNewVirtualDiskImageWizard wizard;
  NewImageRequest& request = wizard.Request();
  request.capacity = 8ull << 30;
  request.fixedSize = 1;
  request.algorithm = 0;
  request.keyBits = 256;
  request.path = u"C:\\Users\\Anna\\Documents\\Work disk.qvi";
  wizard.SetStartPage(static_cast<UINT>(index));
  const HWND sheet = wizard.Create(nullptr);
  if (sheet != nullptr && fill != nullptr) fill(wizard.ActivePageWindow());
  return sheet;
}

HWND Welcome()
{
  return Wizard(0);
}

HWND Capacity()
{
  return Wizard(1);
}

HWND Encryption()
{
  return Wizard(2);
}

HWND Password()
{
  return Wizard(3, [](HWND page) {
    SetDlgItemTextW(page, IDC_PASSWORD, L"sample secret");
    SetDlgItemTextW(page, IDC_CONFIRM_PASSWORD, L"sample secret");
  });
}

HWND Location()
{
  return Wizard(4, [](HWND page) {
    SetDlgItemTextW(page, IDC_WIZARD_IMAGE_PATH, L"C:\\Users\\Anna\\Documents\\Work disk.qvi");
  });
}

HWND Completion()
{
  return Wizard(CNewVirtualDiskImageWizard::kSummaryPageIndex);
}

constexpr std::array<ScreenshotScene, 6> kScenes = {{
    {L"wizard-welcome", Welcome},
    {L"wizard-capacity", Capacity},
    {L"wizard-encryption", Encryption},
    {L"wizard-password", Password},
    {L"wizard-location", Location},
    {L"wizard-completion", Completion},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
