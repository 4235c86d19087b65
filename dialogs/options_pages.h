// The options sheet's decisions over the settings store: what the General and Monitor pages
// show for the stored values and what applying them writes. The pages' windows only move
// these fields between their controls and these functions.
#pragma once

#include <cstdint>

#include "app/prompt.h"
#include "services/window_ref.h"
#include "settings/options.h"
#include "settings/recent_images.h"

// The help topics of the pages' help buttons.
inline constexpr uint32_t kGeneralPageHelpTopic = 156;
inline constexpr uint32_t kMonitorPageHelpTopic = 158;

// The General page's four boxes as stored ("MountAsRemovable", "MountInvisible",
// "IgnoreOpenFilesOnUnmountAll", "PrivacyMode"); the defaults are 0, 1, 0, 0. The boxes
// show them through CheckStateOfOption.
GeneralOptions LoadGeneralPage();

// Writes the four values; when privacy is on, empties `recentImages` and its stored list
// at once, so turning privacy on also erases the existing history.
void ApplyGeneralPage(const GeneralOptions& boxes, RecentImageList* recentImages);

// The Monitor page's fields.
struct MonitorPageFields {
  uint32_t enableMonitor = 0;        // box 1010, "EnableMonitor"
  uint32_t autostart = 0;            // box 1003, the Run value naming this monitor
  uint32_t unloadAutomatically = 0;  // box 1011, "UnloadMonitorAutomatically"
  uint32_t openingHotKey = 0;        // "EmergencyHotKey" as the page opened, stored form
  bool appKeyOpened = false;         // the hot-key control is set only when it opened
};

// Reads the page's values. A Run value naming this installation's monitor sets the
// autostart field, and autostart implies an enabled monitor whatever was stored.
MonitorPageFields LoadMonitorPage();

// Boxes 1003 and 1011, the hot-key control and its two texts are enabled only while the
// monitor is enabled.
constexpr bool MonitorDependentsEnabled(const MonitorPageFields& fields)
{
  return fields.enableMonitor != 0;
}

// What applying the Monitor page needs from the system.
class CMonitorPageSystem {
 public:
  virtual ~CMonitorPageSystem() = default;
  // Tries to register the combination (stored modifiers, key code) as a system hot key and
  // releases it at once; false when another program holds it.
  virtual bool HotKeyIsFree(uint32_t modifiers, uint32_t virtualKey) = 0;
  // Posts the settings-changed message to every top-level window.
  virtual void BroadcastSettingsChanged() = 0;
};

enum class MonitorApplyResult {
  kSaved,
  kHotKeyTaken,  // nothing was written; the page stays and shows HotKeyTakenPrompt
};

// "Key combination assigned to emergency hot key is used by another application..." under
// "Error".
Prompt HotKeyTakenPrompt();

// Applies the page with its boxes in `fields` and the control's hot key in stored form.
// A hot key that differs from the opening one (a cleared one included) must be free, else
// nothing is saved. Otherwise writes "EnableMonitor", "UnloadMonitorAutomatically" and
// "EmergencyHotKey"; once they are written, starts the monitor when it is enabled (a failure
// is shown owned by `owner`) and broadcasts the change. Then sets or deletes the Run value,
// also when the application key did not open.
MonitorApplyResult ApplyMonitorPage(const MonitorPageFields& fields, uint32_t hotKey,
                                    WindowRef owner, CMonitorPageSystem& system);
