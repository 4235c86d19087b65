// The wizard's location page, the last before the image is created: the image file's path,
// typed or chosen with Browse. Next checks the path and prepares its folder.
#pragma once

#include "wizard/interior_page_win.h"

class CNewVirtualDiskImageWizard::CLocationPage final : public CInteriorPage {
 public:
  explicit CLocationPage(CNewVirtualDiskImageWizard& wizard);

 protected:
  bool OnCommand(UINT id, UINT code, HWND control) override;
  int OnWizardNext() override;

 private:
  void Browse();
};
