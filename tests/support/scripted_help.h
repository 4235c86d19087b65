// Replaces the help opener for its lifetime: records every request and answers from a
// script of status codes. A request without a scripted answer fails the test and gets
// kSysGeneralFailure; answers left unused at the end fail it too.
#pragma once

#include <vector>

#include "services/help.h"
#include "support/answer_script.h"

class CScriptedHelp final : public CHelpService {
 public:
  struct Call {
    WindowRef owner;
    bool contents;     // the table of contents, rather than a topic
    uint32_t context;  // the topic's context number (0 for the contents)
  };

  CScriptedHelp();
  ~CScriptedHelp() override;
  CScriptedHelp(const CScriptedHelp&) = delete;
  CScriptedHelp& operator=(const CScriptedHelp&) = delete;

  void Answer(StatusCode status) { answers_.Push(status); }
  const std::vector<Call>& Calls() const { return calls_; }

  StatusCode ShowContents(WindowRef owner) override;
  StatusCode ShowTopic(WindowRef owner, uint32_t context) override;

 private:
  CHelpService* previous_;
  CAnswerScript<StatusCode> answers_{"help", kSysGeneralFailure};
  std::vector<Call> calls_;
};
