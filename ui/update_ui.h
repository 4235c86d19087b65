// The user-interface update map: the enabled and checked state of each command, kept in one
// place and pushed to every menu and toolbar that shows the command, and the texts of the
// status bar's panes.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

class CUpdateUi {
 public:
  // Menus (a menu bar or popup menus; submenus are reached through their parent) and
  // toolbars that show commands. They must outlive their registration.
  void AddMenu(HMENU menu);
  void AddToolBar(HWND toolBar);
  void AddStatusBar(HWND statusBar);

  // Records a command's state; Apply pushes it. A state never set is left as the menu or
  // toolbar has it.
  void SetEnabled(UINT id, bool enabled);
  void SetChecked(UINT id, bool checked);
  bool IsEnabled(UINT id) const;  // true unless disabled here
  bool IsChecked(UINT id) const;  // false unless checked here
  // Records the text of a status bar pane; Apply pushes it where the pane shows another.
  void SetPaneText(int pane, const std::wstring& text);

  // Pushes every recorded state to every registered menu, toolbar and status bar.
  void Apply() const;
  // Pushes the states to one menu, e.g. a context menu at WM_INITMENUPOPUP.
  void ApplyToMenu(HMENU menu) const;

 private:
  struct State {
    std::optional<bool> enabled;
    std::optional<bool> checked;
  };
  void ApplyToToolBar(HWND toolBar) const;
  void ApplyToStatusBar(HWND statusBar) const;

  std::map<UINT, State> states_;
  std::map<int, std::wstring> paneTexts_;
  std::vector<HMENU> menus_;
  std::vector<HWND> toolBars_;
  std::vector<HWND> statusBars_;
};
