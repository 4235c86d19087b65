// The option values of the application key "Software\Pellmora\Cryptelle\1.0": mount
// defaults, dismount behaviour, privacy, and the monitor program's settings.
//
// Every reader opens the application key, creating it when missing, and closes it again.
// It returns the status of that open (success when the key opened): when the key does not
// open every field keeps the value it came with, and so does each field whose value is
// missing or cannot be read. The values are read with a 4-byte query whose type is not
// checked. Writers store REG_DWORD values in the order given, and nothing when the key does
// not open; they return the first failure. Callers ignore these statuses: failures of the
// store are never shown.
#pragma once

#include <cstdint>

#include "system/status.h"

// The defaults the mount dialog starts from. Each field is left at the caller's value when
// its value is absent; the initial values are the program's defaults.
struct MountDefaults {
  uint32_t removable = 0;  // "MountAsRemovable"
  uint32_t invisible = 1;  // "MountInvisible"
  uint32_t privacy = 0;    // "PrivacyMode"
};
StatusCode ReadMountDefaults(MountDefaults* defaults);

// The General page's four options.
struct GeneralOptions {
  uint32_t removable = 0;        // "MountAsRemovable"
  uint32_t invisible = 1;        // "MountInvisible"
  uint32_t ignoreOpenFiles = 0;  // "IgnoreOpenFilesOnUnmountAll"
  uint32_t privacy = 0;          // "PrivacyMode"
};
StatusCode ReadGeneralOptions(GeneralOptions* options);
// Writes "MountAsRemovable", "MountInvisible", "IgnoreOpenFilesOnUnmountAll", "PrivacyMode".
StatusCode WriteGeneralOptions(const GeneralOptions& options);

// The Monitor page's values.
struct MonitorOptions {
  uint32_t enableMonitor = 0;        // "EnableMonitor"
  uint32_t unloadAutomatically = 0;  // "UnloadMonitorAutomatically"
  uint32_t emergencyHotKey = 0;      // "EmergencyHotKey", encoded as in settings/hot_key.h
};
StatusCode ReadMonitorOptions(MonitorOptions* options);
// Writes "EnableMonitor", "UnloadMonitorAutomatically", "EmergencyHotKey".
StatusCode WriteMonitorOptions(const MonitorOptions& options);

// The name of the registered window message that tells the monitor program its settings
// changed: posted to every top-level window after the Monitor page is saved, upon which the
// monitor reads them again.
inline constexpr char16_t kMonitorSettingsChangedMessage[] =
    u"{AB21BA1F-EAA3-4250-AD7E-7D98CBAF11E3}";

// "IgnoreOpenFilesOnUnmountAll" and "EnableMonitor" alone; `*value` is 0 when absent.
StatusCode ReadIgnoreOpenFiles(uint32_t* value);
StatusCode ReadEnableMonitor(uint32_t* value);

// The check-box state an option value shows: 1 and 2 as they are (2 is the indeterminate
// state), anything outside 0..2 as 0, unchecked.
constexpr uint32_t CheckStateOfOption(uint32_t value)
{
  return value <= 2 ? value : 0;
}
