// The main frame: the program's one top-level window in interactive mode. A rebar holds the
// command bar (the menu with its images) and the toolbar; the status bar shows the menu
// prompts; the mounted disk view fills the rest. It turns menu, toolbar and accelerator
// commands into the mount and dismount flows, the dialogs and the view's operations, answers
// the refresh, close and activate messages of other copies of the program, keeps the
// commands' states current, restores and saves its placement and shows the recently mounted
// images in its File menu.
#pragma once

#include <windows.h>

#include "disklist/mounted_disk_view_win.h"
#include "services/window_ref.h"
#include "settings/recent_images.h"
#include "ui/command_bar.h"
#include "ui/controls/tool_bar.h"
#include "ui/frame_window.h"
#include "ui/image_strip.h"
#include "ui/message_loop.h"

// The interactive run: creates the main frame (title string 100, menu 100, at the system's
// default place), shows it with `showCommand` and runs `loop`, the thread's message loop that
// the start-up made, with the frame's accelerators (table 100), message filters and idle
// handlers until the frame is destroyed. Returns the loop's exit code, or 0 when the frame
// cannot be created.
int RunMainFrame(CMessageLoop& loop, int showCommand);

class CMainFrame : public CFrameWindow, private CMessageFilter {
 public:
  // The frame's window styles: overlapped, clipping its children and siblings (0x06CF0000);
  // an application window with a raised edge (0x00040100).
  static constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  static constexpr DWORD kExtendedStyle = WS_EX_APPWINDOW | WS_EX_WINDOWEDGE;
  // The view's styles: a visible report list that keeps its selection shown (0x56000209).
  static constexpr DWORD kViewStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN |
                                      LVS_REPORT | LVS_SHOWSELALWAYS | LVS_EDITLABELS;
  // The File menu's item that holds the recently mounted images.
  static constexpr int kRecentMenuPosition = 9;

  // Registers the refresh, close and activate messages, in this order.
  CMainFrame();
  ~CMainFrame() override;

  // Creates the frame window with `title` and the menu of resource 100 at the system's
  // default place; null on failure.
  HWND Create(const wchar_t* title);
  // The accelerator table the frame's message filter translates.
  void SetAccelerators(HACCEL accelerators) { accelerators_ = accelerators; }

  UINT RefreshMessage() const { return refreshMessage_; }
  UINT CloseMessage() const { return closeMessage_; }
  UINT ActivateMessage() const { return activateMessage_; }

  CMountedDiskView& View() { return view_; }
  CCommandBar& CommandBar() { return commandBar_; }
  const CToolBarCtrl& ToolBar() const { return toolBar_; }
  const RecentImageList& RecentImages() const { return recentImages_; }

  // Sets the commands' enabled and checked states for the view's selection and columns.
  void UpdateCommandStates();

 protected:
  bool OnCreate() override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  bool OnNotify(NMHDR& header, LRESULT& result) override;
  void OnDestroy() override;

 private:
  bool PreTranslateMessage(MSG& message) override;
  bool CreateCommandBar(bool thirtyTwoBit);
  bool OnRegisteredMessage(UINT message, LRESULT& result);
  void Activate();
  // Runs the new image wizard and mounts the new image when its last page asks for it.
  void CreateImage();
  void MountImage(const std::u16string& path);
  void ToggleColumn(UINT command);
  void AttachRecentImages();
  HMENU RecentImagesMenu() const;
  void ShowRecentImages();
  void ShowOptions();
  void ShowProperties();
  void ShowAbout();
  WindowRef Owner() const;

  // Members in the order the design gives them.
  CMountedDiskView view_;
  UINT refreshMessage_;
  UINT closeMessage_;
  UINT activateMessage_;
  CCommandBar commandBar_;
  CToolBarCtrl toolBar_;
  CImageList toolBarImages_;
  HACCEL accelerators_ = nullptr;
  CMessageLoop* loop_ = nullptr;
  RecentImageList recentImages_;
  std::wstring emptyRecentText_;  // the recent-images submenu's text while it is empty
};
