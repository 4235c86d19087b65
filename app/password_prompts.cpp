#include "app/password_prompts.h"

#include "res/resource.h"
#include "res/texts.h"

namespace {

Prompt InvalidPassword(unsigned textId)
{
  return Prompt{textId, LoadText(textId), IDS_INVALID_PASSWORD_CAPTION, kPromptError};
}

}  // namespace

Prompt EnterPasswordPrompt()
{
  return InvalidPassword(IDS_ENTER_PASSWORD);
}

Prompt PasswordMismatchPrompt()
{
  return InvalidPassword(IDS_PASSWORD_MISMATCH);
}
