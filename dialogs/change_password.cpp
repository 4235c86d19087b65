#include "dialogs/change_password.h"

#include "app/show_operation_error.h"
#include "dialogs/header_key.h"
#include "image/image.h"
#include "res/resource.h"
#include "system/wipe.h"

Prompt PasswordChangedPrompt()
{
  return MakePrompt(IDS_PASSWORD_CHANGED, IDS_OPERATION_COMPLETE_CAPTION, kPromptInformation, {});
}

NewPasswordAnswers::~NewPasswordAnswers()
{
  WipeText(oldPassword);
  WipeText(newPassword);
}

StatusCode ChangeImagePassword(const std::u16string& path, std::u16string_view oldPassword,
                               std::u16string_view newPassword)
{
  CHeaderKey key;
  StatusCode status = key.Prepare(path);
  if (!IsFailure(status)) status = key.Derive(oldPassword);
  if (IsFailure(status)) return status;

  ImageHandle* image = nullptr;
  status = ImgOpen(path.c_str(), 0, key.Bytes(), key.Length(), &image);
  if (IsFailure(status)) return status;
  status = key.Derive(newPassword);
  if (!IsFailure(status)) status = ImgChangeKey(image, key.Bytes(), key.Length());
  const StatusCode closed = ImgClose(image, 0);
  return IsFailure(status) ? status : closed;
}

void ChangePasswordCommand(WindowRef owner, CNewPasswordInput& input)
{
  NewPasswordAnswers answers;
  if (!input.Ask(owner, answers)) return;
  const StatusCode status =
      ChangeImagePassword(answers.path, answers.oldPassword, answers.newPassword);
  if (!IsFailure(status)) {
    ShowPrompt(owner, PasswordChangedPrompt());
    return;
  }
  const OperationErrorChoice failure = ChangePasswordFailure(status, answers.path);
  while (ShowOperationError(owner, failure)) {
  }
}
