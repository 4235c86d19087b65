#include "app/check_formatted.h"

#include <string>

#include "app/directory_probe.h"
#include "res/resource.h"
#include "services/shell.h"

namespace {

char16_t UpperCase(char16_t letter)
{
  return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
}

bool FormattedAtUsersRequest(WindowRef owner, char16_t letter)
{
  if (ShowPrompt(owner, FormatDiskPrompt(letter)) != kIdYes) return false;
  const uint32_t result =
      ShellFormatDrive(owner, static_cast<unsigned>(letter - u'A'), kShFmtIdDefault, kShFmtOptFull);
  return result != kShFmtError && result != kShFmtCancel && result != kShFmtNoFormat;
}

}  // namespace

Prompt FormatDiskPrompt(char16_t letter)
{
  return MakePrompt(IDS_FORMAT_DISK_NOW, IDS_NEEDS_FORMATTING_CAPTION, kPromptQuestion, {letter});
}

bool CheckFormatted(WindowRef owner, char16_t letter)
{
  letter = UpperCase(letter);
  const std::u16string root{letter, u':', u'\\'};
  const uint32_t error = TryCreateDirectory(root);
  if (error == kErrorAccessDenied) return true;
  if (error == kErrorUnrecognizedVolume && letter >= u'A' && letter <= u'Z') {
    return FormattedAtUsersRequest(owner, letter);
  }
  return false;
}
