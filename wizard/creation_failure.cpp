#include "wizard/creation_failure.h"

#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"

std::optional<Prompt> CreationFailure(StatusCode status, std::u16string_view imagePath)
{
  unsigned textId = IDS_OPERATION_FAILED;
  switch (status) {
    case kImgCancelled: return std::nullopt;
    case kSysAccessDenied: textId = IDS_CREATE_ACCESS_DENIED; break;
    case kSysWriteFault: textId = IDS_CREATE_WRITE_FAULT; break;
    case kSysDiskFull: textId = IDS_CREATE_DISK_FULL; break;
    case kSysCannotCreate: textId = IDS_CREATE_NO_PRIVILEGE; break;
    default: break;
  }
  return Prompt{textId, FormatText(LoadText(textId), {imagePath, status}), IDS_ERROR_CAPTION,
                kPromptError};
}
