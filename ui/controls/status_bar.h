// A status bar control (msctls_statusbar32): one text across the bar (its first pane), and a
// simple mode that shows a passing text (menu prompts) over the panes until it is left.
// Non-owning.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "ui/window.h"

class CStatusBarCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  // Creates a status bar at the bottom of `parent`, with a size grip when asked.
  static CStatusBarCtrl Create(HWND parent, UINT id, const std::wstring& text, bool sizeGrip);

  // The text of a pane (pane 0 is the whole bar until panes are set up).
  std::wstring PaneText(int pane) const;
  bool SetPaneText(int pane, const std::wstring& text) const;

  // Simple mode: the one text shown while it is on; leaving it shows the panes again.
  bool IsSimple() const;
  void SetSimple(bool simple) const;
  std::wstring SimpleText() const;  // empty outside simple mode
  bool SetSimpleText(const std::wstring& text) const;
};
