#include "tools/ctellimg/messages.h"

#include <cstdio>

#include "res/resource.h"
#include "res/texts.h"
#include "system/utf.h"

namespace {

std::string Hex(StatusCode status)
{
  char text[16];
  std::snprintf(text, sizeof text, "%X", status);
  return text;
}

// The texts hold "%s" for the path and "%X" for the code; a path may itself hold either,
// so each is put in once, from the left, and the inserted text is not looked at again.
std::string Fill(const std::string& format, const std::string& image, StatusCode status)
{
  std::string text;
  for (size_t i = 0; i < format.size(); ++i) {
    if (format.compare(i, 2, "%s") == 0) {
      text += image;
      ++i;
    } else if (format.compare(i, 2, "%X") == 0) {
      text += Hex(status);
      ++i;
    } else {
      text += format[i];
    }
  }
  return text;
}

// The string id of the program's own text for a failed open; 0 when it has none.
unsigned OpenText(StatusCode status)
{
  switch (status) {
    case kSysAccessDenied: return IDS_OPEN_ACCESS_DENIED;
    case kImgInvalidPassword:
    case kImgWrongPassword: return IDS_OPEN_WRONG_PASSWORD;
    case kImgVolumeMissing: return IDS_OPEN_VOLUME_MISSING;
    default: return 0;
  }
}

unsigned CreateText(StatusCode status)
{
  switch (status) {
    case kSysAccessDenied: return IDS_CREATE_ACCESS_DENIED;
    case kSysWriteFault: return IDS_CREATE_WRITE_FAULT;
    case kSysDiskFull: return IDS_CREATE_DISK_FULL;
    case kSysCannotCreate: return IDS_CREATE_NO_PRIVILEGE;
    default: return 0;
  }
}

// The program's own text when it has one, else the fallback, filled in.
std::string Message(unsigned own, unsigned fallback, const std::string& image, StatusCode status)
{
  return Fill(ProgramText(own != 0 ? own : fallback), image, status);
}

}  // namespace

std::string ProgramText(unsigned id)
{
  return Utf16ToUtf8(LoadText(id).c_str());
}

std::string FailureMessage(Activity activity, StatusCode status, const std::string& image)
{
  switch (activity) {
    case Activity::kCreate:
      if (status == kImgCancelled) return std::string();
      return Message(CreateText(status), IDS_OPERATION_FAILED, image, status);
    case Activity::kChangePassword:
      return Message(OpenText(status), IDS_CANNOT_CHANGE_PASSWORD, image, status);
    case Activity::kClear: return Message(OpenText(status), IDS_CLEAR_FAILED, image, status);
    case Activity::kOpen:
    default: return Message(OpenText(status), IDS_OPERATION_FAILED, image, status);
  }
}

std::string FailureReport(Activity activity, StatusCode status, const std::string& image)
{
  std::string message = FailureMessage(activity, status, image);
  const std::string codeLine = "Error code: " + Hex(status);
  if (message.find(codeLine) == std::string::npos) {
    if (!message.empty()) message += "\n";
    message += codeLine;
  }
  return message;
}
