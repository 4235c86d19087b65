#include "app/prompt_win.h"

#include <string>

#include "res/texts.h"
#include "system/wide_text_win.h"
#include "ui/message_box.h"

// The core's styles are the system's message-box flags.
static_assert(kPromptError == (MB_OK | MB_ICONERROR));
static_assert(kPromptRetryCancel == (MB_RETRYCANCEL | MB_ICONERROR));
static_assert(kPromptQuestion == (MB_YESNO | MB_ICONEXCLAMATION));
static_assert(kPromptInformation == (MB_OK | MB_ICONINFORMATION));

int ShowPrompt(HWND owner, const Prompt& prompt)
{
  return ShowMessageBox(owner, Wide(prompt.text), Wide(LoadText(prompt.captionId)), prompt.flags);
}
