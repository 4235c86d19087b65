// Dialogs built from templates in the program's resources.
//
// CDialogBase delivers a dialog's messages to its object and answers the dialog manager in
// its own terms (a handled notification's result goes through DWLP_MSGRESULT). CDialog runs
// a template as a modal dialog or creates it modeless; property pages (ui/property_sheet.h)
// share the base.
#pragma once

#include <windows.h>

#include "ui/message_loop.h"
#include "ui/window.h"

class CDialogBase : public CWindow, public CMessageHandler {
 public:
  UINT TemplateId() const { return templateId_; }

 protected:
  explicit CDialogBase(UINT templateId) : templateId_(templateId) {}

  // WM_INITDIALOG, once the controls exist. Returns true to let the dialog manager give the
  // focus to the first tab stop, false when the handler has set the focus itself.
  virtual bool OnInitDialog(HWND defaultFocus);

  // Runs the handlers for one message of the attached dialog and answers the dialog
  // manager; after WM_NCDESTROY the object is detached and OnFinalMessage runs.
  INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  UINT templateId_;
};

class CDialog : public CDialogBase, public CMessageFilter {
 public:
  explicit CDialog(UINT templateId) : CDialogBase(templateId) {}
  // A modeless dialog that outlives its object is detached and destroyed.
  ~CDialog() override;

  // Runs the dialog modally over `owner`; returns the value given to EndDialog, or -1 when
  // the dialog could not be created.
  INT_PTR DoModal(HWND owner);

  // Creates the dialog modeless (shown when its template has WS_VISIBLE). Register it with
  // the message loop's filters so that the keyboard navigates it.
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
