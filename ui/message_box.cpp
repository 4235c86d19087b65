#include "ui/message_box.h"

#include <atomic>

#include "ui/strings.h"

namespace {

class CSystemMessageBox final : public CMessageBoxService {
 public:
  int Show(HWND owner, const std::wstring& text, const std::wstring& caption, UINT flags) override
  {
    return MessageBoxW(owner, text.c_str(), caption.c_str(), flags);
  }
};

CSystemMessageBox systemMessageBox;
std::atomic<CMessageBoxService*> currentService{&systemMessageBox};

}  // namespace

int ShowMessageBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT flags)
{
  return currentService.load()->Show(owner, text, caption, flags);
}

int ShowMessageBox(HWND owner, UINT textId, UINT captionId, UINT flags)
{
  return ShowMessageBox(owner, LoadResourceString(textId), LoadResourceString(captionId), flags);
}

CMessageBoxService* ReplaceMessageBoxService(CMessageBoxService* service)
{
  CMessageBoxService* const previous =
      currentService.exchange(service != nullptr ? service : &systemMessageBox);
  return previous == &systemMessageBox ? nullptr : previous;
}
