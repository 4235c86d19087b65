#include "tools/screenshot/screenshot_tool.h"

#include <commctrl.h>
#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

#include "services/message_box.h"
#include "system/wide_text_win.h"
#include "tools/screenshot/capture.h"

namespace {

// A scene must never wait for an answer: any prompt is refused and reported.
class CRefusingMessageBox final : public CMessageBoxService {
 public:
  int Show(WindowRef, const std::u16string& text, const std::u16string&, uint32_t) override
  {
    fwprintf(stderr, L"screenshot: a scene asked \"%ls\"; answered Cancel\n", Wide(text));
    return kIdCancel;
  }
};

std::vector<std::wstring> Arguments()
{
  int count = 0;
  LPWSTR* list = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> arguments(list, list + count);
  LocalFree(list);
  return arguments;
}

void ProcessPendingMessages()
{
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

int RunScreenshotTool(std::span<const ScreenshotScene> scenes)
{
  const std::vector<std::wstring> arguments = Arguments();
  if (arguments.size() == 2 && arguments[1] == L"--list") {
    for (const ScreenshotScene& scene : scenes) wprintf(L"%ls\n", scene.name);
    return 0;
  }
  if (arguments.size() != 3) {
    fwprintf(stderr, L"usage: %ls --list | SCENE OUTPUT.png\n", arguments[0].c_str());
    return 1;
  }
  const ScreenshotScene* chosen = nullptr;
  for (const ScreenshotScene& scene : scenes) {
    if (arguments[1] == scene.name) chosen = &scene;
  }
  if (chosen == nullptr) {
    fwprintf(stderr, L"screenshot: no scene named %ls (see --list)\n", arguments[1].c_str());
    return 1;
  }

  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  CRefusingMessageBox refuse;
  ReplaceMessageBoxService(&refuse);
  const HWND window = chosen->create();
  if (window == nullptr) {
    fwprintf(stderr, L"screenshot: scene %ls was not created\n", chosen->name);
    return 2;
  }
  ProcessPendingMessages();
  if (!WriteWindowPng(window, arguments[2].c_str())) {
    fwprintf(stderr, L"screenshot: could not write %ls\n", arguments[2].c_str());
    return 3;
  }
  wprintf(L"%ls\n", arguments[2].c_str());
  return 0;
}
