// The user-interface update map: the enabled and checked state of each command, kept in one
// place and pushed to every menu and toolbar that shows the command.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <vector>

class CUpdateUi {
 public:
  // Menus (a menu bar or popup menus; submenus are reached through their parent) and
  // toolbars that show commands. They must outlive their registration.
  void AddMenu(HMENU menu);
  void AddToolBar(HWND toolBar);

  // Records a command's state; Apply pushes it. A state never set is left as the menu or
  // toolbar has it.
  void SetEnabled(UINT id, bool enabled);
  void SetChecked(UINT id, bool checked);
  bool IsEnabled(UINT id) const;  // true unless disabled here
  bool IsChecked(UINT id) const;  // false unless checked here

  // Pushes every recorded state to every registered menu and toolbar.
  void Apply() const;
  // Pushes the states to one menu, e.g. a context menu at WM_INITMENUPOPUP.
  void ApplyToMenu(HMENU menu) const;

 private:
  struct State {
    std::optional<bool> enabled;
    std::optional<bool> checked;
  };
  void ApplyToToolBar(HWND toolBar) const;

  std::map<UINT, State> states_;
  std::vector<HMENU> menus_;
  std::vector<HWND> toolBars_;
};
