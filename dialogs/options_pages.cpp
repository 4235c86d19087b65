#include "dialogs/options_pages.h"

#include "app/monitor_control.h"
#include "res/resource.h"
#include "settings/autostart.h"
#include "settings/hot_key.h"

GeneralOptions LoadGeneralPage()
{
  GeneralOptions options;
  ReadGeneralOptions(&options);
  return options;
}

void ApplyGeneralPage(const GeneralOptions& boxes, RecentImageList* recentImages)
{
  WriteGeneralOptions(boxes);
  if (boxes.privacy != 0) ClearRecentList(recentImages);
}

MonitorPageFields LoadMonitorPage()
{
  MonitorOptions stored;
  MonitorPageFields fields;
  fields.appKeyOpened = !IsFailure(ReadMonitorOptions(&stored));
  fields.enableMonitor = stored.enableMonitor;
  fields.unloadAutomatically = stored.unloadAutomatically;
  fields.openingHotKey = stored.emergencyHotKey;
  bool autostart = false;
  ReadAutostartEnabled(&autostart);
  if (autostart) {
    fields.autostart = 1;
    fields.enableMonitor = 1;
  }
  return fields;
}

Prompt HotKeyTakenPrompt()
{
  return MakePrompt(IDS_HOT_KEY_TAKEN, IDS_ERROR_CAPTION, kPromptError, {});
}

MonitorApplyResult ApplyMonitorPage(const MonitorPageFields& fields, uint32_t hotKey,
                                    WindowRef owner, CMonitorPageSystem& system)
{
  if (hotKey != fields.openingHotKey &&
      !system.HotKeyIsFree(HotKeyModifiers(hotKey), HotKeyVirtualKey(hotKey))) {
    return MonitorApplyResult::kHotKeyTaken;
  }
  const MonitorOptions options{fields.enableMonitor, fields.unloadAutomatically, hotKey};
  if (!IsFailure(WriteMonitorOptions(options))) {
    if (fields.enableMonitor != 0) StartMonitor(owner);
    system.BroadcastSettingsChanged();
  }
  WriteAutostartValue(fields.autostart != 0);
  return MonitorApplyResult::kSaved;
}
