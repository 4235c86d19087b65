#include "disklist/mounted_disk_view_win.h"

#include <utility>

#include "app/check_formatted.h"
#include "app/dismount_flows.h"
#include "res/resource.h"
#include "res/texts.h"
#include "services/shell.h"
#include "system/wide_text_win.h"
#include "ui/handles.h"

namespace {

// The list's extended styles: full-row selection and header drag-and-drop (0x30).
constexpr DWORD kViewExtendedStyle = LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP;

// The main menu's "&View" menu and its "&Columns" submenu, by position.
constexpr int kViewMenuPosition = 2;
constexpr int kColumnsMenuPosition = 0;

std::wstring WideCopy(const std::u16string& text)
{
  return Wide(text);
}

// Shows `menu` at `point` (screen coordinates) with right-button tracking; the chosen
// command goes to `owner`.
void TrackMenu(HMENU menu, POINT point, HWND owner)
{
  if (menu == nullptr) return;
  TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y, owner, nullptr);
}

}  // namespace

std::optional<uint64_t> VolumeFreeBytes(const std::u16string& mountPoint)
{
  ULARGE_INTEGER totalFree{};
  if (!GetDiskFreeSpaceExW(Wide(FreeSpaceRootPath(mountPoint)), nullptr, nullptr, &totalFree)) {
    return std::nullopt;
  }
  return totalFree.QuadPart;
}

CMountedDiskView::CMountedDiskView(FreeSpaceQuery freeSpace) : freeSpace_(std::move(freeSpace)) {}

HWND CMountedDiskView::Create(HWND parent, const RECT& rect, DWORD style)
{
  return CCustomWindow::Create(parent, rect, L"", style, WS_EX_CLIENTEDGE);
}

CCustomWindow::ClassDescription CMountedDiskView::WindowClass() const
{
  return {L"Cryptelle.MountedDiskView", WC_LISTVIEWW};
}

bool CMountedDiskView::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
  switch (message) {
    case WM_CREATE:
      result = DefaultProcessing(message, wParam, lParam);
      if (result != -1) OnCreated();
      return true;
    case kSaveHeaderLayout: SaveHeaderLayout(); return true;
    case kRebuildAndRefresh:
      Rebuild(model_.Rebuild(static_cast<uint32_t>(List().ColumnCount())));
      return true;
    case WM_CONTEXTMENU: ShowContextMenu(); return true;
    case WM_LBUTTONDBLCLK:
      result = DefaultProcessing(message, wParam, lParam);
      BrowseSelected();
      return true;
    default: return CCustomWindow::HandleMessage(message, wParam, lParam, result);
  }
}

void CMountedDiskView::OnCreated()
{
  List().SetExtendedStyle(kViewExtendedStyle, kViewExtendedStyle);
  model_.Load();  // a store that cannot be read leaves the first-run layout
  Post(kRebuildAndRefresh);
  SetTimer(kFreeSpaceTimer, kFreeSpacePeriod);
}

void CMountedDiskView::OnDestroy()
{
  model_.Save();  // failures are not reported; the next run starts from what was stored
  KillTimer(kFreeSpaceTimer);
  DeleteAllRows();
}

void CMountedDiskView::Rebuild(const ColumnRebuildPlan& plan)
{
  const CListViewCtrl list = List();
  ready_ = false;
  list.SetRedraw(false);
  DeleteAllRows();
  for (const uint32_t index : plan.deletions) list.DeleteColumn(static_cast<int>(index));
  for (const ColumnInsertion& insertion : plan.insertions) {
    const int index = static_cast<int>(insertion.index);
    list.InsertColumn(index, WideCopy(LoadText(insertion.titleId)), insertion.width, index);
  }
  const std::vector<int32_t> order = ColumnOrderArray(plan);
  list.SetColumnOrderArray(std::vector<int>(order.begin(), order.end()));
  list.Header().SetSortArrow(static_cast<int>(plan.sortArrowIndex),
                             static_cast<int>(plan.sortArrowFormat));
  ready_ = true;
  Refresh();
  list.SetRedraw(true);
  InvalidateRect(hwnd_, nullptr, TRUE);
  UpdateWindow(hwnd_);
}

void CMountedDiskView::SetVisibleColumns(uint32_t mask)
{
  const std::optional<ColumnRebuildPlan> plan =
      model_.SetVisibleColumns(mask, static_cast<uint32_t>(List().ColumnCount()));
  if (plan) Rebuild(*plan);
}

void CMountedDiskView::Refresh()
{
  const CListViewCtrl list = List();
  list.SetRedraw(false);
  DeleteAllRows();
  std::vector<MountedDisk> disks;
  // A failed enumeration leaves the list empty; nothing is shown to the user.
  if (!IsFailure(CurrentDeviceHost().EnumerateDisks(&disks))) {
    for (const MountedDisk& disk : disks) AddRow(disk);
    SortRows();
  }
  list.SetRedraw(true);
}

void CMountedDiskView::DeleteAllRows()
{
  List().DeleteAllItems();
  rows_.clear();
}

