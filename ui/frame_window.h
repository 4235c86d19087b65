// The base of a main window: a rebar at the top, a status bar at the bottom and a client view
// between them, laid out whenever the frame changes size. A band's chevron drops down the
// buttons that do not fit (toolbar commands, or the command bar's popups). Menu prompts appear on
// the status bar while a menu is open (the text of the command's string before "\n"), tool tips
// come from the same string (the text after "\n"), popups get the commands' states from the frame's
// user-interface update map when they open, and the map is pushed to the bars at idle time.
#pragma once

#include <windows.h>

#include <string>

#include "ui/command_bar.h"
#include "ui/controls/rebar.h"
#include "ui/controls/status_bar.h"
#include "ui/message_loop.h"
#include "ui/update_ui.h"
#include "ui/window.h"

class CFrameWindow : public CCustomWindow, public CIdleHandler {
 public:
  CFrameWindow() = default;
  ~CFrameWindow() override;

  CReBarCtrl& ReBar() { return reBar_; }
  CStatusBarCtrl& StatusBar() { return statusBar_; }
  CUpdateUi& UpdateUi() { return updateUi_; }
  HWND ClientView() const { return view_; }
  // The window that fills the space between the bars.
  void SetClientView(HWND view);

  // Places the bars and the view in the client area.
  void UpdateLayout();
  // The part of the client area between the bars, where the view goes.
  RECT ClientViewRect() const;

  // Pushes the update map (CIdleHandler): the frame registers itself with the thread's
  // message loop when it is created and removes itself when it is destroyed.
  void OnIdle() override;

  // The parts of a command's string: the status-bar prompt before "\n" and the tool tip after
  // it (empty when the string or the part is missing).
  static std::wstring CommandPrompt(UINT command);
  static std::wstring CommandToolTip(UINT command);

 protected:
  // Called at WM_CREATE, after the frame joined the message loop; false fails the creation.
  virtual bool OnCreate() { return true; }

  // The rebar along the top (bands get ids from `firstBandId` on) and the status bar along the
  // bottom, with a size grip, showing the string `idleTextId` while no menu is open.
  bool CreateReBar(UINT id, UINT firstBandId);
  bool CreateStatusBar(UINT id, UINT idleTextId);
  // Adds `child` as the next band of the rebar, on a new row when asked, with a chevron.
  bool AddBand(HWND child, bool newRow);

  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

 private:
  void LeaveMessageLoop();
  void OnMenuSelect(UINT item, UINT flags, HMENU menu);
  void ShowPrompt(const std::wstring& prompt);
  void EndPrompt();
  bool OnToolTipText(NMTTDISPINFOW& info);
  void OnChevronPushed(const NMREBARCHEVRON& chevron);
  static void TellSize(HWND bar, LPARAM size, LPARAM& told);

  CReBarCtrl reBar_;
  CStatusBarCtrl statusBar_;
  HWND view_ = nullptr;
  // The client size each bar was last told (MAKELPARAM never makes -1).
  LPARAM reBarSize_ = -1;
  LPARAM statusBarSize_ = -1;
  CUpdateUi updateUi_;
  UINT nextBandId_ = 0;
  CMessageLoop* loop_ = nullptr;
  std::wstring toolTip_;  // the text the last tool tip shows
  // The command bar whose popups the open chevron menu shows (their images are its).
  CCommandBar* chevronCommandBar_ = nullptr;
};
