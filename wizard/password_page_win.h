// The wizard's password page: the password and its confirmation, both masked. Next accepts
// any non-empty password that equals its confirmation exactly. The typed texts are wiped
// from the page and its boxes when they are no longer needed.
#pragma once

#include <string>

#include "wizard/interior_page_win.h"

class CNewVirtualDiskImageWizard::CPasswordPage final : public CInteriorPage {
 public:
  explicit CPasswordPage(CNewVirtualDiskImageWizard& wizard);
  ~CPasswordPage() override;

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  int OnWizardNext() override;
  void OnDestroy() override;

 private:
  std::u16string password_;
  std::u16string confirmation_;
};
