#include "tools/messages/messages.h"

#include "app/operation_error.h"
#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"
#include "system/utf.h"
#include "wizard/creation_failure.h"

namespace {

std::string Utf8(const std::u16string& text)
{
  return Utf16ToUtf8(text.c_str());
}

// The tool has no device host to start: for the not-running code it prints only the code.
std::string ChoiceText(const OperationErrorChoice& choice)
{
  return choice.startDeviceHost ? std::string() : Utf8(choice.prompt.text);
}

}  // namespace

std::string ProgramText(unsigned id)
{
  return Utf8(LoadText(id));
}

std::string FailureMessage(Activity activity, StatusCode status, const std::string& image)
{
  const std::u16string subject = Utf8ToUtf16(image);
  switch (activity) {
    case Activity::kCreate: {
      const std::optional<Prompt> prompt = CreationFailure(status, subject);
      return prompt ? Utf8(prompt->text) : std::string();
    }
    case Activity::kChangePassword: return ChoiceText(ChangePasswordFailure(status, subject));
    case Activity::kClear: {
      const std::optional<OperationErrorChoice> choice = ClearFailure(status, subject);
      return choice ? ChoiceText(*choice) : std::string();
    }
    case Activity::kOpen:
    default:
      return ChoiceText(
          ChooseOperationError(status, IDS_ERROR_CAPTION, IDS_OPERATION_FAILED, subject));
  }
}

std::string FailureReport(Activity activity, StatusCode status, const std::string& image)
{
  std::string message = FailureMessage(activity, status, image);
  const std::string codeLine = Utf8(FormatText(u"Error code: %X", {status}));
  if (message.find(codeLine) == std::string::npos) {
    if (!message.empty()) message += "\n";
    message += codeLine;
  }
  return message;
}
