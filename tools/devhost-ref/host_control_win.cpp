#include "tools/devhost-ref/host_control_win.h"

#include <windows.h>

#include <mutex>

namespace {

constexpr wchar_t kControlKey[] = L"Software\\Pellmora\\DeviceHost";

// Serialises the host's read-modify-write of a fault counter across its RPC threads.
std::mutex countdownMutex;

}  // namespace

uint32_t ReadControlNumber(const wchar_t* name)
{
  DWORD value = 0;
  DWORD size = sizeof value;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kControlKey, name, RRF_RT_REG_DWORD, nullptr, &value,
                   &size) != ERROR_SUCCESS) {
    return 0;
  }
  return value;
}

std::wstring ReadControlText(const wchar_t* name)
{
  wchar_t text[512];
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kControlKey, name, RRF_RT_REG_SZ, nullptr, text, &size) !=
      ERROR_SUCCESS) {
    return {};
  }
  return text;
}

void WriteControlNumber(const wchar_t* name, uint32_t value)
{
  const DWORD data = value;
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kControlKey, name, REG_DWORD, &data, sizeof data);
}

void WriteControlText(const wchar_t* name, const std::wstring& text)
{
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kControlKey, name, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

void ClearControlValues()
{
  for (const wchar_t* name : {kControlNotStartedCalls, kControlInUse, kControlStartDelay,
                              kControlLastCall, kControlLastFormat}) {
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kControlKey, name);
  }
}

bool TakeNotStartedAnswer()
{
  std::lock_guard<std::mutex> lock(countdownMutex);
  const uint32_t remaining = ReadControlNumber(kControlNotStartedCalls);
  if (remaining == 0) return false;
  WriteControlNumber(kControlNotStartedCalls, remaining - 1);
  return true;
}
