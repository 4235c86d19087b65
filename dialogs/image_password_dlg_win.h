// What the change-password and clear dialogs share: the image path field with its Browse
// button, the OK button that only a path enables, the program's icon, the centring on the
// owner, and the password fields, which are read without leaving copies behind and are
// wiped before the window is destroyed.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "ui/dialog.h"

class CImagePasswordDlg : public CDialog {
 public:
  const std::u16string& Path() const { return path_; }

 protected:
  // `passwordFields`: the ids of the template's password edit controls.
  CImagePasswordDlg(UINT templateId, std::initializer_list<int> passwordFields);

  // Sets the icons, puts the path into its field, enables OK by the path and centres the
  // dialog; the derived dialog then puts its own fields.
  bool OnInitDialog(HWND defaultFocus) override;
  // Browse, and the path field's changes.
  bool OnCommand(UINT id, UINT code, HWND control) override;
  void OnDestroy() override;

  std::u16string path_;

 private:
  void Browse();

  std::vector<int> passwordFields_;
};
