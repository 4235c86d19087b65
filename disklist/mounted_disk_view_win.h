// The mounted disk view: the report list of mounted disks that fills the main frame. It
// shows one row per disk the device host reports, in the columns the column layout shows,
// sorted by the sort column; it keeps the layout between runs, refreshes the free space
// every two seconds and carries the row commands (browse, dismount selected, select all,
// the single selection for the properties, the context menus).
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "devhost/device_host_api.h"
#include "disklist/column_model.h"
#include "disklist/disk_sort.h"
#include "ui/controls/list_view.h"
#include "ui/window.h"

// The free bytes of the volume at a mount point, from the system (GetDiskFreeSpaceExW on
// its root): the volume's total free bytes, not the caller's quota.
std::optional<uint64_t> VolumeFreeBytes(const std::u16string& mountPoint);

class CMountedDiskView : public CCustomWindow {
 public:
  // The view's own messages: save the header layout, and rebuild the columns and refresh.
  static constexpr UINT kSaveHeaderLayout = WM_USER;
  static constexpr UINT kRebuildAndRefresh = WM_USER + 1;
  // The free-space timer and its period.
  static constexpr UINT_PTR kFreeSpaceTimer = 0;
  static constexpr UINT kFreeSpacePeriod = 2000;

  // `freeSpace` answers the free bytes of a mount point (the system's by default).
  explicit CMountedDiskView(FreeSpaceQuery freeSpace = VolumeFreeBytes);

  // The list's styles: a report whose selection stays visible while the frame's menus and
  // dialogs have the focus.
  static constexpr DWORD kDefaultStyle =
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | LVS_REPORT | LVS_SHOWSELALWAYS;

  // Creates the list as a child of `parent` (the frame, which receives the commands of its
  // context menus).
  HWND Create(HWND parent, const RECT& rect, DWORD style = kDefaultStyle);

  CListViewCtrl List() const { return CListViewCtrl(hwnd_); }

  // Enumerates the mounted disks anew into the rows and sorts them.
  void Refresh();
  // Shows the columns of `mask` (a toggle command of the frame); a mask without any column
  // is refused.
  void SetVisibleColumns(uint32_t mask);
  uint32_t GetVisibleColumns() const { return model_.VisibleColumns(); }
  const ColumnModel& Columns() const { return model_; }

  // The disk of the one selected row; null when none or several rows are selected.
  const MountedDisk* GetSingleSelection() const;
  void SelectAll() const;
  // Opens each selected disk in the file manager once it holds a file system.
  void BrowseSelected() const;
  // Dismounts each selected disk in turn (not forced; asking when its volume is in use);
  // a refusal or a failure for one disk never stops the others.
  void DismountSelected() const;

 protected:
  ClassDescription WindowClass() const override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  bool OnReflectedNotify(NMHDR& header, LRESULT& result) override;
  bool OnNotify(NMHDR& header, LRESULT& result) override;
  bool OnTimer(UINT_PTR id) override;
  void OnDestroy() override;

 private:
  void OnCreated();
  void Rebuild(const ColumnRebuildPlan& plan);
  void DeleteAllRows();
  void AddRow(const MountedDisk& disk);
  void SortRows() const;
  void UpdateFreeSpace();
  void SaveHeaderLayout();
  void ShowContextMenu() const;
  const MountedDisk* RowDisk(int row) const;

  FreeSpaceQuery freeSpace_;
  ColumnModel model_;
  bool ready_ = true;
  // The rows' disks; each row's parameter points at its own.
  std::vector<std::unique_ptr<MountedDisk>> rows_;
};
