#include "support/test_dialogs.h"

#include <commctrl.h>

#include "services/message_box.h"
#include "ui/strings.h"

CHarnessTestDlg::~CHarnessTestDlg() = default;

bool CHarnessTestDlg::OnInitDialog(HWND)
{
  ++initCount;
  SetItemText(IDC_NAME, name);
  EnableItem(IDOK, !name.empty());
  const HWND list = Item(IDC_LIST);
  SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
  const UINT titles[3] = {IDS_COLUMN_MOUNT_POINT, IDS_COLUMN_CAPACITY, IDS_COLUMN_IMAGE_PATH};
  const int widths[3] = {80, 70, 200};
  for (int column = 0; column < 3; ++column) {
    std::wstring title = LoadResourceString(titles[column]);
    LVCOLUMNW description{};
    description.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    description.pszText = title.data();
    description.cx = widths[column];
    description.iSubItem = column;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&description));
  }
  for (int row = 0; row < 3; ++row) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = const_cast<wchar_t*>(kSampleRows[row][0]);
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    for (int column = 1; column < 3; ++column) {
      item.iSubItem = column;
      item.pszText = const_cast<wchar_t*>(kSampleRows[row][column]);
      SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&item));
    }
  }
  SendDlgItemMessageW(hwnd_, IDC_PROGRESS, PBM_SETRANGE32, 0, 100);
  return true;
}

void CHarnessTestDlg::OnOk()
{
  const std::wstring typed = ItemText(IDC_NAME);
  if (typed.empty()) {
    ShowMessageBox(hwnd_, IDS_NAME_MISSING, IDS_CAPTION, MB_OK | MB_ICONERROR);
    SetFocus(Item(IDC_NAME));
    return;
  }
  name = typed;
  remember = ItemCheck(IDC_REMEMBER);
  EndDialog(IDOK);
}

bool CHarnessTestDlg::OnCommand(UINT id, UINT code, HWND control)
{
  if (id == IDC_ASK && code == BN_CLICKED) {
    lastAnswer = ShowMessageBox(hwnd_, IDS_QUESTION, IDS_CAPTION, MB_YESNO | MB_ICONWARNING);
    SetItemText(IDC_ANSWER, lastAnswer == IDYES ? L"Yes" : L"No");
    return true;
  }
  if (id == IDC_NAME && code == EN_CHANGE) {
    EnableItem(IDOK, !ItemText(IDC_NAME).empty());
    return true;
  }
  return CDialog::OnCommand(id, code, control);
}

bool CHarnessTestDlg::OnNotify(NMHDR& header, LRESULT& result)
{
  if (header.idFrom == IDC_LIST && header.code == LVN_ITEMCHANGED) {
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    if (((change.uOldState ^ change.uNewState) & LVIS_SELECTED) != 0) ++selectionChanges;
    result = 0;
    return true;
  }
  return CDialog::OnNotify(header, result);
}

bool CHarnessTestDlg::OnTimer(UINT_PTR id)
{
  if (id != kTimerId) return false;
  ++timerTicks;
  return true;
}

bool CHarnessTestDlg::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  if (message == kWorkerProgress) {
    progressDone = static_cast<UINT>(wParam);
    progressTotal = static_cast<UINT>(lParam);
    SendDlgItemMessageW(hwnd_, IDC_PROGRESS, PBM_SETRANGE32, 0, lParam);
    SendDlgItemMessageW(hwnd_, IDC_PROGRESS, PBM_SETPOS, wParam, 0);
    result = stopRequested ? 0 : 1;
    return true;
  }
  if (message == kWorkerDone) {
    workerStatus = static_cast<StatusCode>(wParam);
    EndDialog(IsFailure(workerStatus) ? 3 : 1);
    result = 0;
    return true;
  }
  return CDialog::HandleMessage(message, wParam, lParam, result);
}

void CLoggingPage::Log(const char* event)
{
  log_.push_back(std::string(event) + " " + std::to_string(TemplateId()));
}

int CLoggingPage::OnSetActive()
{
  Log("active");
  if (isWizard) SetWizardButtons(wizardButtons);
  return 0;
}

bool CLoggingPage::OnKillActive()
{
  Log("leave");
  return true;
}

int CLoggingPage::OnApply()
{
  Log("apply");
  applied = ItemText(IDC_PAGE_EDIT);
  return applyAnswer;
}

void CLoggingPage::OnReset()
{
  Log("reset");
}

bool CLoggingPage::OnQueryCancel()
{
  Log("querycancel");
  return allowCancel;
}

int CLoggingPage::OnWizardBack()
{
  Log("back");
  return 0;
}

int CLoggingPage::OnWizardNext()
{
  Log("next");
  return nextAnswer;
}

bool CLoggingPage::OnWizardFinish()
{
  Log("finish");
  return allowFinish;
}

void CLoggingPage::OnHelp()
{
  Log("help");
}
