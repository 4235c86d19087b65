// The properties dialog: the facts the device host reports about one mounted disk, read
// only. Any command closes it: Close ends with IDOK, everything else (Escape) with IDCANCEL.
#pragma once

#include <windows.h>

#include "devhost/device_host_api.h"
#include "ui/dialog.h"

class CVirtualDiskPropertiesDlg final : public CDialog {
 public:
  // The disk stays owned by the caller (the mounted disk list) and must outlive the dialog.
  explicit CVirtualDiskPropertiesDlg(const MountedDisk& disk);

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;

 private:
  const MountedDisk& disk_;
};
