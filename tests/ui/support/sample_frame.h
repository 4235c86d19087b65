// The sample frame of the frame tests and the sample-frame scene: a command bar with the
// sample menu and its images, a toolbar with the program's toolbar images, a list view with
// a few rows as the client view and a status bar. It records what reaches it.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "support/frame_test_resources.h"
#include "ui/command_bar.h"
#include "ui/controls/tool_bar.h"
#include "ui/frame_window.h"
#include "ui/image_strip.h"

class CSampleFrame : public CFrameWindow {
 public:
  // Creates the frame (visible) with all its parts; null on failure.
  HWND Create();

  CCommandBar commandBar;
  CToolBarCtrl toolBar;
  HWND list = nullptr;

  std::vector<UINT> commands;       // WM_COMMAND ids, in order
  std::vector<HMENU> popupsOpened;  // WM_INITMENUPOPUP of menus other than the system menu
  int systemMenusOpened = 0;        // WM_INITMENUPOPUP of the system menu
  // Called whenever a menu loop waits for input (WM_ENTERIDLE with MSGF_MENU).
  std::function<void()> onMenuIdle;

 protected:
  bool OnCreate() override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;

 private:
  bool CreateToolBar();
  bool CreateList();

  CImageList toolBarImages_;
};
