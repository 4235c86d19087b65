#include "app/frame_toolbar_win.h"

#include <algorithm>
#include <array>

#include "res/resource.h"
#include "ui/strings.h"

namespace {

// The height of the text the toolbar writes: its own font, or the default GUI font when it
// has none.
int ToolBarFontHeight(const CToolBarCtrl& toolBar)
{
  auto font = reinterpret_cast<HFONT>(toolBar.Send(WM_GETFONT));
  if (font == nullptr) font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  const HDC dc = GetDC(toolBar.Handle());
  if (dc == nullptr) return 0;
  const HGDIOBJ previous = SelectObject(dc, font);
  TEXTMETRICW metrics{};
  const bool measured = GetTextMetricsW(dc, &metrics) != FALSE;
  SelectObject(dc, previous);
  ReleaseDC(toolBar.Handle(), dc);
  return measured ? static_cast<int>(metrics.tmHeight) : 0;
}

}  // namespace

CToolBarCtrl CreateFrameToolBar(HWND frame, UINT id, bool thirtyTwoBit, CImageList& images)
{
  const CToolBarCtrl toolBar = CToolBarCtrl::Create(
      frame, id,
      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | CCS_NODIVIDER | CCS_NORESIZE |
          CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS,
      TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_HIDECLIPPEDBUTTONS);
  if (!toolBar.IsWindow()) return toolBar;

  images =
      LoadImageStrip(thirtyTwoBit ? IDB_TOOLBAR32 : IDB_TOOLBAR8, kToolBarImageWidth, thirtyTwoBit);
  const int height = std::max(ToolBarFontHeight(toolBar), kToolBarImageWidth);
  toolBar.SetBitmapSize({kToolBarImageWidth, height});
  toolBar.SetButtonSize({kToolBarButtonWidth, height + 7});
  toolBar.SetImageList(images.Get());

  const int firstText = toolBar.AddTexts(LoadResourceString(IDS_TOOLBAR_TEXTS));
  // Button `index` shows image `index` and text `index`.
  const auto button = [firstText](int index, UINT command) {
    return TBBUTTON{index,
                    static_cast<int>(command),
                    TBSTATE_ENABLED,
                    BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT,
                    {},
                    0,
                    firstText + index};
  };
  const TBBUTTON separator{0, 0, TBSTATE_ENABLED, BTNS_SEP, {}, 0, -1};
  const std::array<TBBUTTON, kFrameToolBarEntries> buttons = {button(0, ID_FILE_NEW_IMAGE),
                                                              separator,
                                                              button(1, ID_FILE_MOUNT_IMAGE),
                                                              separator,
                                                              button(2, ID_FILE_DISMOUNT),
                                                              button(3, ID_FILE_DISMOUNT_ALL),
                                                              separator,
                                                              button(4, ID_TOOLS_OPTIONS)};
  if (!toolBar.AddButtons(buttons)) {
    DestroyWindow(toolBar.Handle());
    return CToolBarCtrl();
  }
  toolBar.AutoSize();
  return toolBar;
}