void CMountedDiskView::AddRow(const MountedDisk& disk)
{
  const CListViewCtrl list = List();
  rows_.push_back(std::make_unique<MountedDisk>(disk));
  const MountedDisk& row = *rows_.back();
  const std::vector<std::u16string> texts = model_.RowTexts(row, freeSpace_(row.mountPoint));
  if (texts.empty()) return;
  const int index =
      list.InsertItem(list.ItemCount(), WideCopy(texts[0]), reinterpret_cast<LPARAM>(&row));
  for (size_t subItem = 1; subItem < texts.size(); ++subItem) {
    list.SetItemText(index, static_cast<int>(subItem), WideCopy(texts[subItem]));
  }
}

void CMountedDiskView::SortRows() const
{
  const int32_t sortColumn = model_.SortColumn();
  List().SortItems([this, sortColumn](LPARAM first, LPARAM second) {
    return CompareDiskRows(*reinterpret_cast<const MountedDisk*>(first),
                           *reinterpret_cast<const MountedDisk*>(second), sortColumn, freeSpace_);
  });
}

bool CMountedDiskView::OnTimer(UINT_PTR id)
{
  if (id != kFreeSpaceTimer) return false;
  UpdateFreeSpace();
  return true;
}

void CMountedDiskView::UpdateFreeSpace()
{
  const CListViewCtrl list = List();
  const std::optional<uint32_t> column =
      model_.FreeSpaceUpdateIndex(static_cast<size_t>(list.ItemCount()));
  if (!column) return;
  list.SetRedraw(false);
  for (int row = 0; row < list.ItemCount(); ++row) {
    const MountedDisk& disk = *RowDisk(row);
    const std::u16string text =
        ColumnCellText(DiskColumn::kFreeSpace, disk, freeSpace_(disk.mountPoint));
    list.SetItemText(row, static_cast<int>(*column), WideCopy(text));
  }
  SortRows();
  list.SetRedraw(true);
}

bool CMountedDiskView::OnReflectedNotify(NMHDR& header, LRESULT&)
{
  if (header.code != LVN_COLUMNCLICK) return false;
  // The list reports left clicks on a header item only. The columns are rebuilt once the
  // header has finished with its click.
  const auto& click = reinterpret_cast<const NMLISTVIEW&>(header);
  if (model_.ClickHeader(static_cast<uint32_t>(click.iSubItem), kHeaderLeftButton,
                         static_cast<uint32_t>(List().ColumnCount()))) {
    Post(kRebuildAndRefresh);
  }
  return true;
}

bool CMountedDiskView::OnNotify(NMHDR& header, LRESULT&)
{
  if (header.hwndFrom != List().Header().Handle()) return false;
  switch (header.code) {
    case HDN_ITEMCHANGINGW:
    case HDN_ITEMCHANGEDW:
    case HDN_ENDDRAG:
      // The header reports the new width or order only after the notification; the layout
      // is read once it has settled. Changes made by a column rebuild are not the user's.
      if (ready_) Post(kSaveHeaderLayout);
      break;
    default: break;
  }
  return false;  // the list view does its own work with every header notification
}

void CMountedDiskView::SaveHeaderLayout()
{
  const CListViewCtrl list = List();
  for (int index = 0; index < list.ColumnCount(); ++index) {
    const std::optional<ListViewColumn> column = list.Column(index);
    if (!column) continue;
    model_.StoreHeaderItem(static_cast<uint32_t>(index), static_cast<uint16_t>(column->width),
                           static_cast<uint16_t>(column->order));
  }
  InvalidateRect(hwnd_, nullptr, TRUE);
  UpdateWindow(hwnd_);
}

void CMountedDiskView::ShowContextMenu() const
{
  POINT cursor{};
  GetCursorPos(&cursor);
  RECT headerRect{};
  GetWindowRect(List().Header().Handle(), &headerRect);
  const HWND frame = GetParent(hwnd_);
  if (PtInRect(&headerRect, cursor)) {
    const CMenu mainMenu(LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDR_MAINFRAME)));
    const HMENU viewMenu = GetSubMenu(mainMenu.Get(), kViewMenuPosition);
    TrackMenu(GetSubMenu(viewMenu, kColumnsMenuPosition), cursor, frame);
    return;
  }
  const CMenu listMenu(LoadMenuW(ResourceModule(), MAKEINTRESOURCEW(IDR_DISK_CONTEXT_MENU)));
  TrackMenu(GetSubMenu(listMenu.Get(), 0), cursor, frame);
}

const MountedDisk* CMountedDiskView::RowDisk(int row) const
{
  return reinterpret_cast<const MountedDisk*>(List().ItemData(row));
}

const MountedDisk* CMountedDiskView::GetSingleSelection() const
{
  const CListViewCtrl list = List();
  if (list.SelectedCount() != 1) return nullptr;
  return RowDisk(list.NextSelected());
}

void CMountedDiskView::SelectAll() const
{
  List().SelectAll();
}

void CMountedDiskView::BrowseSelected() const
{
  const CListViewCtrl list = List();
  const HWND frame = GetParent(hwnd_);
  for (int row = list.NextSelected(); row != -1; row = list.NextSelected(row)) {
    const MountedDisk& disk = *RowDisk(row);
    if (disk.mountPoint.empty()) continue;
    if (CheckFormatted(frame, disk.mountPoint[0])) ShellOpen(frame, disk.mountPoint);
  }
}

void CMountedDiskView::DismountSelected() const
{
  const CListViewCtrl list = List();
  const HWND frame = GetParent(hwnd_);
  for (int row = list.NextSelected(); row != -1; row = list.NextSelected(row)) {
    DismountDiskFlow(frame, *RowDisk(row));
  }
}
