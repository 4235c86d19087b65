// The one message-box service: every prompt of the program is shown through it, so tests
// replace it (record what would be shown, answer from a script) instead of meeting a modal
// box that nobody can close.
#pragma once

#include <cstdint>
#include <string>

#include "services/window_ref.h"

// Buttons and icons of a box (the system's MB_* values).
inline constexpr uint32_t kMbOk = 0x00;
inline constexpr uint32_t kMbOkCancel = 0x01;
inline constexpr uint32_t kMbYesNo = 0x04;
inline constexpr uint32_t kMbRetryCancel = 0x05;
inline constexpr uint32_t kMbIconError = 0x10;
inline constexpr uint32_t kMbIconQuestion = 0x20;
inline constexpr uint32_t kMbIconExclamation = 0x30;
inline constexpr uint32_t kMbIconInformation = 0x40;

// The button the user chose (the system's ID* values).
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;
inline constexpr int kIdRetry = 4;
inline constexpr int kIdYes = 6;
inline constexpr int kIdNo = 7;

class CMessageBoxService {
 public:
  // Shows `text` under `caption` with the kMb* `flags` and returns the button chosen.
  virtual int Show(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                   uint32_t flags) = 0;

 protected:
  virtual ~CMessageBoxService() = default;
};

// Shows a message box through the current service.
int ShowMessageBox(WindowRef owner, const std::u16string& text, const std::u16string& caption,
                   uint32_t flags);
// The same with the text and the caption taken from the string table.
int ShowMessageBox(WindowRef owner, unsigned textId, unsigned captionId, uint32_t flags);

// Makes `service` the current service and returns the previous one; null restores the
// system's message box (and the system's is returned as null).
CMessageBoxService* ReplaceMessageBoxService(CMessageBoxService* service);
