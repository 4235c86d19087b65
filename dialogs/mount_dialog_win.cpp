#include "dialogs/mount_dialog_win.h"

#include <dbt.h>

#include <utility>

#include "dialogs/image_browse.h"
#include "res/resource.h"
#include "services/process.h"
#include "services/window_ref_win.h"
#include "settings/options.h"
#include "system/wide_text_win.h"
#include "system/wipe.h"
#include "ui/controls/combo_box.h"
#include "ui/controls/edit.h"

namespace {

// The on-screen keyboard the OSK button starts.
constexpr char16_t kOnScreenKeyboard[] = u"%SystemRoot%\\system32\\osk.exe";

CIcon LoadIconOfSize(UINT id, int widthMetric, int heightMetric)
{
  return CIcon(static_cast<HICON>(LoadImageW(ResourceModule(), MAKEINTRESOURCEW(id), IMAGE_ICON,
                                             GetSystemMetrics(widthMetric),
                                             GetSystemMetrics(heightMetric), LR_DEFAULTCOLOR)));
}

// A volume has arrived (a USB stick plugged in, a disk mounted).
bool IsVolumeArrival(WPARAM event, LPARAM data)
{
  if (event != DBT_DEVICEARRIVAL || data == 0) return false;
  return reinterpret_cast<const DEV_BROADCAST_HDR*>(data)->dbch_devicetype == DBT_DEVTYP_VOLUME;
}

}  // namespace

CMountDlg::CMountDlg(std::u16string imagePath, DriveFactsSource driveFacts)
    : CDialog(IDD_MOUNT), driveFacts_(driveFacts)
{
  request_.imagePath = std::move(imagePath);
}

CMountDlg::~CMountDlg()
{
  WipeText(request_.password);
}

std::optional<MountRequest> CMountDlg::Ask(WindowRef owner, const std::u16string& initialPath)
{
  request_ = MountRequest{};
  request_.imagePath = initialPath;
  std::optional<MountRequest> answer;
  if (DoModal(ToHwnd(owner)) == IDOK) answer = request_;
  WipeText(request_.password);
  return answer;
}

bool CMountDlg::OnInitDialog(HWND /*defaultFocus*/)
{
  SetIcons();
  MountDefaults defaults;
  ReadMountDefaults(&defaults);
  removable_ = CheckStateOfOption(defaults.removable);
  invisible_ = CheckStateOfOption(defaults.invisible);
  readOnly_ = 0;

  SetItemText(IDC_IMAGE_PATH, Wide(request_.imagePath));
  SetItemText(IDC_PASSWORD, Wide(request_.password));
  PutOptions();
  EnableItem(IDOK, !request_.imagePath.empty());

  FillDriveList();
  CComboBox(Item(IDC_MOUNT_POINT)).SetCurSel(0);
  CenterWindow();

  // With the path given, the password is what the user types next.
  if (request_.imagePath.empty()) return true;
  SetFocus(Item(IDC_PASSWORD));
  return false;
}

void CMountDlg::SetIcons()
{
  largeIcon_ = LoadIconOfSize(IDR_MAINFRAME, SM_CXICON, SM_CYICON);
  smallIcon_ = LoadIconOfSize(IDR_MAINFRAME, SM_CXSMICON, SM_CYSMICON);
  keyboardIcon_ = LoadIconOfSize(IDI_KEYBOARD, SM_CXSMICON, SM_CYSMICON);
  Send(WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(largeIcon_.Get()));
  Send(WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.Get()));
  SendDlgItemMessageW(hwnd_, IDC_MOUNT_KEYBOARD, BM_SETIMAGE, IMAGE_ICON,
                      reinterpret_cast<LPARAM>(keyboardIcon_.Get()));
}

void CMountDlg::FillDriveList()
{
  const CComboBox list(Item(IDC_MOUNT_POINT));
  for (const std::u16string& entry : DriveListEntries(FreeDriveLetters(driveFacts_()))) {
    list.AddString(Wide(entry));
  }
}

