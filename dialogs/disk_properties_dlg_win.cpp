#include "dialogs/disk_properties_dlg_win.h"

#include "dialogs/disk_properties.h"
#include "res/resource.h"
#include "system/wide_text_win.h"

CVirtualDiskPropertiesDlg::CVirtualDiskPropertiesDlg(const MountedDisk& disk)
    : CDialog(IDD_PROPERTIES), disk_(disk)
{
}

bool CVirtualDiskPropertiesDlg::OnInitDialog(HWND)
{
  for (const DiskPropertyField& field : DiskPropertyFields(disk_)) {
    SetItemText(field.controlId, Wide(field.text));
  }
  CenterWindow();
  return true;
}

bool CVirtualDiskPropertiesDlg::OnCommand(UINT id, UINT, HWND)
{
  EndDialog(id == IDOK ? IDOK : IDCANCEL);
  return true;
}
