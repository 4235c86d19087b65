// The smallest windowed program: one top-level window that paints its background, as the
// yardstick of the start-up benchmark.
#include <windows.h>

namespace {

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT paint;
      const HDC dc = BeginPaint(window, &paint);
      FillRect(dc, &paint.rcPaint, GetSysColorBrush(COLOR_WINDOW));
      EndPaint(window, &paint);
      return 0;
    }
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int showCommand)
{
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = WindowProc;
  windowClass.hInstance = instance;
  windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
  windowClass.lpszClassName = L"OneWindow";
  RegisterClassExW(&windowClass);
  const HWND window = CreateWindowExW(
      0, windowClass.lpszClassName, L"One Window", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
  ShowWindow(window, showCommand);
  UpdateWindow(window);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}
