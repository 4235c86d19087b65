#include "ui/update_ui.h"

#include <commctrl.h>

#include "ui/controls/status_bar.h"

void CUpdateUi::AddMenu(HMENU menu)
{
  menus_.push_back(menu);
}

void CUpdateUi::AddToolBar(HWND toolBar)
{
  toolBars_.push_back(toolBar);
}

void CUpdateUi::AddStatusBar(HWND statusBar)
{
  statusBars_.push_back(statusBar);
}

void CUpdateUi::SetPaneText(int pane, const std::wstring& text)
{
  paneTexts_[pane] = text;
}

void CUpdateUi::SetEnabled(UINT id, bool enabled)
{
  states_[id].enabled = enabled;
}

void CUpdateUi::SetChecked(UINT id, bool checked)
{
  states_[id].checked = checked;
}

bool CUpdateUi::IsEnabled(UINT id) const
{
  const auto found = states_.find(id);
  return found == states_.end() || found->second.enabled.value_or(true);
}

bool CUpdateUi::IsChecked(UINT id) const
{
  const auto found = states_.find(id);
  return found != states_.end() && found->second.checked.value_or(false);
}

void CUpdateUi::Apply() const
{
  for (const HMENU menu : menus_) ApplyToMenu(menu);
  for (const HWND toolBar : toolBars_) ApplyToToolBar(toolBar);
  for (const HWND statusBar : statusBars_) ApplyToStatusBar(statusBar);
}

void CUpdateUi::ApplyToMenu(HMENU menu) const
{
  // By command, the search covers every submenu of the menu.
  for (const auto& [id, state] : states_) {
    if (state.enabled) {
      EnableMenuItem(menu, id,
                     static_cast<UINT>(MF_BYCOMMAND | (*state.enabled ? MF_ENABLED : MF_GRAYED)));
    }
    if (state.checked) {
      CheckMenuItem(menu, id,
                    static_cast<UINT>(MF_BYCOMMAND | (*state.checked ? MF_CHECKED : MF_UNCHECKED)));
    }
  }
}

void CUpdateUi::ApplyToToolBar(HWND toolBar) const
{
  for (const auto& [id, state] : states_) {
    if (SendMessageW(toolBar, TB_COMMANDTOINDEX, id, 0) < 0) continue;
    if (state.enabled) SendMessageW(toolBar, TB_ENABLEBUTTON, id, MAKELPARAM(*state.enabled, 0));
    if (state.checked) SendMessageW(toolBar, TB_CHECKBUTTON, id, MAKELPARAM(*state.checked, 0));
  }
}

void CUpdateUi::ApplyToStatusBar(HWND statusBar) const
{
  // Setting an unchanged text would repaint the bar at every idle moment.
  const CStatusBarCtrl bar(statusBar);
  for (const auto& [pane, text] : paneTexts_) {
    if (bar.PaneText(pane) != text) bar.SetPaneText(pane, text);
  }
}
