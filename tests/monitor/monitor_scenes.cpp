// The screenshot program of the monitor: its tray menu as it opens. The menu exists only
// inside the system's menu loop, so the scene opens it, captures the menu's window when the
// loop first waits, ends the loop, and shows that picture in a window of its own for the
// screenshot tool. And the monitor's message box as the system shows it.
#include <windows.h>

#include <array>

#include "monitor/monitor.h"
#include "monitor/monitor_window_win.h"
#include "support/message_box_scene_win.h"
#include "tools/screenshot/capture.h"
#include "tools/screenshot/screenshot_tool.h"

namespace {

RgbImage menuPicture;

LRESULT CALLBACK MenuOwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  if (message == WM_ENTERIDLE && wParam == MSGF_MENU) {
    CaptureWindow(reinterpret_cast<HWND>(lParam), menuPicture);
    EndMenu();
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK PictureProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window, &paint);
  std::vector<uint8_t> bgrx(menuPicture.pixels.size() / 3 * 4);
  for (size_t pixel = 0; pixel < bgrx.size() / 4; ++pixel) {
    bgrx[pixel * 4] = menuPicture.pixels[pixel * 3 + 2];
    bgrx[pixel * 4 + 1] = menuPicture.pixels[pixel * 3 + 1];
    bgrx[pixel * 4 + 2] = menuPicture.pixels[pixel * 3];
  }
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = static_cast<LONG>(menuPicture.width);
  info.bmiHeader.biHeight = -static_cast<LONG>(menuPicture.height);
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetDIBitsToDevice(dc, 0, 0, menuPicture.width, menuPicture.height, 0, 0, 0, menuPicture.height,
                    bgrx.data(), &info, DIB_RGB_COLORS);
  EndPaint(window, &paint);
  return 0;
}

HWND CreatePlainWindow(const wchar_t* className, WNDPROC procedure, DWORD style, int width,
                       int height)
{
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = className;
  RegisterClassW(&windowClass);
  return CreateWindowExW(0, className, L"", style, 0, 0, width, height, nullptr, nullptr,
                         windowClass.hInstance, nullptr);
}

HWND TrayMenu()
{
  const HWND owner = CreatePlainWindow(L"Cryptelle.Scene.MenuOwner", MenuOwnerProc, WS_POPUP, 0, 0);
  const CMenu menu = LoadTrayMenu();
  if (owner == nullptr || !menu) return nullptr;
  TrackPopupMenu(GetSubMenu(menu.Get(), 0), TPM_RIGHTBUTTON, 0, 0, 0, owner, nullptr);
  DestroyWindow(owner);
  if (menuPicture.width == 0) return nullptr;
  return CreatePlainWindow(L"Cryptelle.Scene.Picture", PictureProc, WS_POPUP | WS_VISIBLE,
                           static_cast<int>(menuPicture.width),
                           static_cast<int>(menuPicture.height));
}

// The tray menu's "open" when Cryptelle cannot be started.
HWND CannotStartProgramMessage()
{
  return MessageBoxOf(ProgramStartFailure(u"The system cannot find the file specified.\r\n"));
}

constexpr std::array<ScreenshotScene, 2> kScenes = {{
    {L"monitor-tray-menu", TrayMenu},
    {L"message-cannot-start-program", CannotStartProgramMessage},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}
