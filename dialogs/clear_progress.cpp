#include "dialogs/clear_progress.h"

#include "res/resource.h"
#include "res/texts.h"

Prompt CancelClearPrompt()
{
  return Prompt{IDS_CANCEL_CLEAR, LoadText(IDS_CANCEL_CLEAR), IDS_WARNING_CAPTION, kPromptQuestion};
}
