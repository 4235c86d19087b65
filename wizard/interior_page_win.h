// What the wizard's interior collecting pages (Capacity, Encryption, Password, Location)
// share: a header title and subtitle, Back and Next enabled on activation, and the sheet's
// Help button opening the help topic numbered like the page's template.
#pragma once

#include "wizard/new_image_wizard_win.h"

class CNewVirtualDiskImageWizard::CInteriorPage : public CPropertyPage {
 protected:
  CInteriorPage(CNewVirtualDiskImageWizard& wizard, UINT templateId, UINT titleId, UINT subtitleId);

  NewImageRequest& Request() { return wizard_.Request(); }

  int OnSetActive() override;
  void OnHelp() override;

  // Puts the system's exclamation icon into the icon control `id`.
  void SetExclamationIcon(int id) const;

 private:
  CNewVirtualDiskImageWizard& wizard_;
};
