// Replaces the message-box service for its lifetime: records every prompt and answers from
// a script. A prompt without a scripted answer fails the test and is answered kIdCancel;
// answers left unused at the end fail it too.
#pragma once

#include <string>
#include <vector>

#include "services/message_box.h"
#include "support/answer_script.h"

class CScriptedMessageBoxes final : public CMessageBoxService {
 public:
  struct Prompt {
    WindowRef owner;
    std::u16string text;
    std::u16string caption;
    uint32_t flags;
  };

  CScriptedMessageBoxes();
  ~CScriptedMessageBoxes() override;
  CScriptedMessageBoxes(const CScriptedMessageBoxes&) = delete;
  CScriptedMessageBoxes& operator=(const CScriptedMessageBoxes&) = delete;

  // Queues the answer (kIdYes, kIdNo, kIdOk...) for the next prompt.
  void Answer(int button) { answers_.Push(button); }
  const std::vector<Prompt>& Prompts() const { return prompts_; }

  int Show(WindowRef owner, const std::u16string& text, const std::u16string& caption,
           uint32_t flags) override;

 private:
  CMessageBoxService* previous_;
  CAnswerScript<int> answers_{"message-box", kIdCancel};
  std::vector<Prompt> prompts_;
};
