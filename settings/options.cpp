#include "settings/options.h"

#include "settings/key_access.h"

namespace {

struct NamedField {
  const char16_t* name;
  uint32_t* field;
};

// Reads each named value into its field from the application key.
template <size_t count>
StatusCode ReadFields(const NamedField (&fields)[count])
{
  SettingsKeyPtr key;
  const StatusCode status = CreateUserKey(kApplicationKeyPath, &key);
  if (IsFailure(status)) return status;
  for (const NamedField& field : fields) ReadUncheckedDword(*key, field.name, field.field);
  return kStatusSuccess;
}

struct NamedValue {
  const char16_t* name;
  uint32_t value;
};

// Writes the values in the order given into the application key.
template <size_t count>
StatusCode WriteValues(const NamedValue (&values)[count])
{
  SettingsKeyPtr key;
  StatusCode status = CreateUserKey(kApplicationKeyPath, &key);
  if (IsFailure(status)) return status;
  for (const NamedValue& value : values) {
    KeepFirstFailure(&status, WriteDword(*key, value.name, value.value));
  }
  return status;
}

}  // namespace

StatusCode ReadMountDefaults(MountDefaults* defaults)
{
  return ReadFields({{u"MountAsRemovable", &defaults->removable},
                     {u"MountInvisible", &defaults->invisible},
                     {u"PrivacyMode", &defaults->privacy}});
}

StatusCode ReadGeneralOptions(GeneralOptions* options)
{
  return ReadFields({{u"MountAsRemovable", &options->removable},
                     {u"MountInvisible", &options->invisible},
                     {u"IgnoreOpenFilesOnUnmountAll", &options->ignoreOpenFiles},
                     {u"PrivacyMode", &options->privacy}});
}

StatusCode WriteGeneralOptions(const GeneralOptions& options)
{
  return WriteValues({{u"MountAsRemovable", options.removable},
                      {u"MountInvisible", options.invisible},
                      {u"IgnoreOpenFilesOnUnmountAll", options.ignoreOpenFiles},
                      {u"PrivacyMode", options.privacy}});
}

StatusCode ReadMonitorOptions(MonitorOptions* options)
{
  return ReadFields({{u"EnableMonitor", &options->enableMonitor},
                     {u"UnloadMonitorAutomatically", &options->unloadAutomatically},
                     {u"EmergencyHotKey", &options->emergencyHotKey}});
}

StatusCode WriteMonitorOptions(const MonitorOptions& options)
{
  return WriteValues({{u"EnableMonitor", options.enableMonitor},
                      {u"UnloadMonitorAutomatically", options.unloadAutomatically},
                      {u"EmergencyHotKey", options.emergencyHotKey}});
}

StatusCode ReadIgnoreOpenFiles(uint32_t* value)
{
  *value = 0;
  return ReadFields({{u"IgnoreOpenFilesOnUnmountAll", value}});
}

StatusCode ReadEnableMonitor(uint32_t* value)
{
  *value = 0;
  return ReadFields({{u"EnableMonitor", value}});
}
