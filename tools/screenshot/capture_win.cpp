#include "tools/screenshot/capture.h"

#include <cstdio>

#include "ui/handles.h"

namespace {

BOOL CALLBACK NoteChildWaitingForPaint(HWND child, LPARAM waiting)
{
  if (!GetUpdateRect(child, nullptr, FALSE)) return TRUE;
  *reinterpret_cast<bool*>(waiting) = true;
  return FALSE;
}

// Whether `window` or one of its children has a part that is still to be painted.
bool WaitsForPaint(HWND window)
{
  bool waiting = GetUpdateRect(window, nullptr, FALSE) != FALSE;
  if (!waiting)
    EnumChildWindows(window, NoteChildWaitingForPaint, reinterpret_cast<LPARAM>(&waiting));
  return waiting;
}

}  // namespace

bool CaptureWindow(HWND window, RgbImage& image)
{
  RECT rect{};
  if (!IsWindow(window) || !GetWindowRect(window, &rect)) return false;
  const LONG width = rect.right - rect.left;
  const LONG height = rect.bottom - rect.top;
  if (width <= 0 || height <= 0) return false;

  // PrintWindow leaves child controls out; repainting everything and copying from the
  // window's DC gets them.
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
  // A window of another thread (a message box in its own modal loop) paints when that
  // thread gets to it: wait for it, for two seconds at the most. Its update region empties
  // when a paint begins, before anything is drawn: once nothing waits, a message sent to it
  // returns only when that thread is back in its message loop, every paint it began
  // finished.
  for (int wait = 0; wait < 200 && WaitsForPaint(window); ++wait) Sleep(10);
  SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 2000, nullptr);
  const CWindowDc source(window, CWindowDc::Area::kWholeWindow);
  const CMemoryDc target(CreateCompatibleDC(source.Get()));
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // rows from top to bottom
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  const CBitmap bitmap(CreateDIBSection(target.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!target || !bitmap || bits == nullptr) return false;
  {
    const CSelectObject selected(target.Get(), bitmap.Get());
    if (!BitBlt(target.Get(), 0, 0, width, height, source.Get(), 0, 0, SRCCOPY)) return false;
    GdiFlush();
  }
  image.width = static_cast<uint32_t>(width);
  image.height = static_cast<uint32_t>(height);
  const size_t count = image.width * static_cast<size_t>(image.height);
  image.pixels.resize(count * 3);
  const auto* bgrx = static_cast<const uint8_t*>(bits);
  for (size_t pixel = 0; pixel < count; ++pixel) {
    image.pixels[pixel * 3] = bgrx[pixel * 4 + 2];
    image.pixels[pixel * 3 + 1] = bgrx[pixel * 4 + 1];
    image.pixels[pixel * 3 + 2] = bgrx[pixel * 4];
  }
  return true;
}

bool WriteWindowPng(HWND window, const wchar_t* path)
{
  RgbImage image;
  if (!CaptureWindow(window, image)) return false;
  const std::vector<uint8_t> png = EncodePng(image);
  if (png.empty()) return false;
  FILE* file = _wfopen(path, L"wb");
  if (file == nullptr) return false;
  const bool written = fwrite(png.data(), 1, png.size(), file) == png.size();
  return fclose(file) == 0 && written;
}
