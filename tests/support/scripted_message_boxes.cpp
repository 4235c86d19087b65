#include "support/scripted_message_boxes.h"

#include "system/utf.h"

CScriptedMessageBoxes::CScriptedMessageBoxes() : previous_(ReplaceMessageBoxService(this)) {}

CScriptedMessageBoxes::~CScriptedMessageBoxes()
{
  ReplaceMessageBoxService(previous_);
}

int CScriptedMessageBoxes::Show(WindowRef owner, const std::u16string& text,
                                const std::u16string& caption, uint32_t flags)
{
  prompts_.push_back({owner, text, caption, flags});
  return answers_.Next("message box: \"" + Utf16ToUtf8(caption.c_str()) + "\" \"" +
                       Utf16ToUtf8(text.c_str()) + "\"");
}
