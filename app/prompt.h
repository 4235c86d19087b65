// A message box as the screens decide it: its text, filled in, its caption and its style.
// The window side shows it through the message-box service without changing anything.
#pragma once

#include <cstdint>
#include <string>

// Message-box styles, in the system's message-box flag values.
inline constexpr uint32_t kPromptError = 0x10;        // error icon, OK
inline constexpr uint32_t kPromptRetryCancel = 0x15;  // error icon, Retry and Cancel
inline constexpr uint32_t kPromptQuestion = 0x34;     // warning icon, Yes and No
inline constexpr uint32_t kPromptInformation = 0x40;  // information icon, OK

struct Prompt {
  unsigned textId = 0;  // the string the text was filled from
  std::u16string text;
  unsigned captionId = 0;
  uint32_t flags = kPromptError;

  bool operator==(const Prompt&) const = default;
};
