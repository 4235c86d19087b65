#include "ui/controls/header.h"

int CHeaderCtrl::Format(int index) const
{
  HDITEMW item{};
  item.mask = HDI_FORMAT;
  if (Send(HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) == 0) {
    return 0;
  }
  return item.fmt;
}

bool CHeaderCtrl::SetSortArrow(int index, int arrow) const
{
  HDITEMW item{};
  item.mask = HDI_FORMAT;
  if (Send(HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) == 0) {
    return false;
  }
  item.fmt = (item.fmt & ~(HDF_SORTUP | HDF_SORTDOWN)) | (arrow & (HDF_SORTUP | HDF_SORTDOWN));
  return Send(HDM_SETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) != 0;
}

std::vector<int> CHeaderCtrl::OrderArray() const
{
  std::vector<int> order(static_cast<size_t>(ItemCount()));
  if (order.empty()) return order;
  if (Send(HDM_GETORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data())) == 0) {
    order.clear();
  }
  return order;
}
