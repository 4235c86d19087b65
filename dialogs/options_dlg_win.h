// The options sheet of the "Configure options" command: the General page (default mount
// options, dismount of all disks, privacy) and the Monitor page (the companion monitor
// program and its emergency hot key). Each page saves on OK or Apply; Cancel saves nothing.
#pragma once

#include <windows.h>

#include "dialogs/options_pages.h"
#include "settings/recent_images.h"
#include "ui/property_sheet.h"

class COptionsDlg final : public CPropertySheet {
 public:
  // `recentImages` is the process's recent-images list, emptied when privacy is turned on;
  // it must outlive the sheet. Run it with DoModal(owner).
  explicit COptionsDlg(RecentImageList& recentImages);

  class CGeneralPage final : public CPropertyPage {
   public:
    explicit CGeneralPage(RecentImageList& recentImages);

   protected:
    bool OnInitDialog(HWND defaultFocus) override;
    int OnApply() override;
    void OnHelp() override;

   private:
    RecentImageList& recentImages_;
  };

  class CMonitorPage final : public CPropertyPage, private CMonitorPageSystem {
   public:
    CMonitorPage();

   protected:
    bool OnInitDialog(HWND defaultFocus) override;
    bool OnCommand(UINT id, UINT code, HWND control) override;
    int OnApply() override;
    void OnHelp() override;

   private:
    bool HotKeyIsFree(uint32_t modifiers, uint32_t virtualKey) override;
    void BroadcastSettingsChanged() override;
    void ReadBoxes();
    void EnableDependents() const;

    MonitorPageFields fields_;
  };

 private:
  CGeneralPage general_;
  CMonitorPage monitor_;
};
