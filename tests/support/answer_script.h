// The queue of answers a test scripts for one kind of call to a replaced service. A call
// without a scripted answer fails the test (and gets `fallback`); answers left unused when
// the script ends fail it too.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <utility>

template <class Answer>
class CAnswerScript {
 public:
  CAnswerScript(std::string kind, Answer fallback)
      : kind_(std::move(kind)), fallback_(std::move(fallback))
  {
  }
  ~CAnswerScript()
  {
    if (!answers_.empty()) {
      ADD_FAILURE() << answers_.size() << " scripted " << kind_ << " answer(s) were not used";
    }
  }
  CAnswerScript(const CAnswerScript&) = delete;
  CAnswerScript& operator=(const CAnswerScript&) = delete;

  void Push(Answer answer) { answers_.push_back(std::move(answer)); }

  // The next answer; `call` describes the call for the failure report.
  Answer Next(const std::string& call)
  {
    if (answers_.empty()) {
      ADD_FAILURE() << "unscripted " << call;
      return fallback_;
    }
    Answer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }

 private:
  std::string kind_;
  Answer fallback_;
  std::deque<Answer> answers_;
};
