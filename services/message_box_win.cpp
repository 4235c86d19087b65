#include <windows.h>

#include "services/system_services.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"

static_assert(kMbOk == MB_OK && kMbOkCancel == MB_OKCANCEL && kMbYesNo == MB_YESNO &&
              kMbRetryCancel == MB_RETRYCANCEL);
static_assert(kMbIconError == MB_ICONERROR && kMbIconQuestion == MB_ICONQUESTION &&
              kMbIconExclamation == MB_ICONEXCLAMATION && kMbIconInformation == MB_ICONINFORMATION);
static_assert(kIdOk == IDOK && kIdCancel == IDCANCEL && kIdRetry == IDRETRY && kIdYes == IDYES &&
              kIdNo == IDNO);

namespace {

class CSystemMessageBox final : public CMessageBoxService {
 public:
  int Show(WindowRef owner, const std::u16string& text, const std::u16string& caption,
           uint32_t flags) override
  {
    return MessageBoxW(ToHwnd(owner), Wide(text), Wide(caption), flags);
  }
};

}  // namespace

CMessageBoxService& SystemMessageBoxService()
{
  static CSystemMessageBox service;
  return service;
}
