// The command bar: the frame's menu shown as a toolbar, one button per top-level popup, with
// images beside the popups' items.
//
// Mouse: a click on a button opens its popup; while a popup is open, moving over another
// button opens that one instead, and a click on the open popup's button closes it.
// Keyboard: Alt+letter opens the popup whose mnemonic it is; Alt alone or F10 puts the bar in
// keyboard mode (first button hot, mnemonics underlined; Left/Right move, Down/Up/Enter or a
// mnemonic open, Escape, Alt or F10 leave). While a popup is open, Left on the first level and
// Right on an item without a submenu open the neighbouring popup, Alt+letter opens the popup
// of that mnemonic, and Escape on the first level returns to keyboard mode. Alt+Space and every key
// that is not a mnemonic go on to the frame as before (the system menu is untouched).
//
// The popups belong to the bar while they are open: the frame receives their menu
// notifications (WM_INITMENUPOPUP, WM_MENUSELECT, WM_ENTERIDLE, WM_EXITMENULOOP...) passed on
// by the bar, and the chosen command as a posted WM_COMMAND. The keyboard is watched through
// a message filter of the thread's message loop, so the bar must be created while the loop
// exists.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/controls/tool_bar.h"
#include "ui/handles.h"
#include "ui/menu_images.h"
#include "ui/message_loop.h"
#include "ui/window.h"

class CCommandBar : public CCustomWindow, private CMessageFilter {
 public:
  CCommandBar() = default;
  ~CCommandBar() override;

  // Creates the bar as a child of `frame`, to which it passes commands and menu
  // notifications; a rebar band may adopt it afterwards.
  HWND Create(HWND frame, UINT id);

  // Shows the popups of `menu` as buttons; the bar owns the menu from now on.
  bool AttachMenu(CMenu menu);
  HMENU Menu() const { return menu_.Get(); }

  // The images beside the popups' items (see CMenuImages), loaded from the resources or
  // given; they show in the attached menu (also in a menu attached later).
  bool LoadImages(UINT commandsId, UINT bitmapId, bool thirtyTwoBit);
  void SetImages(CImageList images, std::vector<UINT> commands);
  const CMenuImages& Images() const { return images_; }

  // Opens the popup of button `index`, as a click (or with its first item selected, as a key)
  // would; returns when no popup of the bar is open any more.
  void OpenMenu(int index, bool selectFirstItem);

  // The state the keyboard and mouse drive.
  bool IsKeyboardMode() const { return keyboardMode_; }
  int HotIndex() const;
  int OpenIndex() const { return openIndex_; }  // the button whose popup is open, or -1
  int ButtonCount() const { return static_cast<int>(mnemonics_.size()); }

 protected:
  ClassDescription WindowClass() const override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  void OnDestroy() override;

 private:
  bool PreTranslateMessage(MSG& message) override;
  bool OnKeyboardModeKey(MSG& message);
  bool IsFrameMessage(HWND window) const;
  int MnemonicIndex(WPARAM character) const;
  void EnterKeyboardMode(int hotIndex);
  void LeaveKeyboardMode();
  void ShowMnemonics(bool show) const;
  void PostOpen(int index, bool selectFirstItem);
  void StopFiltering();
  void ShowImages() const;

  // While a popup is open: the menu loop's messages, seen through a WH_MSGFILTER hook.
  static LRESULT CALLBACK MenuFilterHook(int code, WPARAM wParam, LPARAM lParam);
  bool OnMenuLoopMessage(const MSG& message);
  bool SwitchTo(int index, bool byKey);
  bool SelectionOpensSubmenu() const;
  int HitTest(POINT screenPoint) const;

  CToolBarCtrl Bar() const { return CToolBarCtrl(hwnd_); }

  HWND frame_ = nullptr;
  CMenu menu_;
  CMenuImages images_;
  std::vector<wchar_t> mnemonics_;  // per button, upper case; 0 for none
  CFont font_;
  CMessageLoop* loop_ = nullptr;

  bool keyboardMode_ = false;
  bool altAlone_ = false;  // Alt went down and nothing else since

  int openIndex_ = -1;
  int nextIndex_ = -1;  // the popup to open when the current one has closed
  bool nextByKey_ = false;
  bool backToBar_ = false;  // Escape closed the first level
  HMENU selectedMenu_ = nullptr;
  bool selectedOpensSubmenu_ = false;
};
