#include "dialogs/options_dlg_win.h"

#include "app/prompt.h"
#include "res/resource.h"
#include "services/help.h"
#include "settings/hot_key.h"
#include "system/wide_text_win.h"
#include "ui/controls/hot_key.h"

COptionsDlg::COptionsDlg(RecentImageList& recentImages)
    : CPropertySheet(IDS_OPTIONS_CAPTION, PSH_HASHELP), general_(recentImages)
{
  AddPage(general_);
  AddPage(monitor_);
}

COptionsDlg::CGeneralPage::CGeneralPage(RecentImageList& recentImages)
    : CPropertyPage(IDD_OPTIONS_GENERAL), recentImages_(recentImages)
{
  SetHasHelp(true);
}

bool COptionsDlg::CGeneralPage::OnInitDialog(HWND)
{
  const GeneralOptions options = LoadGeneralPage();
  SetItemCheck(IDC_OPTION_REMOVABLE, CheckStateOfOption(options.removable));
  SetItemCheck(IDC_OPTION_INVISIBLE, CheckStateOfOption(options.invisible));
  SetItemCheck(IDC_OPTION_IGNORE_OPEN_FILES, CheckStateOfOption(options.ignoreOpenFiles));
  SetItemCheck(IDC_OPTION_PRIVACY, CheckStateOfOption(options.privacy));
  return true;
}

int COptionsDlg::CGeneralPage::OnApply()
{
  const GeneralOptions boxes{ItemCheck(IDC_OPTION_REMOVABLE), ItemCheck(IDC_OPTION_INVISIBLE),
                             ItemCheck(IDC_OPTION_IGNORE_OPEN_FILES),
                             ItemCheck(IDC_OPTION_PRIVACY)};
  ApplyGeneralPage(boxes, &recentImages_);
  return PSNRET_NOERROR;
}

void COptionsDlg::CGeneralPage::OnHelp()
{
  ShowHelpTopic(hwnd_, kGeneralPageHelpTopic);
}

COptionsDlg::CMonitorPage::CMonitorPage() : CPropertyPage(IDD_OPTIONS_MONITOR)
{
  SetHasHelp(true);
}

bool COptionsDlg::CMonitorPage::OnInitDialog(HWND)
{
  fields_ = LoadMonitorPage();
  if (fields_.appKeyOpened) {
    const uint16_t control = HotKeyToControl(fields_.openingHotKey);
    CHotKeyCtrl(Item(IDC_OPTION_HOT_KEY)).SetHotKey({LOBYTE(control), HIBYTE(control)});
  }
  SetItemCheck(IDC_OPTION_ENABLE_MONITOR, CheckStateOfOption(fields_.enableMonitor));
  SetItemCheck(IDC_OPTION_AUTOSTART, CheckStateOfOption(fields_.autostart));
  SetItemCheck(IDC_OPTION_UNLOAD_MONITOR, CheckStateOfOption(fields_.unloadAutomatically));
  EnableDependents();
  return true;
}

bool COptionsDlg::CMonitorPage::OnCommand(UINT id, UINT code, HWND)
{
  if (id != IDC_OPTION_ENABLE_MONITOR || code != BN_CLICKED) return false;
  ReadBoxes();
  EnableDependents();
  return true;
}

int COptionsDlg::CMonitorPage::OnApply()
{
  ReadBoxes();
  const HotKeyCombination pressed = CHotKeyCtrl(Item(IDC_OPTION_HOT_KEY)).HotKey();
  const uint32_t hotKey = HotKeyFromControl(MAKEWORD(pressed.virtualKey, pressed.modifiers));
  if (ApplyMonitorPage(fields_, hotKey, hwnd_, *this) == MonitorApplyResult::kHotKeyTaken) {
    ShowPrompt(hwnd_, HotKeyTakenPrompt());
    return PSNRET_INVALID;
  }
  return PSNRET_NOERROR;
}

void COptionsDlg::CMonitorPage::OnHelp()
{
  ShowHelpTopic(hwnd_, kMonitorPageHelpTopic);
}

bool COptionsDlg::CMonitorPage::HotKeyIsFree(uint32_t modifiers, uint32_t virtualKey)
{
  if (RegisterHotKey(hwnd_, 0, modifiers, virtualKey) == FALSE) return false;
  UnregisterHotKey(hwnd_, 0);
  return true;
}

void COptionsDlg::CMonitorPage::BroadcastSettingsChanged()
{
  // A window handle with every bit set addresses every top-level window, as HWND_BROADCAST
  // does; the monitor program listens for this form.
  const auto everyTopLevelWindow = reinterpret_cast<HWND>(static_cast<INT_PTR>(-1));
  PostMessageW(everyTopLevelWindow, RegisterWindowMessageW(Wide(kMonitorSettingsChangedMessage)), 0,
               0);
}

void COptionsDlg::CMonitorPage::ReadBoxes()
{
  fields_.enableMonitor = ItemCheck(IDC_OPTION_ENABLE_MONITOR);
  fields_.autostart = ItemCheck(IDC_OPTION_AUTOSTART);
  fields_.unloadAutomatically = ItemCheck(IDC_OPTION_UNLOAD_MONITOR);
}

void COptionsDlg::CMonitorPage::EnableDependents() const
{
  const bool enabled = MonitorDependentsEnabled(fields_);
  for (int id : {IDC_OPTION_AUTOSTART, IDC_OPTION_UNLOAD_MONITOR, IDC_OPTION_HOT_KEY,
                 IDC_OPTION_HOT_KEY_TEXT, IDC_OPTION_HOT_KEY_LABEL}) {
    EnableItem(id, enabled);
  }
}
