// The wizard's capacity page: a trackbar of 32 capacity steps, an edit box for any capacity
// from 4 MB to 2 TB in whole megabytes, and the fixed-size and FAT-compatible options.
#pragma once

#include "wizard/capacity_box.h"
#include "wizard/interior_page_win.h"

class CNewVirtualDiskImageWizard::CCapacityPage final : public CInteriorPage {
 public:
  explicit CCapacityPage(CNewVirtualDiskImageWizard& wizard);

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  int OnWizardNext() override;

 private:
  void ShowStepText();
  void LeaveCapacityBox();

  CCapacityBox box_;
};
