// Replaces the file-dialog service for its lifetime: records every request and answers from
// a script of choices (a path, or a cancel). A dialog without a scripted answer fails the
// test and counts as cancelled; answers left unused at the end fail it too.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "services/file_dialog.h"
#include "support/answer_script.h"

class CScriptedFileDialogs final : public CFileDialogService {
 public:
  enum class Kind { kOpen, kSave };
  struct Call {
    Kind kind;
    FileDialogRequest request;
  };

  CScriptedFileDialogs();
  ~CScriptedFileDialogs() override;
  CScriptedFileDialogs(const CScriptedFileDialogs&) = delete;
  CScriptedFileDialogs& operator=(const CScriptedFileDialogs&) = delete;

  // Queues the user's answer to the next dialog, open or save.
  void Choose(std::u16string path, unsigned filterIndex = 1)
  {
    answers_.Push(FileDialogChoice{std::move(path), filterIndex});
  }
  void Cancel() { answers_.Push(std::nullopt); }
  const std::vector<Call>& Calls() const { return calls_; }

  std::optional<FileDialogChoice> ChooseFileToOpen(const FileDialogRequest& request) override;
  std::optional<FileDialogChoice> ChooseFileToSave(const FileDialogRequest& request) override;

 private:
  std::optional<FileDialogChoice> Answer(Kind kind, const FileDialogRequest& request);

  CFileDialogService* previous_;
  CAnswerScript<std::optional<FileDialogChoice>> answers_{"file-dialog", std::nullopt};
  std::vector<Call> calls_;
};
