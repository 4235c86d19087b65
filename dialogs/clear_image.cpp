#include "dialogs/clear_image.h"

#include "app/clear_image.h"
#include "app/prompt.h"
#include "app/show_operation_error.h"
#include "dialogs/header_key.h"
#include "res/resource.h"
#include "res/texts.h"
#include "system/wipe.h"

namespace {

Prompt Message(unsigned textId, unsigned captionId, uint32_t flags)
{
  return Prompt{textId, LoadText(textId), captionId, flags};
}

// Asks before a long clear: "No" cancels.
StatusCode ConfirmLongClear(WindowRef owner, const ImageHandle* image)
{
  ImageProperties properties{};
  properties.recordSize = sizeof(ImageProperties);
  const StatusCode status = ImgGetProperties(image, &properties);
  if (IsFailure(status)) return status;
  if (!ClearTakesLong((properties.flags & kCreateFixed) != 0, properties.capacity)) return status;
  const Prompt question = Message(IDS_CLEAR_TAKES_LONG, IDS_WARNING_CAPTION, kPromptQuestion);
  return ShowPrompt(owner, question) == kIdYes ? status : kImgCancelled;
}

StatusCode ClearImage(WindowRef owner, const ClearImageAnswers& answers,
                      CClearProgressRun& progress)
{
  CHeaderKey key;
  StatusCode status = key.Prepare(answers.path);
  if (!IsFailure(status)) status = key.Derive(answers.password);
  if (IsFailure(status)) return status;

  ImageHandle* image = nullptr;
  status = ImgOpen(answers.path.c_str(), 0, key.Bytes(), key.Length(), &image);
  if (IsFailure(status)) return status;
  status = ConfirmLongClear(owner, image);
  if (!IsFailure(status)) status = progress.Run(owner, image);
  const StatusCode closed = ImgClose(image, 0);
  return IsFailure(status) ? status : closed;
}

}  // namespace

ClearImageAnswers::~ClearImageAnswers()
{
  WipeText(password);
}

void ClearImageCommand(WindowRef owner, CClearImageInput& input, CClearProgressRun& progress)
{
  ClearImageAnswers answers;
  if (!input.Ask(owner, answers)) return;
  const StatusCode status = ClearImage(owner, answers, progress);
  if (!IsFailure(status)) {
    ShowPrompt(owner,
               Message(IDS_IMAGE_CLEARED, IDS_OPERATION_COMPLETE_CAPTION, kPromptInformation));
    return;
  }
  const std::optional<OperationErrorChoice> failure = ClearFailure(status, answers.path);
  if (!failure.has_value()) return;  // cancelled
  while (ShowOperationError(owner, *failure)) {
  }
}
