// Replaces the shell service for its lifetime: records every call in order and answers each
// kind of call from its own script. A call without a scripted answer fails the test and
// gets a failure (kSysGeneralFailure, or kShFmtError for a format); answers left unused at
// the end fail it too.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "services/shell.h"
#include "support/answer_script.h"

class CScriptedShell final : public CShellService {
 public:
  enum class Kind { kOpen, kLookAt, kFormatDrive, kPrepareForWrite, kSpecialFolder };
  struct Call {
    Kind kind;
    WindowRef owner = nullptr;
    std::u16string path = {};  // the target, the looked-at or prepared path
    unsigned drive = 0;        // format: drive number, format id, options
    unsigned formatId = 0;
    unsigned options = 0;
    uint32_t flags = 0;  // prepare for write
    int csidl = 0;       // special folder
  };
  struct FolderAnswer {
    StatusCode status;
    std::u16string path;
  };

  CScriptedShell();
  ~CScriptedShell() override;
  CScriptedShell(const CScriptedShell&) = delete;
  CScriptedShell& operator=(const CScriptedShell&) = delete;

  void AnswerOpen(StatusCode status) { opens_.Push(status); }
  void AnswerLookAt(StatusCode status) { lookAts_.Push(status); }
  void AnswerFormatDrive(uint32_t result) { formats_.Push(result); }
  void AnswerPrepareForWrite(StatusCode status) { prepares_.Push(status); }
  void AnswerSpecialFolder(StatusCode status, std::u16string path = {})
  {
    folders_.Push({status, std::move(path)});
  }
  const std::vector<Call>& Calls() const { return calls_; }

  StatusCode Open(WindowRef owner, const std::u16string& target) override;
  StatusCode LookAt(const std::u16string& path) override;
  uint32_t FormatDrive(WindowRef owner, unsigned drive, unsigned formatId,
                       unsigned options) override;
  StatusCode PrepareForWrite(WindowRef owner, const std::u16string& path, uint32_t flags) override;
  StatusCode SpecialFolder(int csidl, std::u16string* path) override;

 private:
  CShellService* previous_;
  CAnswerScript<StatusCode> opens_{"shell-open", kSysGeneralFailure};
  CAnswerScript<StatusCode> lookAts_{"shell-look-at", kSysGeneralFailure};
  CAnswerScript<uint32_t> formats_{"format-drive", kShFmtError};
  CAnswerScript<StatusCode> prepares_{"prepare-for-write", kSysGeneralFailure};
  CAnswerScript<FolderAnswer> folders_{"special-folder", {kSysGeneralFailure, {}}};
  std::vector<Call> calls_;
};
