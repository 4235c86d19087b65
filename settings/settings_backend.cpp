#include "settings/settings_backend.h"

namespace {

SettingsBackend* installed = nullptr;

}  // namespace

SettingsBackend& CurrentSettingsBackend()
{
  return installed != nullptr ? *installed : PlatformSettingsBackend();
}

SettingsBackend* SetSettingsBackend(SettingsBackend* backend)
{
  SettingsBackend* previous = installed;
  installed = backend;
  return previous;
}
