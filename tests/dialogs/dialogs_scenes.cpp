// The screenshot program of the dialogs: each dialog filled with sample data.
#include <windows.h>

#include <array>

#include "dialogs/mount_dialog_win.h"
#include "res/resource.h"
#include "tools/screenshot/screenshot_tool.h"

namespace {

// Drives A:, C: and D: in use, so that the list starts at B: and skips C: and D:.
DriveLetterFacts SampleDriveFacts()
{
  DriveLetterFacts facts;
  facts.lettersInUse = 0b1101;
  return facts;
}

HWND MountDialog()
{
  static CMountDlg dialog(u"C:\\Users\\ann\\Documents\\work.qvi", SampleDriveFacts);
  const HWND window = dialog.Create(nullptr);
  if (window == nullptr) return nullptr;
  dialog.SetItemText(IDC_PASSWORD, L"sample password");
  ShowWindow(window, SW_SHOW);
  return window;
}

constexpr std::array<ScreenshotScene, 1> kScenes = {{
    {L"mount-dialog", MountDialog},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
