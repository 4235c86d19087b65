#include "tools/ctellimg/messages.h"

#include <cstdio>

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

// How an open of the image failed, in the program's words; empty when it has no own text.
const char* OpenText(StatusCode status)
{
  switch (status) {
    case kSysAccessDenied: return "Cannot open %s.\nAccess denied.";
    case kImgInvalidPassword:
    case kImgWrongPassword:
      return "Cannot open %s.\nPassword is wrong or the virtual disk image file is not valid or "
             "is corrupted.";
    case kImgVolumeMissing: return "Cannot open %s.\nVirtual disk image volume file is missing.";
    default: return "";
  }
}

const char* CreateText(StatusCode status)
{
  switch (status) {
    case kSysAccessDenied: return "Cannot create %s. Access denied.";
    case kSysWriteFault:
      return "Cannot write data to %s.\nPlease check that there target drive is not write "
             "protected and has enough free space.";
    case kSysDiskFull: return "Cannot create %s.\nTarget drive does not have enough free space.";
    case kSysCannotCreate:
      return "Cannot create %s.\nPlease check that you have necessary privileges to create a file "
             "in the target directory.";
    default: return "";
  }
}

constexpr char kGeneralText[] =
    "Operation failed.\nError code: %X\n\nPlease contact technical support if the problem "
    "persists.";

}  // namespace

std::string FailureMessage(Activity activity, StatusCode status, const std::string& image)
{
  switch (activity) {
    case Activity::kCreate: {
      if (status == kImgCancelled) return std::string();
      const std::string own = CreateText(status);
      return Fill(own.empty() ? kGeneralText : own, image, status);
    }
    case Activity::kChangePassword: {
      const std::string own = OpenText(status);
      return Fill(own.empty() ? "Cannot change password for %s.\nError code: %X\n\nPlease contact "
                                "technical support if the problem persists."
                              : own,
                  image, status);
    }
    case Activity::kClear: {
      const std::string own = OpenText(status);
      return Fill(own.empty() ? "Clearing of image failed.\nError code: %X\n\nPlease contact "
                                "technical support if the problem persists."
                              : own,
                  image, status);
    }
    case Activity::kOpen:
    default: {
      const std::string own = OpenText(status);
      return Fill(own.empty() ? kGeneralText : own, image, status);
    }
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
