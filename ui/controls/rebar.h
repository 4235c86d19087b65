// A rebar control (ReBarWindow32): bands that hold child windows, each with an id, optionally
// on a new row and with a chevron for the part that does not fit. Non-owning.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/window.h"

class CReBarCtrl : public CWindow {
 public:
  using CWindow::CWindow;

  // Creates a rebar child window; null handle on failure.
  static CReBarCtrl Create(HWND parent, UINT id, DWORD style);

  struct Band {
    HWND child;
    UINT id;
    bool newRow;
    bool chevron;  // show a chevron when the band is narrower than its child's ideal width
  };
  // Adds a band at the end; the child is sized to its window's current height and its
  // toolbar's ideal width (for toolbars). False on failure.
  bool AddBand(const Band& band) const;

  int BandCount() const;
  // The index of the band with `id`, or -1.
  int IndexOf(UINT id) const;
  UINT BandId(int index) const;
  HWND BandChild(int index) const;
  // The height of all rows together.
  int BarHeight() const;
};
