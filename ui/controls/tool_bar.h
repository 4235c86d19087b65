// A toolbar control (ToolbarWindow32): buttons with images and texts, their states, sizes and
// hot item. Non-owning: the toolbar is destroyed with its parent.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <span>
#include <string>

#include "ui/window.h"

class CToolBarCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  // Creates a toolbar child window ready to take buttons; null handle on failure. The
  // toolbar sends its commands and notifications to `parent`, also after a rebar band adopts
  // it.
  static CToolBarCtrl Create(HWND parent, UINT id, DWORD style, DWORD extendedStyle = 0);

  void SetImageList(HIMAGELIST images) const;
  void SetBitmapSize(SIZE size) const;
  void SetButtonSize(SIZE size) const;
  // Adds the texts of a list whose first character separates them ("|Open|Close||") and
  // returns the index of the first; -1 on failure.
  int AddTexts(const std::wstring& separatedList) const;
  bool AddButtons(std::span<const TBBUTTON> buttons) const;
  void AutoSize() const;

  int ButtonCount() const;
  // The command of the button at `index` (0 for a separator or an index out of range).
  UINT CommandAt(int index) const;
  bool IsSeparator(int index) const;
  std::wstring ButtonText(UINT command) const;
  // The rectangle of the button at `index` in the toolbar's client coordinates.
  RECT ItemRect(int index) const;
  // The index of the button under `clientPoint`, or -1.
  int HitTest(POINT clientPoint) const;
  // The size that shows every button.
  SIZE IdealSize() const;

  int HotItem() const;
  void SetHotItem(int index) const;
  bool IsEnabled(UINT command) const;
  void Enable(UINT command, bool enabled) const;
  bool IsPressed(UINT command) const;
  void Press(UINT command, bool pressed) const;
  // DrawText flags of the button texts, e.g. DT_HIDEPREFIX to hide mnemonic underlines.
  void SetDrawTextFlags(DWORD mask, DWORD flags) const;
};
