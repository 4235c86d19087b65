#include "support/sample_frame.h"

#include <commctrl.h>

#include <array>

#include "ui/strings.h"

HWND CSampleFrame::Create()
{
  return CFrameWindow::Create(nullptr, RECT{40, 40, 560, 360},
                              LoadResourceString(IDS_SAMPLE_TITLE).c_str(),
                              WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE);
}

bool CSampleFrame::OnCreate()
{
  if (!CreateReBar(IDW_SAMPLE_REBAR, IDW_SAMPLE_FIRST_BAND)) return false;
  if (commandBar.Create(Handle(), IDW_SAMPLE_COMMAND_BAR) == nullptr) return false;
  if (!commandBar.AttachMenu(
          CMenu(LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDM_SAMPLE_FRAME))))) {
    return false;
  }
  if (!commandBar.LoadImages(IDR_SAMPLE_MENU_IMAGES, IDB_SAMPLE_MENU_IMAGES, true)) return false;
  if (!CreateToolBar()) return false;
  if (!AddBand(commandBar.Handle(), false) || !AddBand(toolBar.Handle(), true)) return false;
  if (!CreateStatusBar(IDW_SAMPLE_STATUS_BAR, IDS_SAMPLE_IDLE)) return false;
  if (!CreateList()) return false;
  UpdateUi().AddMenu(commandBar.Menu());
  UpdateUi().AddToolBar(toolBar.Handle());
  return true;
}

bool CSampleFrame::CreateToolBar()
{
  toolBar = CToolBarCtrl::Create(Handle(), IDW_SAMPLE_TOOLBAR,
                                 WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS |
                                     CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN |
                                     TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS,
                                 TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_HIDECLIPPEDBUTTONS);
  if (!toolBar.IsWindow()) return false;
  toolBarImages_ = LoadImageStrip(IDB_SAMPLE_TOOLBAR, 24, true);
  toolBar.SetImageList(toolBarImages_.Get());
  const int firstText = toolBar.AddTexts(LoadResourceString(IDS_SAMPLE_TOOLBAR_TEXTS));
  const auto button = [&](int image, UINT command) {
    return TBBUTTON{image,
                    static_cast<int>(command),
                    TBSTATE_ENABLED,
                    BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT,
                    {},
                    0,
                    firstText + image};
  };
  const auto separator = TBBUTTON{0, 0, TBSTATE_ENABLED, BTNS_SEP, {}, 0, -1};
  const std::array<TBBUTTON, 4> buttons = {button(0, ID_SAMPLE_NEW), separator,
                                           button(1, ID_SAMPLE_OPEN), button(2, ID_SAMPLE_CLOSE)};
  if (!toolBar.AddButtons(buttons)) return false;
  toolBar.AutoSize();
  return true;
}

bool CSampleFrame::CreateList()
{
  list = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                         WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | LVS_REPORT | LVS_SHOWSELALWAYS,
                         0, 0, 0, 0, Handle(), nullptr, ResourceModule(), nullptr);
  if (list == nullptr) return false;
  SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
  const std::array<const wchar_t*, 3> headers = {L"Mount Point", L"Capacity", L"Image Path"};
  const std::array<int, 3> widths = {100, 90, 280};
  for (size_t column = 0; column < headers.size(); ++column) {
    LVCOLUMNW info{};
    info.mask = LVCF_TEXT | LVCF_WIDTH;
    info.pszText = const_cast<wchar_t*>(headers[column]);
    info.cx = widths[column];
    SendMessageW(list, LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&info));
  }
  const std::array<std::array<const wchar_t*, 3>, 3> rows = {{
      {L"E:", L"512 MB", L"C:\\Images\\work.qvi"},
      {L"F:", L"2.00 GB", L"C:\\Images\\archive.qvi"},
      {L"G:", L"64.0 MB", L"D:\\Travel\\notes.qvi"},
  }};
  for (size_t row = 0; row < rows.size(); ++row) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(row);
    item.pszText = const_cast<wchar_t*>(rows[row][0]);
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    for (size_t column = 1; column < rows[row].size(); ++column) {
      item.iSubItem = static_cast<int>(column);
      item.pszText = const_cast<wchar_t*>(rows[row][column]);
      SendMessageW(list, LVM_SETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    }
  }
  SetClientView(list);
  return true;
}

bool CSampleFrame::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  if (message == WM_INITMENUPOPUP) {
    if (HIWORD(lParam) != 0) {
      ++systemMenusOpened;
    } else {
      popupsOpened.push_back(reinterpret_cast<HMENU>(wParam));
    }
  }
  if (message == WM_ENTERIDLE && wParam == MSGF_MENU && onMenuIdle) onMenuIdle();
  return CFrameWindow::HandleMessage(message, wParam, lParam, result);
}

bool CSampleFrame::OnCommand(UINT id, UINT, HWND)
{
  commands.push_back(id);
  return true;
}
