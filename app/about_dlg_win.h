// The About box: the program's name, its version from the version resource, and the crypto
// library it is built on with that library's version.
#pragma once

#include <windows.h>

#include "ui/dialog.h"

class CAboutDlg final : public CDialog {
 public:
  CAboutDlg();

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
};
