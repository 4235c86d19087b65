// Replaces the process-start service for its lifetime: records every request and answers
// from a script (a status and, for a failure, the system's text for it). A start without a
// scripted answer fails the test and gets kSysGeneralFailure; answers left unused at the
// end fail it too.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "services/process.h"
#include "support/answer_script.h"

class CScriptedProcesses final : public CProcessService {
 public:
  struct Answer {
    StatusCode status;
    std::u16string failureText;
  };

  CScriptedProcesses();
  ~CScriptedProcesses() override;
  CScriptedProcesses(const CScriptedProcesses&) = delete;
  CScriptedProcesses& operator=(const CScriptedProcesses&) = delete;

  void AnswerStart(StatusCode status, std::u16string failureText = {})
  {
    answers_.Push({status, std::move(failureText)});
  }
  const std::vector<ProcessStartRequest>& Requests() const { return requests_; }

  StatusCode Start(const ProcessStartRequest& request, std::u16string* failureText) override;

 private:
  CProcessService* previous_;
  CAnswerScript<Answer> answers_{"process-start", {kSysGeneralFailure, {}}};
  std::vector<ProcessStartRequest> requests_;
};
