#include "support/scripted_file_dialogs.h"

#include "system/utf.h"

CScriptedFileDialogs::CScriptedFileDialogs() : previous_(ReplaceFileDialogService(this)) {}

CScriptedFileDialogs::~CScriptedFileDialogs()
{
  ReplaceFileDialogService(previous_);
}

std::optional<FileDialogChoice> CScriptedFileDialogs::ChooseFileToOpen(
    const FileDialogRequest& request)
{
  return Answer(Kind::kOpen, request);
}

std::optional<FileDialogChoice> CScriptedFileDialogs::ChooseFileToSave(
    const FileDialogRequest& request)
{
  return Answer(Kind::kSave, request);
}

std::optional<FileDialogChoice> CScriptedFileDialogs::Answer(Kind kind,
                                                             const FileDialogRequest& request)
{
  calls_.push_back({kind, request});
  return answers_.Next(std::string(kind == Kind::kOpen ? "open" : "save") +
                       "-file dialog starting at \"" + Utf16ToUtf8(request.fileName.c_str()) +
                       "\"");
}
