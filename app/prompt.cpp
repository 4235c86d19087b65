#include "app/prompt.h"

#include "res/texts.h"

Prompt MakePrompt(unsigned textId, unsigned captionId, uint32_t flags,
                  std::initializer_list<TextArg> args)
{
  return Prompt{textId, FormatText(LoadText(textId), args), captionId, flags};
}

int ShowPrompt(WindowRef owner, const Prompt& prompt)
{
  return ShowMessageBox(owner, prompt.text, LoadText(prompt.captionId), prompt.flags);
}
