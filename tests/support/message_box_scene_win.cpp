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
    if (box != nullptr && IsWindowVisible(box)) return box;
    Sleep(25);
  }
  return nullptr;
}
