#include "support/message_box_scene_win.h"

#include <string>
#include <thread>

#include "res/texts.h"
#include "system/wide_text_win.h"

HWND MessageBoxOf(const Prompt& prompt)
{
  // The box's thread outlives this call: what it shows is kept for the program's life.
  static Prompt shown;
  static std::u16string caption;
  shown = prompt;
  caption = LoadText(prompt.captionId);
  std::thread([] { MessageBoxW(nullptr, Wide(shown.text), Wide(caption), shown.flags); }).detach();
  for (int attempt = 0; attempt < 200; ++attempt) {
    const HWND box = FindWindowW(L"#32770", Wide(caption));
    if (box != nullptr && IsWindowVisible(box)) {
      // The box's thread answers only once it waits in the box's message loop.
      SendMessageTimeoutW(box, WM_NULL, 0, 0, SMTO_NORMAL, 2000, nullptr);
      return box;
    }
    Sleep(25);
  }
  return nullptr;
}
