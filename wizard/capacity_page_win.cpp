#include "wizard/capacity_page_win.h"

#include "res/resource.h"
#include "system/wide_text_win.h"
#include "ui/controls/trackbar.h"
#include "wizard/capacity.h"

CNewVirtualDiskImageWizard::CCapacityPage::CCapacityPage(CNewVirtualDiskImageWizard& wizard)
    : CInteriorPage(wizard, IDD_WIZARD_CAPACITY, IDS_CAPACITY_TITLE, IDS_CAPACITY_SUBTITLE)
{
}

bool CNewVirtualDiskImageWizard::CCapacityPage::OnInitDialog(HWND)
{
  CTrackBarCtrl(Item(IDC_CAPACITY_TRACKBAR))
      .SetRange(0, static_cast<int>(CapacitySteps.size()) - 1, true);
  for (int id : {IDC_CAPACITY_FIXED_SIZE, IDC_CAPACITY_FAT_COMPATIBLE, IDC_CAPACITY_FIXED_SIZE_TEXT,
                 IDC_CAPACITY_FAT_COMPATIBLE_TEXT}) {
    ShowWindow(Item(id), SW_SHOW);
  }
  SetItemText(IDC_CAPACITY_MINIMUM, Wide(MinimumCapacityText()));
  SetItemText(IDC_CAPACITY_MAXIMUM, Wide(MaximumCapacityText()));
  ShowStepText();
  return true;
}

bool CNewVirtualDiskImageWizard::CCapacityPage::OnCommand(UINT id, UINT code, HWND)
{
  if (id != IDC_CAPACITY_TEXT) return false;
  if (code == EN_SETFOCUS) {
    box_.FocusGained(Utf16(ItemText(IDC_CAPACITY_TEXT).c_str()));
    return true;
  }
  if (code == EN_KILLFOCUS) {
    LeaveCapacityBox();
    return true;
  }
  return false;
}

bool CNewVirtualDiskImageWizard::CCapacityPage::HandleMessage(UINT message, WPARAM wParam,
                                                              LPARAM lParam, LRESULT& result)
{
  if (message == WM_HSCROLL && reinterpret_cast<HWND>(lParam) == Item(IDC_CAPACITY_TRACKBAR)) {
    ShowStepText();
    result = 0;
    return true;
  }
  return CInteriorPage::HandleMessage(message, wParam, lParam, result);
}

int CNewVirtualDiskImageWizard::CCapacityPage::OnWizardNext()
{
  NewImageRequest& request = Request();
  request.fatCompatible = ItemCheck(IDC_CAPACITY_FAT_COMPATIBLE) == BST_CHECKED ? 1 : 0;
  request.fixedSize = ItemCheck(IDC_CAPACITY_FIXED_SIZE) == BST_CHECKED ? 1 : 0;
  request.capacity = ParseCapacityText(Utf16(ItemText(IDC_CAPACITY_TEXT).c_str()));
  return 0;
}

void CNewVirtualDiskImageWizard::CCapacityPage::ShowStepText()
{
  const int position = CTrackBarCtrl(Item(IDC_CAPACITY_TRACKBAR)).Position();
  SetItemText(IDC_CAPACITY_TEXT, Wide(CapacityStepText(static_cast<size_t>(position))));
}

void CNewVirtualDiskImageWizard::CCapacityPage::LeaveCapacityBox()
{
  const CTrackBarCtrl trackbar(Item(IDC_CAPACITY_TRACKBAR));
  const CapacityBoxLeft left = box_.FocusLost(Utf16(ItemText(IDC_CAPACITY_TEXT).c_str()),
                                              static_cast<size_t>(trackbar.Position()));
  if (left.rewrite) SetItemText(IDC_CAPACITY_TEXT, Wide(*left.rewrite));
  trackbar.SetPosition(static_cast<int>(left.position), true);
}
