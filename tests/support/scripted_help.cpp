#include "support/scripted_help.h"

#include <string>

CScriptedHelp::CScriptedHelp() : previous_(ReplaceHelpService(this)) {}

CScriptedHelp::~CScriptedHelp()
{
  ReplaceHelpService(previous_);
}

StatusCode CScriptedHelp::ShowContents(WindowRef owner)
{
  calls_.push_back({owner, true, 0});
  return answers_.Next("help contents");
}

StatusCode CScriptedHelp::ShowTopic(WindowRef owner, uint32_t context)
{
  calls_.push_back({owner, false, context});
  return answers_.Next("help topic " + std::to_string(context));
}
