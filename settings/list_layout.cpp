#include "settings/list_layout.h"

#include "settings/key_access.h"

namespace {

void ColumnsToBytes(const ListLayout& layout, uint8_t* bytes)
{
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    std::memcpy(bytes + 4 * column, &layout.columns[column].width, 2);
    std::memcpy(bytes + 4 * column + 2, &layout.columns[column].order, 2);
  }
}

void ColumnsFromBytes(const uint8_t* bytes, ListLayout* layout)
{
  for (uint32_t column = 0; column < kListColumnCount; ++column) {
    std::memcpy(&layout->columns[column].width, bytes + 4 * column, 2);
    std::memcpy(&layout->columns[column].order, bytes + 4 * column + 2, 2);
  }
}

}  // namespace

StatusCode ReadListLayout(ListLayout* layout)
{
  SettingsKeyPtr key;
  const StatusCode status = CreateUserKey(kApplicationKeyPath, &key);
  if (IsFailure(status)) return status;
  uint8_t columns[kColumnPosSize];
  ColumnsToBytes(*layout, columns);
  QueryInto(*key, u"ColumnPos", columns, sizeof columns, nullptr);
  ColumnsFromBytes(columns, layout);
  ReadUncheckedDword(*key, u"VisibleColumns", &layout->visibleColumns);
  int32_t sortColumn = layout->sortColumn;
  uint32_t type = kValueNone;
  if (!IsFailure(QueryInto(*key, u"SortColumn", &sortColumn, sizeof sortColumn, &type)) &&
      type == kValueDword) {
    layout->sortColumn = sortColumn;
  }
  return kStatusSuccess;
}

StatusCode WriteListLayout(const ListLayout& layout)
{
  SettingsKeyPtr key;
  StatusCode status = CreateUserKey(kApplicationKeyPath, &key);
  if (IsFailure(status)) return status;
  uint8_t columns[kColumnPosSize];
  ColumnsToBytes(layout, columns);
  KeepFirstFailure(&status, key->SetValue(u"ColumnPos", kValueBinary, columns, sizeof columns));
  KeepFirstFailure(&status, WriteDword(*key, u"VisibleColumns", layout.visibleColumns));
  KeepFirstFailure(&status,
                   WriteDword(*key, u"SortColumn", static_cast<uint32_t>(layout.sortColumn)));
  return status;
}