// A letter that a new volume took leaves the list; the entry the user had chosen stays
// chosen while it is still offered. A removed volume's letter comes back only when the
// dialog is opened again.
void CMountDlg::RefillDriveListKeepingSelection()
{
  const CComboBox list(Item(IDC_MOUNT_POINT));
  const int selected = list.CurSel();
  const std::wstring chosen = selected == CB_ERR ? std::wstring() : list.ItemText(selected);
  list.ResetContent();
  FillDriveList();
  list.SetCurSel(0);
  if (!chosen.empty()) list.SelectString(chosen);
}

bool CMountDlg::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  if (message == WM_DEVICECHANGE && IsVolumeArrival(wParam, lParam)) {
    RefillDriveListKeepingSelection();
    result = TRUE;
    return true;
  }
  return CDialog::HandleMessage(message, wParam, lParam, result);
}

bool CMountDlg::OnCommand(UINT id, UINT code, HWND control)
{
  switch (id) {
    case IDC_IMAGE_PATH:
      if (code != EN_CHANGE) return false;
      EnableItem(IDOK, GetWindowTextLengthW(control) > 0);
      return true;
    case IDC_BROWSE:
      if (code != BN_CLICKED) return false;
      Browse();
      return true;
    case IDC_MOUNT_KEYBOARD:
      if (code != BN_CLICKED) return false;
      LaunchOnScreenKeyboard();
      return true;
    default: return CDialog::OnCommand(id, code, control);
  }
}

// Path, password and the boxes' states, from the controls.
void CMountDlg::TakeFields()
{
  request_.imagePath = Utf16(ItemText(IDC_IMAGE_PATH).c_str());
  WipeText(request_.password);
  std::wstring password = ItemText(IDC_PASSWORD);
  request_.password = Utf16(password.c_str());
  WipeBytes(password.data(), password.size() * sizeof(wchar_t));
  readOnly_ = ItemCheck(IDC_MOUNT_READ_ONLY);
  removable_ = ItemCheck(IDC_MOUNT_REMOVABLE);
  invisible_ = ItemCheck(IDC_MOUNT_INVISIBLE);
}

void CMountDlg::PutOptions()
{
  SetItemCheck(IDC_MOUNT_READ_ONLY, readOnly_);
  SetItemCheck(IDC_MOUNT_REMOVABLE, removable_);
  SetItemCheck(IDC_MOUNT_INVISIBLE, invisible_);
}

void CMountDlg::Browse()
{
  TakeFields();
  const std::optional<FileDialogChoice> choice =
      ChooseFileToOpen(MountBrowseRequest(hwnd_, request_.imagePath));
  if (!choice) return;
  request_.imagePath = choice->path;
  for (const auto& [id, text] : {std::pair{IDC_IMAGE_PATH, &request_.imagePath},
                                 std::pair{IDC_PASSWORD, &request_.password}}) {
    if (!SetItemText(id, Wide(*text))) {
      MessageBeep(static_cast<UINT>(-1));
      SetFocus(Item(id));
      return;
    }
  }
  PutOptions();
}

// Starts the on-screen keyboard with its window at the password field's top-left corner. A
// keyboard that does not start is not reported; the focus stays where it was.
void CMountDlg::LaunchOnScreenKeyboard()
{
  RECT field{};
  GetWindowRect(Item(IDC_PASSWORD), &field);
  ProcessStartRequest request;
  request.program = kOnScreenKeyboard;
  request.position = ScreenPosition{field.left, field.top};
  StartProcess(request, nullptr);
}

void CMountDlg::OnOk()
{
  TakeFields();
  request_.readOnly = readOnly_ != 0;
  request_.removable = removable_ != 0;
  request_.invisible = invisible_ != 0;
  const CComboBox list(Item(IDC_MOUNT_POINT));
  const int selected = list.CurSel();
  request_.mountPoint =
      selected == CB_ERR ? std::u16string() : Utf16(list.ItemText(selected).c_str());
  EndDialog(IDOK);
}

void CMountDlg::OnDestroy()
{
  CEditCtrl(Item(IDC_PASSWORD)).WipeText();
}
