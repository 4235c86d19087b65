// The wizard's encryption page: the cipher (AES, BLOWFISH, CAST) and its key length on a
// trackbar whose range follows the cipher; the length shown is carried over when the cipher
// changes.
#pragma once

#include "wizard/interior_page_win.h"
#include "wizard/key_length.h"

class CNewVirtualDiskImageWizard::CEncryptionPage final : public CInteriorPage {
 public:
  explicit CEncryptionPage(CNewVirtualDiskImageWizard& wizard);

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  int OnWizardNext() override;

 private:
  // Applies the selected cipher's limits to the trackbar and the labels.
  void ApplyAlgorithm();
  void ShowKeyLength() const;

  CKeyLengthChoice choice_;
};
