// The mount dialog: the image file, its password, the drive letter to mount it on and the
// mount options. It only collects what the mount flow needs; it neither checks the password
// nor talks to the device host.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "app/mount_request.h"
#include "dialogs/drive_facts_win.h"
#include "ui/dialog.h"
#include "ui/handles.h"

class CMountDlg : public CDialog, public CMountRequestSource {
 public:
  // `driveFacts` names the drive letters in use whenever the drive list is filled.
  explicit CMountDlg(std::u16string imagePath = {}, DriveFactsSource driveFacts = GatherDriveFacts);
  ~CMountDlg() override;

  // Runs the dialog modally with `initialPath` in the path field; the request after OK.
  std::optional<MountRequest> Ask(WindowRef owner, const std::u16string& initialPath) override;

  // What the dialog collected: filled on OK (path and password also when Browse runs); the
  // password is wiped once Ask has handed the request over.
  const MountRequest& Request() const { return request_; }

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  void OnOk() override;
  void OnDestroy() override;

 private:
  void SetIcons();
  void FillDriveList();
  void RefillDriveListKeepingSelection();
  void TakeFields();
  void PutOptions();
  void Browse();
  void LaunchOnScreenKeyboard();

  DriveFactsSource driveFacts_;
  MountRequest request_;
  // The three boxes' states (0 unchecked, 1 checked, 2 indeterminate); read only always
  // starts unchecked, the others start from the stored mount defaults.
  UINT readOnly_ = 0;
  UINT removable_ = 0;
  UINT invisible_ = 1;
  CIcon largeIcon_;
  CIcon smallIcon_;
  CIcon keyboardIcon_;
};
