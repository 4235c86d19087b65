// The wizard's first page: an exterior page that greets the user; only Next is enabled.
#pragma once

#include "wizard/new_image_wizard_win.h"

class CNewVirtualDiskImageWizard::CWelcomePage final : public CPropertyPage {
 public:
  explicit CWelcomePage(CNewVirtualDiskImageWizard& wizard);

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  int OnSetActive() override;
};
