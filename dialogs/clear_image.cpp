#include "dialogs/clear_image.h"

#include "app/clear_image.h"
#include "app/show_operation_error.h"
#include "dialogs/header_key.h"
#include "res/resource.h"
#include "system/wipe.h"

namespace {

// Asks before a long clear: "No" cancels.
StatusCode ConfirmLongClear(WindowRef owner, const ImageHandle* image)
{
  ImageProperties properties{};
  properties.recordSize = sizeof(ImageProperties);
  const StatusCode status = ImgGetProperties(image, &properties);
  if (IsFailure(status)) return status;
  if (!ClearTakesLong((properties.flags & kCreateFixed) != 0, properties.capacity)) return status;
  return ShowPrompt(owner, LongClearPrompt()) == kIdYes ? status : kImgCancelled;
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

Prompt LongClearPrompt()
{
  return MakePrompt(IDS_CLEAR_TAKES_LONG, IDS_WARNING_CAPTION, kPromptQuestion, {});
}

Prompt ImageClearedPrompt()
{
  return MakePrompt(IDS_IMAGE_CLEARED, IDS_OPERATION_COMPLETE_CAPTION, kPromptInformation, {});
}

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
    ShowPrompt(owner, ImageClearedPrompt());
    return;
  }
  const std::optional<OperationErrorChoice> failure = ClearFailure(status, answers.path);
  if (!failure.has_value()) return;  // cancelled
  while (ShowOperationError(owner, *failure)) {
  }
}
