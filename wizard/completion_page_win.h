// The wizard's last page: an exterior page with the summary of the new image and the choice
// to mount it at once. Only Finish is enabled; there is no way back to the choices.
#pragma once

#include "wizard/new_image_wizard_win.h"

class CNewVirtualDiskImageWizard::CCompletionPage final : public CPropertyPage {
 public:
  explicit CCompletionPage(CNewVirtualDiskImageWizard& wizard);

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  int OnSetActive() override;
  bool OnWizardFinish() override;

 private:
  CNewVirtualDiskImageWizard& wizard_;
};
