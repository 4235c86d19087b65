#include "support/scripted_processes.h"

#include "system/utf.h"

CScriptedProcesses::CScriptedProcesses() : previous_(ReplaceProcessService(this)) {}

CScriptedProcesses::~CScriptedProcesses()
{
  ReplaceProcessService(previous_);
}

StatusCode CScriptedProcesses::Start(const ProcessStartRequest& request,
                                     std::u16string* failureText)
{
  requests_.push_back(request);
  Answer answer = answers_.Next("start of \"" + Utf16ToUtf8(request.program.c_str()) + "\" \"" +
                                Utf16ToUtf8(request.commandLine.c_str()) + "\"");
  if (failureText != nullptr) *failureText = std::move(answer.failureText);
  return answer.status;
}
