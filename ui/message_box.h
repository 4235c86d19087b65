// The one message-box service: every prompt of the program is shown through it, so tests
// replace it (record what would be shown, answer from a script) instead of meeting a modal
// box that nobody can close.
#pragma once

#include <windows.h>

#include <string>

class CMessageBoxService {
 public:
  // Shows `text` under `caption` with MB_* `flags` and returns the button chosen (IDOK...).
  virtual int Show(HWND owner, const std::wstring& text, const std::wstring& caption,
                   UINT flags) = 0;

 protected:
  virtual ~CMessageBoxService() = default;
};

// Shows a message box through the current service.
int ShowMessageBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT flags);
// The same with the text and the caption taken from the string table.
int ShowMessageBox(HWND owner, UINT textId, UINT captionId, UINT flags);

// Makes `service` the current service and returns the previous one; null restores the
// system's message box.
CMessageBoxService* ReplaceMessageBoxService(CMessageBoxService* service);
