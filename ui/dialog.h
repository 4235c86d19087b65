// Dialogs built from templates in the program's resources.
//
// CDialogBase is the object of a dialog window: it delivers the dialog's messages
// (ui/message_handler.h) and answers the dialog manager in its own terms (a handled
// notification's result goes through DWLP_MSGRESULT). CDialog runs a template as a modal
// dialog or creates it modeless; property pages (ui/property_sheet.h) share the base.
#pragma once

#include <windows.h>

#include <string>

#include "ui/message_handler.h"
#include "ui/message_loop.h"
#include "ui/window.h"

class CDialogBase : public CMessageHandler {
 public:
  UINT TemplateId() const { return templateId_; }

 protected:
  explicit CDialogBase(UINT templateId) : templateId_(templateId) {}

  // WM_INITDIALOG, once the controls exist. Returns true to let the dialog manager give the
  // focus to the first tab stop, false when the handler has set the focus itself.
  virtual bool OnInitDialog(HWND defaultFocus);
  // Routes WM_INITDIALOG to OnInitDialog, everything else to the base.
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

  // The dialog procedure's work for one message: `starting` is the object that WM_INITDIALOG
  // names (null for every other message); it is attached then.
  static INT_PTR Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                       CDialogBase* starting);

  // The text of the field `id`; the intermediate buffer is wiped, so that a password read
  // leaves no copy behind.
  std::u16string ReadField(int id) const;
  // Writes `text` into the field `id`; when that fails, beeps and focuses the field.
  bool PutField(int id, const std::u16string& text);
  // Moves the focus to the field `id` as the dialog manager does (its text selected).
  void FocusField(int id) const;

 private:
  UINT templateId_;
};

class CDialog : public CDialogBase, public CMessageFilter {
 public:
  explicit CDialog(UINT templateId) : CDialogBase(templateId) {}

  // Runs the dialog modally over `owner`; returns the value given to EndDialog, or -1 when
  // the dialog could not be created.
  INT_PTR DoModal(HWND owner);

  // Creates the dialog modeless (shown when its template has WS_VISIBLE). It registers
  // itself with the thread's current message loop, which navigates it by keyboard, until it
  // is destroyed.
  HWND Create(HWND owner);

  // Ends the dialog: a modal one returns `result` from DoModal, a modeless one is destroyed.
  void EndDialog(INT_PTR result);
  bool IsModal() const { return modal_; }

  // Keyboard navigation for a modeless dialog (Tab, Enter, Escape, mnemonics).
  bool PreTranslateMessage(MSG& message) override;

 protected:
  // IDOK and IDCANCEL end the dialog with that id unless these are overridden.
  virtual void OnOk() { EndDialog(IDOK); }
  virtual void OnCancel() { EndDialog(IDCANCEL); }
  bool OnCommand(UINT id, UINT code, HWND control) override;

 private:
  static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  bool modal_ = false;
};
