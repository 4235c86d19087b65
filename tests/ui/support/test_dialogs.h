// The dialog and pages of the test template, with handlers that record what reached them;
// used by the framework's tests and by the test screenshot scenes.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "support/test_resources.h"
#include "system/status.h"
#include "ui/dialog.h"
#include "ui/property_sheet.h"

// A dialog as the screens build them: a name field that OK requires (else a prompt), a
// question asked through the message-box service, a list view with three sample rows, and a
// progress bar fed by a worker's messages (WM_USER + 2 sent with done and total, answered
// non-zero to go on; WM_USER + 1 posted with the final status, which ends the dialog with 1
// on success and 3 on failure).
class CHarnessTestDlg : public CDialog {
 public:
  static constexpr UINT kWorkerDone = WM_USER + 1;
  static constexpr UINT kWorkerProgress = WM_USER + 2;
  static constexpr UINT_PTR kTimerId = 2;

  CHarnessTestDlg() : CDialog(IDD_HARNESS) {}
  ~CHarnessTestDlg() override;

  std::wstring name;  // put into the field at initialisation, taken back on OK
  UINT remember = 0;
  int initCount = 0;
  int finalCount = 0;
  int selectionChanges = 0;
  int timerTicks = 0;
  int lastAnswer = 0;
  bool stopRequested = false;
  UINT progressDone = 0;
  UINT progressTotal = 0;
  StatusCode workerStatus = 0;

 protected:
  bool OnInitDialog(HWND defaultFocus) override;
  void OnOk() override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  bool OnNotify(NMHDR& header, LRESULT& result) override;
  bool OnTimer(UINT_PTR id) override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  void OnFinalMessage() override { ++finalCount; }
};

// A page whose answers are set by the test and whose notifications are logged by name
// ("active 210", "next 210", ...), in one log shared by the pages of a sheet.
class CLoggingPage : public CPropertyPage {
 public:
  CLoggingPage(UINT templateId, std::vector<std::string>& log)
      : CPropertyPage(templateId), log_(log)
  {
  }

  DWORD wizardButtons = PSWIZB_BACK | PSWIZB_NEXT;  // set on activation in a wizard
  bool isWizard = false;
  int nextAnswer = 0;
  int applyAnswer = PSNRET_NOERROR;
  bool allowCancel = true;
  bool allowFinish = true;
  std::wstring applied;  // the page's field, taken on apply

 protected:
  int OnSetActive() override;
  bool OnKillActive() override;
  int OnApply() override;
  void OnReset() override;
  bool OnQueryCancel() override;
  int OnWizardBack() override;
  int OnWizardNext() override;
  bool OnWizardFinish() override;
  void OnHelp() override;

 private:
  void Log(const char* event);
  std::vector<std::string>& log_;
};

// Sample rows of the test dialog's list view: mount point, capacity, image path.
inline constexpr const wchar_t* kSampleRows[3][3] = {
    {L"E:", L"1.00 GB", L"C:\\Images\\work.qvi"},
    {L"F:", L"512 MB", L"C:\\Images\\archive.qvi"},
    {L"G:", L"32.0 GB", L"D:\\Backup\\photos.qvi"},
};
