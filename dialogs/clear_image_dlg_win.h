// The clear dialog: the image path and its password, under a permanent warning that a
// cleared image cannot be restored. The command then clears the image.
#pragma once

#include <string>

#include "dialogs/clear_image.h"
#include "dialogs/image_password_dlg_win.h"

class CClearVirtualDiskImageDlg final : public CImagePasswordDlg, public CClearImageInput {
 public:
  CClearVirtualDiskImageDlg();
  ~CClearVirtualDiskImageDlg() override;

  const std::u16string& Password() const { return password_; }

  // Runs the dialog; after OK its fields move into `answers` and its own copy is wiped.
  bool Ask(WindowRef owner, ClearImageAnswers& answers) override;

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  void OnOk() override;

 private:
  std::u16string password_;
};
