// In-process capture of a window as the user would see it, frame and child controls
// included. Works under Wine's null graphics driver, which has no screen to copy from: the
// window and its children are painted anew into the window's own device context first.
#pragma once

#include <windows.h>

#include "tools/screenshot/png_writer.h"

// The window's current picture; false when it cannot be taken (no window, zero size).
bool CaptureWindow(HWND window, RgbImage& image);

// Captures the window and writes it as a PNG file.
bool WriteWindowPng(HWND window, const wchar_t* path);
