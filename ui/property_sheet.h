// Property sheets and their pages: tabbed sheets (options) and wizards in the Wizard97
// style (interior pages with a header title and subtitle, exterior pages with the
// watermark), modal or modeless.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <string>
#include <vector>

#include "ui/dialog.h"
#include "ui/handles.h"
#include "ui/message_loop.h"

class CPropertyPage : public CDialogBase {
 public:
  explicit CPropertyPage(UINT templateId);
  // A page window that outlives its object is only detached: its sheet destroys it.
  ~CPropertyPage() override { Detach(); }

  // The page's description, completed before the sheet runs. Texts are string ids.
  void SetTitle(UINT titleId);                    // the tab's text
  void SetHeader(UINT titleId, UINT subtitleId);  // interior wizard page
  void SetExterior();                             // wizard page without header
  void SetHasHelp(bool hasHelp);                  // the sheet's Help button
  const PROPSHEETPAGEW& Description() const { return description_; }

  HWND SheetWindow() const { return GetParent(hwnd_); }
  // PSWIZB_BACK, PSWIZB_NEXT, PSWIZB_FINISH, PSWIZB_DISABLEDFINISH (0: all disabled).
  void SetWizardButtons(DWORD buttons) const;
  // Marks the page as changed, which enables the sheet's Apply button.
  void SetModified(bool modified) const;

 protected:
  // Page notifications. The defaults accept everything.
  // Becoming active: 0 to accept, -1 to refuse, or the template id of another page.
  virtual int OnSetActive() { return 0; }
  // Being left: true when the page's data is valid and the page may be left.
  virtual bool OnKillActive() { return true; }
  // OK or Apply: PSNRET_NOERROR, PSNRET_INVALID or PSNRET_INVALID_NOCHANGEPAGE.
  virtual int OnApply() { return PSNRET_NOERROR; }
  // Cancel: the page's changes are dropped.
  virtual void OnReset() {}
  // Cancel asked: true to allow it.
  virtual bool OnQueryCancel() { return true; }
  // Wizard Back and Next: 0 to go on, -1 to stay on this page, or the template id of the
  // page to go to.
  virtual int OnWizardBack() { return 0; }
  virtual int OnWizardNext() { return 0; }
  // Wizard Finish: true to let the wizard close.
  virtual bool OnWizardFinish() { return true; }
  virtual void OnHelp() {}

  bool OnNotify(NMHDR& header, LRESULT& result) override;

 private:
  static INT_PTR CALLBACK PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  PROPSHEETPAGEW description_{};
  std::wstring title_;
  std::wstring headerTitle_;
  std::wstring headerSubtitle_;
};

class CPropertySheet : public CMessageHandler, public CMessageFilter {
 public:
  // `captionId`: the string id of the sheet's caption; `flags`: PSH_ style flags (for a
  // wizard PSH_WIZARD97 and the like; the class adds what it needs itself).
  CPropertySheet(UINT captionId, DWORD flags);
  // A sheet window that outlives its object is detached and destroyed.
  ~CPropertySheet() override;

  // Pages are shown in the order they are added; the page objects must outlive the sheet.
  void AddPage(CPropertyPage& page);
  void SetStartPage(UINT index);
  // The Wizard97 watermark (exterior pages) and header (interior pages) bitmap ids.
  void SetWizardBitmaps(UINT watermarkId, UINT headerId);

  // Runs the sheet modally; returns PropertySheetW's result (-1 on failure).
  INT_PTR DoModal(HWND owner);
  // Creates the sheet modeless. It registers itself with the thread's current message loop,
  // whose filters navigate it by keyboard and destroy it once OK, Cancel or Finish has ended
  // it.
  HWND Create(HWND owner);

  bool SetActivePage(int index) const;
  int ActivePageIndex() const;
  HWND ActivePageWindow() const;
  // Presses a sheet button (PSBTN_BACK, PSBTN_NEXT, PSBTN_FINISH, PSBTN_OK, PSBTN_CANCEL...).
  // The sheet acts on it when its messages are next processed.
  void PressButton(int button) const;
  void SetWizardButtons(DWORD buttons) const;

  bool PreTranslateMessage(MSG& message) override;

 protected:
  // The sheet window has been initialised (PSCB_INITIALIZED, during the sheet's
  // WM_INITDIALOG); its pages are not created yet. Its messages reach HandleMessage from its
  // creation on.
  virtual void OnInitialized() {}
  LRESULT DefaultProcessing(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  static LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam);
  static int CALLBACK SheetCallback(HWND window, UINT message, LPARAM lParam);
  static LRESULT CALLBACK SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR self);
  INT_PTR Run(HWND owner, DWORD extraFlags);

  PROPSHEETHEADERW header_{};
  CBitmap headerBitmap_;
  std::wstring caption_;
  std::vector<CPropertyPage*> pages_;
  std::vector<PROPSHEETPAGEW> descriptions_;
};
