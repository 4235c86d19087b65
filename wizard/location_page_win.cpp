#include "wizard/location_page_win.h"

#include "res/resource.h"
#include "services/window_ref_win.h"
#include "wizard/image_location.h"

CNewVirtualDiskImageWizard::CLocationPage::CLocationPage(CNewVirtualDiskImageWizard& wizard)
    : CInteriorPage(wizard, IDD_WIZARD_LOCATION, IDS_LOCATION_TITLE, IDS_LOCATION_SUBTITLE)
{
}

bool CNewVirtualDiskImageWizard::CLocationPage::OnCommand(UINT id, UINT code, HWND)
{
  if (id != IDC_BROWSE || code != BN_CLICKED) return false;
  Browse();
  return true;
}

int CNewVirtualDiskImageWizard::CLocationPage::OnWizardNext()
{
  Request().path = ReadField(IDC_WIZARD_IMAGE_PATH);
  const LocationCheck check = CheckImageLocation(Request().path);
  if (check.accept) return 0;
  if (check.prompt) ShowPrompt(hwnd_, *check.prompt);
  if (check.focusPath) FocusField(IDC_WIZARD_IMAGE_PATH);
  return -1;
}

void CNewVirtualDiskImageWizard::CLocationPage::Browse()
{
  std::u16string& path = Request().path;
  path = ReadField(IDC_WIZARD_IMAGE_PATH);
  const auto choice = ChooseFileToSave(NewImageSaveRequest(ToWindowRef(hwnd_), path));
  if (!choice) return;
  path = ChosenImagePath(*choice);
  PutField(IDC_WIZARD_IMAGE_PATH, path);
}
