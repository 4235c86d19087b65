// A message box as the screens decide it: its text, filled in, its caption and its style,
// shown through the one message-box service.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "res/format_text.h"
#include "services/message_box.h"

// The styles of the program's prompts.
inline constexpr uint32_t kPromptError = kMbOk | kMbIconError;                 // 0x10
inline constexpr uint32_t kPromptRetryCancel = kMbRetryCancel | kMbIconError;  // 0x15
inline constexpr uint32_t kPromptQuestion = kMbYesNo | kMbIconExclamation;     // 0x34
inline constexpr uint32_t kPromptInformation = kMbOk | kMbIconInformation;     // 0x40

struct Prompt {
  unsigned textId = 0;  // the string the text was filled from
  std::u16string text;
  unsigned captionId = 0;
  uint32_t flags = kPromptError;

  bool operator==(const Prompt&) const = default;
};

// The prompt of string `textId` filled with `args`, under caption `captionId`.
Prompt MakePrompt(unsigned textId, unsigned captionId, uint32_t flags,
                  std::initializer_list<TextArg> args);

// Shows `prompt` owned by `owner` (may be none) with its caption loaded from the string
// table; returns the button chosen (kIdOk, kIdRetry, kIdYes...).
int ShowPrompt(WindowRef owner, const Prompt& prompt);
