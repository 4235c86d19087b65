#include "support/scripted_shell.h"

#include "system/utf.h"

namespace {

std::string Quoted(const std::u16string& text)
{
  return "\"" + Utf16ToUtf8(text.c_str()) + "\"";
}

}  // namespace

CScriptedShell::CScriptedShell() : previous_(ReplaceShellService(this)) {}

CScriptedShell::~CScriptedShell()
{
  ReplaceShellService(previous_);
}

StatusCode CScriptedShell::Open(WindowRef owner, const std::u16string& target)
{
  calls_.push_back({.kind = Kind::kOpen, .owner = owner, .path = target});
  return opens_.Next("shell open of " + Quoted(target));
}

StatusCode CScriptedShell::LookAt(const std::u16string& path)
{
  calls_.push_back({.kind = Kind::kLookAt, .path = path});
  return lookAts_.Next("shell look at " + Quoted(path));
}

uint32_t CScriptedShell::FormatDrive(WindowRef owner, unsigned drive, unsigned formatId,
                                     unsigned options)
{
  calls_.push_back({.kind = Kind::kFormatDrive,
                    .owner = owner,
                    .drive = drive,
                    .formatId = formatId,
                    .options = options});
  return formats_.Next("format of drive number " + std::to_string(drive));
}

StatusCode CScriptedShell::PrepareForWrite(WindowRef owner, const std::u16string& path,
                                           uint32_t flags)
{
  calls_.push_back({.kind = Kind::kPrepareForWrite, .owner = owner, .path = path, .flags = flags});
  return prepares_.Next("preparation for writing of " + Quoted(path));
}

StatusCode CScriptedShell::SpecialFolder(int csidl, std::u16string* path)
{
  calls_.push_back({.kind = Kind::kSpecialFolder, .csidl = csidl});
  FolderAnswer answer = folders_.Next("special folder " + std::to_string(csidl));
  if (path != nullptr) *path = std::move(answer.path);
  return answer.status;
}
