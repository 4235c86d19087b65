#include "settings/autostart.h"

#include "settings/key_access.h"
#include "system/module_path.h"

namespace {

constexpr uint32_t kAutostartQueryBytes = 520;

}  // namespace

std::u16string MonitorProgramPathBeside(const std::u16string& executablePath)
{
  return PathBeside(executablePath, kMonitorProgramName);
}

StatusCode MonitorProgramPath(std::u16string* path)
{
  return SysGetPathBesideModule(kMonitorProgramName, path);
}

std::u16string AutostartText(const std::u16string& monitorPath)
{
  return u"\"" + monitorPath + u"\"";
}

StatusCode ReadAutostartValue(std::u16string* value)
{
  value->clear();
  SettingsKeyPtr key;
  const StatusCode status = OpenUserKey(kRunKeyPath, &key);
  if (IsFailure(status)) return status;
  char16_t text[kAutostartQueryBytes / 2] = {};
  uint32_t size = sizeof text;
  uint32_t type = kValueNone;
  if (IsFailure(key->QueryValue(kAutostartValueName, &type, text, &size))) return kStatusSuccess;
  if (type != kValueString && type != kValueExpandString) return kStatusSuccess;
  *value = TextBeforeTerminator(text, size / 2);
  return kStatusSuccess;
}

StatusCode ReadAutostartEnabled(bool* enabled)
{
  *enabled = false;
  std::u16string monitor;
  StatusCode status = MonitorProgramPath(&monitor);
  if (IsFailure(status)) return status;
  std::u16string value;
  status = ReadAutostartValue(&value);
  *enabled = value == AutostartText(monitor);
  return status;
}

StatusCode WriteAutostartValue(bool enabled)
{
  SettingsKeyPtr key;
  StatusCode status = CreateUserKey(kRunKeyPath, &key);
  if (IsFailure(status)) return status;
  if (!enabled) return key->DeleteValue(kAutostartValueName);
  std::u16string monitor;
  status = MonitorProgramPath(&monitor);
  if (IsFailure(status)) return status;
  const std::u16string text = AutostartText(monitor);
  return key->SetValue(kAutostartValueName, kValueString, text.c_str(),
                       static_cast<uint32_t>((text.size() + 1) * sizeof(char16_t)));
}
