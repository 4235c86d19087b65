#include "app/command_line.h"

#include <algorithm>

namespace {

char16_t FoldAscii(char16_t c)
{
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

StartRequest Dismount(const std::vector<std::u16string>& arguments)
{
  const bool forced = arguments.size() == 4 && EqualsIgnoringAsciiCase(arguments[3], u"/forced");
  StartRequest request;
  request.forced = forced ? 1 : 0;
  if (EqualsIgnoringAsciiCase(arguments[2], u"all")) {
    request.action = StartAction::kDismountAll;
  } else {
    request.action = StartAction::kDismountMountPoint;
    request.argument = arguments[2];
  }
  return request;
}

}  // namespace

bool EqualsIgnoringAsciiCase(const std::u16string& text, const std::u16string& word)
{
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](char16_t a, char16_t b) { return FoldAscii(a) == FoldAscii(b); });
}

StartRequest ReadStartRequest(const std::vector<std::u16string>& arguments)
{
  if (arguments.size() < 2) return {};
  const std::u16string& command = arguments[1];
  if (EqualsIgnoringAsciiCase(command, u"/notify")) return {StartAction::kNotify, {}, 0};
  if (EqualsIgnoringAsciiCase(command, u"/dismount") && arguments.size() > 2) {
    return Dismount(arguments);
  }
  if (EqualsIgnoringAsciiCase(command, u"/mount") && arguments.size() > 2) {
    return {StartAction::kMount, arguments[2], 0};
  }
  return {StartAction::kReject, {}, 0};
}
