// The monitor program's decisions: what it does when it starts, when its emergency hot key
// is pressed, when the options tell it that its settings changed, at each check of the
// mounted disks and on each command of its tray menu. The window side only turns system
// messages into these calls and carries out what CMonitorSystem asks for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/instance_names.h"
#include "app/prompt.h"
#include "devhost/device_host_api.h"
#include "services/window_ref.h"
#include "settings/options.h"

// How often the mounted disks are checked, and how many checks in a row must find none
// before a monitor that unloads automatically exits.
inline constexpr uint32_t kDiskCheckMilliseconds = 2000;
inline constexpr uint32_t kEmptyChecksBeforeUnload = 2;

// The program the tray menu's first command opens, beside the monitor.
inline constexpr char16_t kControlProgramName[] = u"ctell.exe";

// The commands of the tray menu.
enum class MonitorCommand {
  kOpenProgram,
  kDismountAll,
  kExit,
};

// What the monitor needs from the system.
class CMonitorSystem {
 public:
  // Makes (stored modifiers, key code) the monitor's hot key; false when another program
  // holds the combination.
  virtual bool RegisterHotKey(uint32_t modifiers, uint32_t virtualKey) = 0;
  virtual void UnregisterHotKey() = 0;
  // Posts the refresh message to every top-level window.
  virtual void BroadcastRefresh() = 0;
  // The tray icon's tool tip, and a message shown at the tray icon.
  virtual void SetTrayTip(const std::u16string& tip) = 0;
  virtual void ShowTrayMessage(const std::u16string& text) = 0;
  // The window that owns the monitor's prompts.
  virtual WindowRef Owner() = 0;
  // Ends the monitor.
  virtual void Exit() = 0;

 protected:
  virtual ~CMonitorSystem() = default;
};

// The tray tip naming the mounted disks by their mount points.
std::u16string MonitorTipText(const std::vector<MountedDisk>& disks);

// The tray menu's "open" when Cryptelle cannot be started: "Unable to start Cryptelle."
// followed by the system's text for the error, under "Error".
Prompt ProgramStartFailure(std::u16string_view systemText);

class CMonitor {
 public:
  explicit CMonitor(CMonitorSystem& system) : system_(system) {}

  // Reads the settings: a monitor that is not enabled exits at once; otherwise the stored
  // hot key is registered and the disks are checked for the first time.
  void Start();
  // The emergency hot key: every disk is dismounted forced, without a question, the running
  // Cryptelle is told to refresh, and the monitor exits. A failure (other than a device
  // host that is not running, when nothing can be mounted) is shown at the tray and the
  // monitor stays, holding its hot key.
  void OnHotKey();
  // The options were saved: the settings are read again. "EnableMonitor" 0 ends the monitor;
  // a new hot key replaces the one held at once.
  void OnSettingsChanged();
  // The periodic check: enumerates the disks for the tray tip; when the monitor unloads
  // automatically it exits after kEmptyChecksBeforeUnload checks in a row found none.
  void OnDiskCheck();
  void OnCommand(MonitorCommand command);

 private:
  void ApplySettings(const MonitorOptions& options);
  void HoldHotKey(uint32_t hotKey);
  void ReleaseHotKey();
  void OpenProgram();
  void Exit();

  CMonitorSystem& system_;
  uint32_t hotKey_ = 0;  // the stored value last read
  bool hotKeyHeld_ = false;
  uint32_t reportedTakenHotKey_ = 0;  // a taken key is reported once
  bool unloadAutomatically_ = false;
  uint32_t emptyChecks_ = 0;
  std::u16string tip_;
  bool exited_ = false;
};
