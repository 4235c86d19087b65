// The screenshot program's body: it creates one named scene (a window or dialog of the
// program, filled with sample data) and writes its picture as a PNG file. Each executable
// that owns screens lists its scenes and calls RunScreenshotTool from its entry point.
//
//   <program> --list               prints the scene names, one per line
//   <program> SCENE OUTPUT.png     captures the scene into OUTPUT.png
#pragma once

#include <windows.h>

#include <span>

struct ScreenshotScene {
  const wchar_t* name;
  // Creates the scene's window (visible, modeless) and returns it; null on failure. The
  // window's object must outlive the capture (a static object does).
  HWND (*create)();
};

// Exit codes: 0 written, 1 bad arguments or unknown scene, 2 scene not created, 3 capture or
// file failure.
int RunScreenshotTool(std::span<const ScreenshotScene> scenes);
