#include "app/prompt.h"

#include "res/texts.h"

int ShowPrompt(WindowRef owner, const Prompt& prompt)
{
  return ShowMessageBox(owner, prompt.text, LoadText(prompt.captionId), prompt.flags);
}
